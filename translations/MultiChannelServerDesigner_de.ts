<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>BoundWidgetPlugin</name>
    <message>
        <source>Shows a value of any type as text</source>
        <translation>Zeigt einen Wert jeder Art als Text</translation>
    </message>
    <message>
        <source>Shows the value at valuePath. While the boolean at noValuePath is true, it shows &quot;- - -&quot;.</source>
        <translation>Zeigt den Wert bei valuePath. Solange der Wahrheitswert bei noValuePath wahr ist, zeigt es „- - -“.</translation>
    </message>
    <message>
        <source>Shows and edits a text</source>
        <translation>Zeigt und ändert einen Text</translation>
    </message>
    <message>
        <source>Shows the text at valuePath. Enter or leaving the field sends what was typed, Escape restores.</source>
        <translation>Zeigt den Text bei valuePath. Die Eingabetaste oder das Verlassen des Feldes sendet, was eingegeben wurde, Escape stellt wieder her.</translation>
    </message>
    <message>
        <source>Shows and switches a boolean</source>
        <translation>Zeigt und schaltet einen Wahrheitswert</translation>
    </message>
    <message>
        <source>Shows the boolean at valuePath; a click sends the other one.</source>
        <translation>Zeigt den Wahrheitswert bei valuePath; ein Klick sendet den anderen.</translation>
    </message>
    <message>
        <source>Asks for something by a boolean</source>
        <translation>Fordert etwas durch einen Wahrheitswert an</translation>
    </message>
    <message>
        <source>Sets the boolean at valuePath true, and is held down until whoever carries it out has set it false.</source>
        <translation>Setzt den Wahrheitswert bei valuePath auf wahr und bleibt gedrückt, bis der Ausführende ihn auf falsch gesetzt hat.</translation>
    </message>
    <message>
        <source>Shows the choices of a selection, and makes one current</source>
        <translation>Zeigt die Einträge einer Auswahl und wählt einen davon</translation>
    </message>
    <message>
        <source>Shows the selection at valuePath; choosing an item sends it.</source>
        <translation>Zeigt die Auswahl bei valuePath; wer einen Eintrag wählt, sendet ihn.</translation>
    </message>
    <message>
        <source>Shows and edits a number within its limits</source>
        <translation>Zeigt und ändert eine Zahl in ihren Grenzen</translation>
    </message>
    <message>
        <source>Shows the number at valuePath: an integer if &quot;integer&quot; is set, else a floating-point number, which is shown divided by unitFactor, with unitDecimals and unit behind it.</source>
        <translation>Zeigt die Zahl bei valuePath: eine ganze Zahl, wenn „integer“ gesetzt ist, sonst eine Gleitkommazahl, geteilt durch unitFactor, mit unitDecimals Nachkommastellen und unit dahinter.</translation>
    </message>
    <message>
        <source>Shows the state of the server</source>
        <translation>Zeigt den Zustand des Servers</translation>
    </message>
    <message>
        <source>Shows the status below the node at valuePath, such as /MultiChannelServer/Status.</source>
        <translation>Zeigt den Status unter dem Knoten bei valuePath, etwa /MultiChannelServer/Status.</translation>
    </message>
    <message>
        <source>Edits the configuration of the server</source>
        <translation>Ändert die Konfiguration des Servers</translation>
    </message>
    <message>
        <source>Edits the configuration below the node at valuePath, such as /MultiChannelServer/Config. bootConfigGroup and jobConfigGroup say which of its groups are shown.</source>
        <translation>Ändert die Konfiguration unter dem Knoten bei valuePath, etwa /MultiChannelServer/Config. bootConfigGroup und jobConfigGroup sagen, welche Gruppen gezeigt werden.</translation>
    </message>
    <message>
        <source>Switches whether the server is connected to its device</source>
        <translation>Schaltet, ob der Server mit seinem Gerät verbunden ist</translation>
    </message>
    <message>
        <source>Uses the commands below the node at valuePath, such as /MultiChannelServer/Command.</source>
        <translation>Benutzt die Befehle unter dem Knoten bei valuePath, etwa /MultiChannelServer/Command.</translation>
    </message>
    <message>
        <source>Shows log messages as they arrive</source>
        <translation>Zeigt Meldungen des Protokolls, sobald sie kommen</translation>
    </message>
    <message>
        <source>Follows the text at valuePath, such as /MultiChannelServer/Status/LogMessage.</source>
        <translation>Folgt dem Text bei valuePath, etwa /MultiChannelServer/Status/LogMessage.</translation>
    </message>
    <message>
        <source>A table of MpxORVs</source>
        <translation>Eine Tabelle von MpxORVs</translation>
    </message>
    <message>
        <source>Shows the MpxORVs below the nodes at valuePaths, such as /MultiChannelServer/StaticMpxORVs and /MultiChannelServer/DynamicMpxORVs.</source>
        <translation>Zeigt die MpxORVs unter den Knoten bei valuePaths, etwa /MultiChannelServer/StaticMpxORVs und /MultiChannelServer/DynamicMpxORVs.</translation>
    </message>
    <message>
        <source>The modules of the ground transmitter suppression</source>
        <translation>Die Module der Bodensenderunterdrückung</translation>
    </message>
    <message>
        <source>Polls the modules that the program&apos;s configuration names, and lets people edit them. It needs no path, and a program has one at most. On a form it only looks like that.</source>
        <translation>Fragt die Module ab, die in der Konfiguration des Programms stehen, und lässt sie bearbeiten. Es braucht keinen Pfad, und ein Programm hat höchstens eines. Auf einem Formular sieht es nur so aus.</translation>
    </message>
    <message>
        <source>MultiChannelServer displays</source>
        <translation>MultiChannelServer-Anzeigen</translation>
    </message>
    <message>
        <source>MultiChannelServer values</source>
        <translation>MultiChannelServer-Werte</translation>
    </message>
