<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Greetings</name>
    <message>
        <source>Good day</source>
        <translation>Guten Tag</translation>
    </message>
</context>
</TS>
