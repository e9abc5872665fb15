<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
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
</TS>
