<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>ClassList</name>
    <message numerus="yes">
        <source>%n minute(s)</source>
        <translation>
            <numerusform>%n minute</numerusform>
            <numerusform>%n minutes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ClassPage</name>
    <message numerus="yes">
        <source>%n session(s)</source>
        <translation>
            <numerusform>%n session</numerusform>
            <numerusform>%n sessions</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CycleRow</name>
    <message numerus="yes">
        <source>%n breath(s)</source>
        <translation>
            <numerusform>%n breath</numerusform>
            <numerusform>%n breaths</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>EventsPage</name>
    <message numerus="yes">
        <source>%n event(s)</source>
        <translation>
            <numerusform>%n event</numerusform>
            <numerusform>%n events</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>LearnerPage</name>
    <message numerus="yes">
        <source>%n session(s)</source>
        <translation>
            <numerusform>%n session</numerusform>
            <numerusform>%n sessions</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>LearnersPage</name>
    <message numerus="yes">
        <source>%n session(s)</source>
        <translation>
            <numerusform>%n session</numerusform>
            <numerusform>%n sessions</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n learner(s)</source>
        <translation>
            <numerusform>%n learner</numerusform>
            <numerusform>%n learners</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message numerus="yes">
        <source>%n session(s) were recorded, but not saved.</source>
        <translation>
            <numerusform>%n session was recorded, but not saved.</numerusform>
            <numerusform>%n sessions were recorded, but not saved.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SessionsPage</name>
    <message numerus="yes">
        <source>%n session(s)</source>
        <translation>
            <numerusform>%n session</numerusform>
            <numerusform>%n sessions</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message numerus="yes">
        <source>%n session(s) were not saved</source>
        <translation>
            <numerusform>%n session was not saved</numerusform>
            <numerusform>%n sessions were not saved</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Viewer</name>
    <message numerus="yes">
        <source>%n learner(s) added.</source>
        <translation>
            <numerusform>%n learner added.</numerusform>
            <numerusform>%n learners added.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>cprquick</name>
    <message numerus="yes">
        <source>%n line(s) left out</source>
        <translation>
            <numerusform>%n line left out</numerusform>
            <numerusform>%n lines left out</numerusform>
        </translation>
    </message>
</context>
</TS>
