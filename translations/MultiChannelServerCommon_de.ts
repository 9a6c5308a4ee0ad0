<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>DataModule</name>
    <message>
        <source>Disconnected</source>
        <translation>Getrennt</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
</context>
<context>
    <name>DataModuleEditor</name>
    <message>
        <source>Type:</source>
        <translation>Typ:</translation>
    </message>
    <message>
        <source>IP Address:</source>
        <translation>IP-Adresse:</translation>
    </message>
    <message>
        <source>Poll interval (ms):</source>
        <translation>Abfrageintervall (ms):</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Add new module</source>
        <translation>Neues Modul hinzufügen</translation>
    </message>
    <message>
        <source>Edit module properties</source>
        <translation>Moduleigenschaften bearbeiten</translation>
    </message>
    <message>
        <source>This address cannot be right: %1. The module will be in error, and nothing of it will blank.</source>
        <translation>Diese Adresse kann nicht stimmen: %1. Das Modul wird gestört sein, und nichts davon wird austasten.</translation>
    </message>
    <message>
        <source>%1-%2 has this address too: both will read the same inputs.</source>
        <translation>Auch %1-%2 hat diese Adresse: Beide werden dieselben Eingänge lesen.</translation>
    </message>
</context>
<context>
    <name>FrequencyEntry</name>
    <message>
        <source>%1 MHz is less than nothing: it will never blank</source>
        <translation>%1 MHz ist weniger als nichts: Es wird nie ausgetastet</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no number of MHz: nothing will be assigned to the input</source>
        <translation>„%1“ ist keine Zahl in MHz: Dem Eingang wird nichts zugeordnet</translation>
    </message>
    <message>
        <source>%1 MHz lies outside %2 to %3 MHz: it will never blank</source>
        <translation>%1 MHz liegt nicht zwischen %2 und %3 MHz: Es wird nie ausgetastet</translation>
    </message>
    <message>
        <source>(for %1 MHz, enter %1)</source>
        <translation>(für %1 MHz ist %1 einzugeben)</translation>
    </message>
</context>
<context>
    <name>GTSDisplayImpl</name>
    <message>
        <source>Data modules for Ground Transmitter Suppression:</source>
        <translation>Datenmodule für die Bodensenderunterdrückung:</translation>
    </message>
    <message>
        <source>Data modules</source>
        <translation>Datenmodule</translation>
    </message>
    <message>
        <source>#</source>
        <translation>#</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>IP Address</source>
        <translation>IP-Adresse</translation>
    </message>
    <message>
        <source>Polltime (ms)</source>
        <translation>Abfrage (ms)</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Assign Inputs</source>
        <translation>Eingänge</translation>
    </message>
    <message>
        <source>Add module</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>Trennen</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>GTS DataModule %1/%2 error: %3 (%4)</source>
        <translation>GTS-Datenmodul %1/%2 Fehler: %3 (%4)</translation>
    </message>
    <message>
        <source>MultiChannel Server: GTS I/O failure</source>
        <translation>MultiChannel Server: GTS-E/A-Fehler</translation>
    </message>
</context>
<context>
    <name>InputAssignmentEditor</name>
    <message>
        <source>Assign Inputs</source>
        <translation>Eingänge</translation>
    </message>
    <message>
        <source>Assignment of Frequency (in MHz) to Digital Input of data module:</source>
        <translation>Zuordnung der Frequenz (in MHz) zum digitalen Eingang des Datenmoduls:</translation>
    </message>
    <message>
        <source>Frequencies in MHz</source>
        <translation>Frequenzen in MHz</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Übernehmen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>DI %1</source>
        <translation>DE %1</translation>
    </message>
    <message>
        <source>This is no frequency: nothing is assigned to the input</source>
        <translation>Das ist keine Frequenz: dem Eingang ist nichts zugeordnet</translation>
    </message>
</context>
<context>
    <name>LogTextEdit</name>
    <message>
        <source>... [cut, %1 characters in all]</source>
        <translation>... [gekürzt, insgesamt %1 Zeichen]</translation>
    </message>
</context>
<context>
    <name>MCSCommandsDisplay</name>
    <message>
        <source>Shall be connected to ORV:</source>
        <translation>Soll mit ORV verbunden sein:</translation>
    </message>
</context>
<context>
    <name>MCSConfigDisplay</name>
    <message>
        <source>Connection</source>
        <translation>Verbindung</translation>
    </message>
    <message>
        <source>DF Station Name:</source>
        <translation>Name der Peilstation:</translation>
    </message>
    <message>
        <source>DF Address:</source>
        <translation>Peileradresse:</translation>
    </message>
    <message>
        <source>Connect on startup</source>
        <translation>Beim Start verbinden</translation>
    </message>
    <message>
        <source>Force connection if DF device is already in use</source>
        <translation>Verbindung erzwingen, wenn das Peilgerät schon benutzt wird</translation>
    </message>
    <message>
        <source>Job Settings</source>
        <translation>Auftragseinstellungen</translation>
    </message>
    <message>
        <source>Number of Frequency Channels for FFM:</source>
        <translation>Anzahl der Frequenzkanäle für FFM:</translation>
    </message>
    <message>
        <source>Scan Averaging Time:</source>
        <translation>Mittelungszeit beim Scan:</translation>
    </message>
