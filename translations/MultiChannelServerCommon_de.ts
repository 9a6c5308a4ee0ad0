<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>MCSTools</name>
    <message>
        <source>%1 Hz</source>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>%1 kHz</source>
        <translation>%1 kHz</translation>
    </message>
    <message>
        <source>%1 MHz</source>
        <translation>%1 MHz</translation>
    </message>
    <message>
        <source>%1 - %2 Hz</source>
        <translation>%1 - %2 Hz</translation>
    </message>
    <message>
        <source>%1 - %2 kHz</source>
        <translation>%1 - %2 kHz</translation>
    </message>
    <message>
        <source>%1 - %2 MHz</source>
        <translation>%1 - %2 MHz</translation>
    </message>
</context>
<context>
    <name>T</name>
    <message>
        <source>This cannot be changed now.</source>
        <translation>Das kann jetzt nicht geändert werden.</translation>
    </message>
</context>
<context>
    <name>VCCheckBox</name>
    <message>
        <source>This cannot be changed now.</source>
        <translation>Das kann jetzt nicht geändert werden.</translation>
    </message>
</context>
<context>
    <name>VCComboBoxClassic</name>
    <message>
        <source>This cannot be changed now.</source>
        <translation>Das kann jetzt nicht geändert werden.</translation>
    </message>
    <message>
        <source>There is no such choice any more.</source>
        <translation>Diese Auswahl gibt es nicht mehr.</translation>
    </message>
</context>
<context>
    <name>VCLineEdit</name>
    <message>
        <source>This cannot be changed now.</source>
        <translation>Das kann jetzt nicht geändert werden.</translation>
    </message>
</context>
<context>
    <name>VCPushButton</name>
    <message>
        <source>This cannot be changed now.</source>
        <translation>Das kann jetzt nicht geändert werden.</translation>
    </message>
</context>
<context>
    <name>WidgetBinding</name>
    <message>
        <source>Not connected</source>
        <translation>Nicht verbunden</translation>
    </message>
    <message>
        <source>Not connected: nothing is there</source>
        <translation>Nicht verbunden: dort ist nichts</translation>
    </message>
    <message>
        <source>Not connected: what is there cannot be shown here</source>
        <translation>Nicht verbunden: was dort ist, kann hier nicht angezeigt werden</translation>
    </message>
    <message>
        <source>Not connected: this is the last content known</source>
        <translation>Nicht verbunden: dies ist der letzte bekannte Inhalt</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>Refused: %1</source>
        <translation>Abgelehnt: %1</translation>
    </message>
    <message>
        <source>Limits: %1</source>
        <translation>Grenzen: %1</translation>
    </message>
    <message>
        <source>May not be changed from here</source>
        <translation>Darf von hier nicht geändert werden</translation>
    </message>
    <message>
        <source>Copied: %1</source>
        <translation>Kopiert: %1</translation>
    </message>
</context>
<context>
    <name>valuetext</name>
    <message>
        <source>%1 to %2</source>
        <comment>Limits of a number</comment>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
</context>
</TS>
