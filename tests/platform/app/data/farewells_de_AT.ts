<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_AT" sourcelanguage="en">
<context>
    <name>Farewells</name>
    <message>
        <source>Good bye</source>
        <translation>Pfiat di</translation>
    </message>
</context>
</TS>