</context>
<context>
    <name>MCSLogDisplay</name>
    <message>
        <source>Log messages</source>
        <translation>Protokollmeldungen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Save to file...</source>
        <translation>In Datei speichern...</translation>
    </message>
    <message>
        <source>Save log messages...</source>
        <translation>Protokoll speichern...</translation>
    </message>
    <message>
        <source>HTML file (*.html)</source>
        <translation>HTML-Datei (*.html)</translation>
    </message>
    <message>
        <source>File &apos;%1&apos; already exists.
Do you want to overwrite it?</source>
        <translation>Die Datei &apos;%1&apos; ist schon vorhanden.
Soll sie überschrieben werden?</translation>
    </message>
    <message>
        <source>File exists</source>
        <translation>Datei ist vorhanden</translation>
    </message>
    <message>
        <source>Overwrite</source>
        <translation>Überschreiben</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>MCSMpxORVStatusListDisplay</name>
    <message>
        <source>MpxORVs</source>
        <translation>MpxORVs</translation>
    </message>
</context>
<context>
    <name>MCSMpxORVStatusListModel</name>
    <message>
        <source>Name</source>
        <comment>Column header</comment>
        <translation>Name</translation>
    </message>
    <message>
        <source>Operation Mode</source>
        <comment>Column header</comment>
        <translation>Betriebsart</translation>
    </message>
    <message>
        <source>Clients</source>
        <comment>Column header</comment>
        <translation>Clients</translation>
    </message>
    <message>
        <source>Comment</source>
        <comment>Column header</comment>
        <translation>Kommentar</translation>
    </message>
</context>
<context>
    <name>MCSStatusDisplay</name>
    <message>
        <source>DF Device:</source>
        <translation>Peilgerät:</translation>
    </message>
    <message>
        <source>MultiChannel Server:</source>
        <translation>MultiChannel Server:</translation>
    </message>
    <message>
        <source>Boot State:</source>
        <translation>Startzustand:</translation>
    </message>
    <message>
        <source>Operation Mode:</source>
        <translation>Betriebsart:</translation>
    </message>
    <message>
        <source>Sweep Time:</source>
        <translation>Durchlaufzeit:</translation>
    </message>
    <message>
        <source>Frequency Channels for FFM:</source>
        <translation>Frequenzkanäle für FFM:</translation>
    </message>
    <message>
        <source>Current Job Type:</source>
        <translation>Aktueller Auftrag:</translation>
    </message>
    <message>
        <source>Multiplexed DFs:</source>
        <translation>Gemultiplexte Peiler:</translation>
    </message>
    <message>
        <source>Online</source>
        <translation>Online</translation>
    </message>
    <message>
        <source>Offline</source>
        <translation>Offline</translation>
    </message>
    <message>
        <source>%1 of %2 channels used</source>
        <translation>%1 von %2 Kanälen belegt</translation>
    </message>
    <message>
        <source>Master Job</source>
        <translation>Master-Auftrag</translation>
    </message>
    <message>
        <source>Generic Job</source>
        <translation>Allgemeiner Auftrag</translation>
    </message>
    <message>
        <source>%1 static and %2 dynamic</source>
        <translation>%1 statische und %2 dynamische</translation>
    </message>
    <message>
        <source>%.2f ms</source>
        <translation>%.2f ms</translation>
    </message>
    <message>
        <source>%d ms</source>
        <translation>%d ms</translation>
    </message>
</context>
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
    <name>ModuleAddress</name>
    <message>
        <source>an IPv4 address has four numbers</source>
        <translation>eine IPv4-Adresse hat vier Zahlen</translation>
    </message>
    <message>
        <source>no module can have this address</source>
        <translation>kein Modul kann diese Adresse haben</translation>
    </message>
    <message>
        <source>it has no IP address</source>
        <translation>es fehlt die IP-Adresse</translation>
    </message>
    <message>
        <source>the port does not belong to it</source>
        <translation>der Port gehört nicht dazu</translation>
    </message>
    <message>
        <source>modules have no IPv6 addresses</source>
        <translation>Module haben keine IPv6-Adressen</translation>
    </message>
    <message>
        <source>names are not resolved: give the IPv4 address of the module</source>
        <translation>Namen werden nicht aufgelöst: Geben Sie die IPv4-Adresse des Moduls an</translation>
    </message>
    <message>
        <source>it is too long</source>
        <translation>sie ist zu lang</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is no number from 0 to 255 without leading zeros</source>
        <translation>„%1“ ist keine Zahl von 0 bis 255 ohne führende Nullen</translation>
    </message>
</context>
<context>
    <name>Remark</name>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
</context>
<context>
    <name>VCComboBoxClassic</name>
    <message>
        <source>There is no such choice any more.</source>
        <translation>Diese Auswahl gibt es nicht mehr.</translation>
    </message>
</context>
<context>
    <name>VCLineEdit</name>
    <message>
        <source>This text is too long to be edited here.</source>
        <translation>Dieser Text ist zu lang, um hier bearbeitet zu werden.</translation>
    </message>
</context>
<context>
    <name>VCNumericFloatSpin</name>
    <message>
        <source>Please enter a number from %1 to %2.</source>
        <translation>Bitte eine Zahl von %1 bis %2 eingeben.</translation>
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
    <message>
        <source>What was entered was not sent: the value has gone.</source>
        <translation>Die Eingabe wurde nicht gesendet: der Wert ist nicht mehr da.</translation>
    </message>
    <message>
        <source>What was entered was not sent: the field was locked.</source>
        <translation>Die Eingabe wurde nicht gesendet: das Feld war gesperrt.</translation>
    </message>
    <message>
        <source>This cannot be changed now.</source>
        <translation>Das kann jetzt nicht geändert werden.</translation>
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
