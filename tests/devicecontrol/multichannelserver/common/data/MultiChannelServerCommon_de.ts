<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>ModuleTest</name>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
</context>
</TS>