</context>
<context>
    <name>PathDialog</name>
    <message>
        <source>Path of a %1</source>
        <translation>Pfad für %1</translation>
    </message>
    <message>
        <source>Filter: a part of the path</source>
        <translation>Filter: ein Teil des Pfades</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>&amp;Path:</source>
        <translation>&amp;Pfad:</translation>
    </message>
    <message>
        <source>those that the system trusts</source>
        <translation>denen das System vertraut</translation>
    </message>
    <message>
        <source>HOST, HOST:PORT, mcss://HOST (encrypted) or nats://HOST/STATION</source>
        <translation>HOST, HOST:PORT, mcss://HOST (verschlüsselt) oder nats://HOST/STATION</translation>
    </message>
    <message>
        <source>&amp;Connect</source>
        <translation>&amp;Verbinden</translation>
    </message>
    <message>
        <source>&amp;Server:</source>
        <translation>&amp;Server:</translation>
    </message>
    <message>
        <source>&amp;User:</source>
        <translation>&amp;Benutzer:</translation>
    </message>
    <message>
        <source>&amp;Token:</source>
        <translation>&amp;Token:</translation>
    </message>
    <message>
        <source>Certificate &amp;authority:</source>
        <translation>&amp;Zertifizierungsstelle:</translation>
    </message>
    <message>
        <source>The server&apos;s tree</source>
        <translation>Der Baum des Servers</translation>
    </message>
    <message>
        <source>That is no server: %1</source>
        <translation>Das ist kein Server: %1</translation>
    </message>
    <message>
        <source>nobody knows why</source>
        <translation>niemand weiß warum</translation>
    </message>
    <message>
        <source>Connect to a running server to choose from its tree, or type the path.</source>
        <translation>Mit einem laufenden Server verbinden, um in seinem Baum zu wählen, oder den Pfad eingeben.</translation>
    </message>
    <message>
        <source>Connecting to %1...</source>
        <translation>Verbindung zu %1...</translation>
    </message>
    <message>
        <source>Connected to %1; its tree is on its way...</source>
        <translation>Mit %1 verbunden; sein Baum ist unterwegs...</translation>
    </message>
    <message>
        <source>Connected to %1, of which the first %2 rows are shown.</source>
        <translation>Mit %1 verbunden; gezeigt sind die ersten %2 Zeilen.</translation>
    </message>
    <message>
        <source>Connected to %1.</source>
        <translation>Mit %1 verbunden.</translation>
    </message>
    <message>
        <source>The connection to %1 is lost, and tried again: %2</source>
        <translation>Die Verbindung zu %1 ist verloren und wird erneut versucht: %2</translation>
    </message>
    <message>
        <source>No connection to %1: %2</source>
        <translation>Keine Verbindung zu %1: %2</translation>
    </message>
    <message>
        <source>The server has nothing there now; the widget waits for it.</source>
        <translation>Der Server hat dort gerade nichts; das Element wartet darauf.</translation>
    </message>
    <message>
        <source>A path begins with &quot;/&quot;.</source>
        <translation>Ein Pfad beginnt mit „/“.</translation>
    </message>
    <message>
        <source>A %1 shows %2; the server has a %3 there.</source>
        <translation>%1 zeigt: %2. Der Server hat dort: %3.</translation>
    </message>
</context>
<context>
    <name>PathMenu</name>
    <message>
        <source>Add a path...</source>
        <translation>Einen Pfad hinzufügen...</translation>
    </message>
    <message>
        <source>Choose the path...</source>
        <translation>Den Pfad wählen...</translation>
    </message>
</context>
<context>
    <name>PathModel</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Content</source>
        <translation>Inhalt</translation>
    </message>
</context>
<context>
    <name>PathSession</name>
    <message>
        <source>there can be no such server</source>
        <translation>einen solchen Server kann es nicht geben</translation>
    </message>
    <message>
        <source>the server shows nothing to this user</source>
        <translation>der Server zeigt diesem Benutzer nichts</translation>
    </message>
    <message>
        <source>no answer in time</source>
        <translation>keine Antwort in der Zeit</translation>
    </message>
</context>
<context>
    <name>content</name>
    <message>
        <source>node</source>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>nodes</source>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>boolean</source>
        <translation>Wahrheitswert</translation>
    </message>
    <message>
        <source>booleans</source>
        <translation>Wahrheitswerte</translation>
    </message>
    <message>
        <source>integer</source>
        <translation>ganze Zahl</translation>
    </message>
    <message>
        <source>integers</source>
        <translation>ganze Zahlen</translation>
    </message>
    <message>
        <source>number</source>
        <translation>Zahl</translation>
    </message>
    <message>
        <source>numbers</source>
        <translation>Zahlen</translation>
    </message>
    <message>
        <source>text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>texts</source>
        <translation>Texte</translation>
    </message>
    <message>
        <source>selection</source>
        <translation>Auswahl</translation>
    </message>
    <message>
        <source>selections</source>
        <translation>Auswahlen</translation>
    </message>
    <message>
        <source>list</source>
        <translation>Liste</translation>
    </message>
    <message>
        <source>lists</source>
        <translation>Listen</translation>
    </message>
    <message>
        <source>values</source>
        <translation>Werte</translation>
    </message>
    <message>
        <source> or </source>
        <translation> oder </translation>
    </message>
</context>
</TS>
