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
    <name>ClassRoom</name>
    <message numerus="yes">
        <source>There is room for %n manikin(s) at a time.</source>
        <translation>
            <numerusform>There is room for %n manikin at a time.</numerusform>
            <numerusform>There is room for %n manikins at a time.</numerusform>
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
    <message numerus="yes">
        <source>%n session(s) still run. They end now and are saved in the library.</source>
        <translation>
            <numerusform>%n session still runs. It ends now and is saved in the library.</numerusform>
            <numerusform>%n sessions still run. They end now and are saved in the library.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n session(s) still run. They end now, and the viewer offers to save them when it starts again.</source>
        <translation>
            <numerusform>%n session still runs. It ends now, and the viewer offers to save it when it starts again.</numerusform>
            <numerusform>%n sessions still run. They end now, and the viewer offers to save them when it starts again.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ManikinTile</name>
    <message numerus="yes">
        <source>%n packet(s) lost</source>
        <translation>
            <numerusform>%n packet lost</numerusform>
            <numerusform>%n packets lost</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RoomPage</name>
    <message numerus="yes">
        <source>End %n session(s)?</source>
        <translation>
            <numerusform>End %n session?</numerusform>
            <numerusform>End %n sessions?</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n manikin(s)</source>
        <translation>
            <numerusform>%n manikin</numerusform>
            <numerusform>%n manikins</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n running</source>
        <translation>
            <numerusform>%n running</numerusform>
            <numerusform>%n running</numerusform>
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
    <message numerus="yes">
        <source>%1 is called %2 in %n session(s).</source>
        <translation>
            <numerusform>%1 is called %2 in %n session.</numerusform>
            <numerusform>%1 is called %2 in %n sessions.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n session(s) still have the name %1. %2</source>
        <translation>
            <numerusform>%n session still has the name %1. %2</numerusform>
            <numerusform>%n sessions still have the name %1. %2</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>cprviewer</name>
    <message numerus="yes">
        <source>(and %n more)</source>
        <translation>
            <numerusform>(and %n more)</numerusform>
            <numerusform>(and %n more)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n report(s) printed.</source>
        <translation>
            <numerusform>%n report printed.</numerusform>
            <numerusform>%n reports printed.</numerusform>
        </translation>
    </message>
</context>
</TS>
