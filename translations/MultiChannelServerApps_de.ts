<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Age</name>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation>%1 h</translation>
    </message>
    <message>
        <source>%1 d</source>
        <translation>%1 d</translation>
    </message>
</context>
<context>
    <name>AnswerLine</name>
    <message>
        <source>The server&apos;s answers to requests stand here.</source>
        <translation>Hier stehen die Antworten des Servers auf Anforderungen.</translation>
    </message>
</context>
<context>
    <name>AskingCheckBox</name>
    <message>
        <source>%1 (locked)</source>
        <translation>%1 (gesperrt)</translation>
    </message>
</context>
<context>
    <name>CodedText</name>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>Power On</source>
        <translation>Einschalten</translation>
    </message>
    <message>
        <source>Loading</source>
        <translation>Laden</translation>
    </message>
    <message>
        <source>Self Test</source>
        <translation>Selbsttest</translation>
    </message>
    <message>
        <source>Calibrating</source>
        <translation>Kalibrierung läuft</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Bereit</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Ausgefallen</translation>
    </message>
    <message>
        <source>Idle</source>
        <translation>Leerlauf</translation>
    </message>
    <message>
        <source>FFM</source>
        <translation>FFM</translation>
    </message>
    <message>
        <source>Audio</source>
        <translation>Audio</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suche</translation>
    </message>
    <message>
        <source>Scan</source>
        <translation>Suchlauf</translation>
    </message>
    <message>
        <source>Calibration</source>
        <translation>Kalibrierung</translation>
    </message>
    <message>
        <source>Built-in Test</source>
        <translation>Eingebauter Test</translation>
    </message>
    <message>
        <source>Memory Scan</source>
        <translation>Speichersuchlauf</translation>
    </message>
    <message>
        <source>the server ends</source>
        <translation>Der Server endet</translation>
    </message>
    <message>
        <source>no more than %1 clients find room at once, and not %2: the process may have only %3 files and connections open</source>
        <translation>Zugleich finden nur %1 Clients Platz und nicht %2: der Prozess darf nur %3 Dateien und Verbindungen offen haben</translation>
    </message>
    <message>
        <source>access file and certificates are read anew</source>
        <translation>Zugangsdatei und Zertifikate sind neu gelesen</translation>
    </message>
    <message>
        <source>access file and certificates stay as they were: %1</source>
        <translation>Zugangsdatei und Zertifikate bleiben, wie sie waren: %1</translation>
    </message>
    <message>
        <source>%1 line left out, of %2</source>
        <translation>%1 Zeile ausgelassen, von %2</translation>
    </message>
    <message>
        <source>%1 event left out, of %2</source>
        <translation>%1 Ereignis ausgelassen, von %2</translation>
    </message>
    <message>
        <source>%1 lines left out, most of them of %2</source>
        <translation>%1 Zeilen ausgelassen, die meisten von %2</translation>
    </message>
    <message>
        <source>%1 events left out, most of them of %2</source>
        <translation>%1 Ereignisse ausgelassen, die meisten von %2</translation>
    </message>
    <message>
        <source>%1 is connected as %2</source>
        <translation>%1 ist verbunden als %2</translation>
    </message>
    <message>
        <source>%1 has gone</source>
        <translation>%1 ist gegangen</translation>
    </message>
    <message>
        <source>%1 is not admitted: %2</source>
        <translation>%1 wird nicht eingelassen: %2</translation>
    </message>
    <message>
        <source>%1 may not write %2: %3</source>
        <translation>%1 darf %2 nicht schreiben: %3</translation>
    </message>
    <message>
        <source>%1 may not create %2: %3</source>
        <translation>%1 darf %2 nicht anlegen: %3</translation>
    </message>
    <message>
        <source>%1 may not use %2: %3</source>
        <translation>%1 darf %2 nicht benutzen: %3</translation>
    </message>
    <message>
        <source>%1 uses %2</source>
        <translation>%1 benutzt %2</translation>
    </message>
    <message>
        <source>ORV: %1</source>
        <translation>ORV: %1</translation>
    </message>
    <message>
        <source>ORV: operation mode %1</source>
        <translation>ORV: Betriebsart %1</translation>
    </message>
    <message>
        <source>the ORV is to be connected%1</source>
        <translation>Der ORV soll verbunden werden%1</translation>
    </message>
    <message>
        <source>the ORV is to be let go%1</source>
        <translation>Der ORV soll freigegeben werden%1</translation>
    </message>
    <message>
        <source>%2 is tuned to %1</source>
        <translation>%2 ist auf %1 eingestellt</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 is master</source>
        <translation>%1 ist Master</translation>
    </message>
    <message>
        <source>%1 is master no more</source>
        <translation>%1 ist nicht mehr Master</translation>
    </message>
    <message>
        <source>policies of %1: %2%3</source>
        <translation>Rechte von %1: %2%3</translation>
    </message>
    <message>
        <source>%2 of %1 is switched from off to on%3</source>
        <translation>%2 von %1 wurde von aus auf ein geschaltet%3</translation>
    </message>
    <message>
        <source>%2 of %1 is switched from on to off%3</source>
        <translation>%2 von %1 wurde von ein auf aus geschaltet%3</translation>
    </message>
    <message>
        <source>%1 obeys the blanking%2</source>
        <translation>%1 beachtet die Austastung%2</translation>
    </message>
    <message>
        <source>%1 ignores the blanking%2</source>
        <translation>%1 missachtet die Austastung%2</translation>
    </message>
    <message>
        <source>%1 is removed, its last client has gone</source>
        <translation>%1 ist entfernt, sein letzter Client ist gegangen</translation>
    </message>
    <message>
        <source>StaticMpxORVs: &apos;%1&apos; %2</source>
        <translation>StaticMpxORVs: „%1“ %2</translation>
    </message>
    <message>
        <source>the configuration is saved</source>
        <translation>Die Konfiguration ist gespeichert</translation>
    </message>
    <message>
        <source>the configuration cannot be saved: %1</source>
        <translation>Die Konfiguration kann nicht gespeichert werden: %1</translation>
    </message>
    <message>
        <source>the configuration file was edited: %1; in use from the next start on</source>
        <translation>Die Konfigurationsdatei wurde bearbeitet: %1; gilt ab dem nächsten Start</translation>
    </message>
    <message>
        <source>the configuration file holds %1 as %2%3; %4 is used</source>
        <translation>Die Konfigurationsdatei enthält %1 als %2%3; benutzt wird %4</translation>
    </message>
    <message>
        <source>%1 is changed from %2 to %3%4</source>
        <translation>%1 ist von %2 auf %3 geändert%4</translation>
    </message>
    <message>
        <source>%1 is changed%2</source>
        <translation>%1 ist geändert%2</translation>
    </message>
    <message>
        <source>%1 of %2 Hz cannot be kept: the configuration file holds whole hertz up to 2147483647, so it holds %3</source>
        <translation>%1 von %2 Hz kann nicht behalten werden: die Konfigurationsdatei fasst ganze Hertz bis 2147483647, darum enthält sie %3</translation>
    </message>
    <message>
        <source>GTS DataModule %1/%2 error: %3 (%4)%5</source>
        <translation>GTS-Datenmodul %1/%2, Fehler: %3 (%4)%5</translation>
    </message>
    <message>
        <source>GTS DataModule %1/%2 answers again; it stays in error until it is connected</source>
        <translation>GTS-Datenmodul %1/%2 antwortet wieder; es bleibt gestört, bis es verbunden wird</translation>
    </message>
    <message>
        <source>the last end was not an orderly one: what was entered for the suppression until %1 (data modules: %2) is taken over from &apos;%3&apos;</source>
        <translation>Das letzte Ende war nicht ordentlich: was bis %1 für die Unterdrückung eingegeben wurde (Datenmodule: %2), ist aus „%3“ übernommen</translation>
    </message>
    <message>
        <source>the recovery file of the suppression %1%2; it is not used, and kept as &apos;%3&apos;</source>
        <translation>Die Wiederherstellungsdatei der Unterdrückung %1%2; sie wird nicht benutzt und als „%3“ aufbewahrt</translation>
    </message>
    <message>
        <source>the recovery file of the suppression &apos;%1&apos; %2%3; it is not used, and what is entered from now on is not kept beside it</source>
        <translation>Die Wiederherstellungsdatei der Unterdrückung „%1“ %2%3; sie wird nicht benutzt, und was von jetzt an eingegeben wird, wird nicht daneben aufbewahrt</translation>
    </message>
    <message>
        <source>what is entered for the suppression would outlive a killed server again</source>
        <translation>Was für die Unterdrückung eingegeben wird, würde einen abgebrochenen Server wieder überdauern</translation>
    </message>
    <message>
        <source>what is entered for the suppression would be lost with a killed server: %1</source>
        <translation>Was für die Unterdrückung eingegeben wird, ginge mit einem abgebrochenen Server verloren: %1</translation>
    </message>
    <message>
        <source>done: %1</source>
        <translation>erledigt: %1</translation>
    </message>
    <message>
        <source>refused: %1</source>
        <translation>abgelehnt: %1</translation>
    </message>
    <message>
        <source>ended: %1</source>
        <translation>beendet: %1</translation>
    </message>
    <message>
        <source>, by %1</source>
        <translation>, von %1</translation>
    </message>
    <message>
        <source>, taken away by %1</source>
        <translation>, entzogen von %1</translation>
    </message>
    <message>
        <source>, let go by %1</source>
        <translation>, freigegeben von %1</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 und %2 weitere</translation>
    </message>
    <message>
        <source>%1 (%2 line left out before)</source>
        <translation>%1 (davor %2 Zeile ausgelassen)</translation>
    </message>
    <message>
        <source>%1 (%2 lines left out before)</source>
        <translation>%1 (davor %2 Zeilen ausgelassen)</translation>
    </message>
    <message>
        <source>%1 on %2 (%3)</source>
        <translation>%1 auf %2 (%3)</translation>
    </message>
    <message>
        <source>a client (%1)</source>
        <translation>ein Client (%1)</translation>
    </message>
    <message>
        <source>a client on %1 (%2)</source>
        <translation>ein Client auf %1 (%2)</translation>
    </message>
    <message>
        <source>tuned to %1</source>
        <translation>auf %1 eingestellt</translation>
    </message>
    <message>
        <source>%1 is read from the range of %2</source>
        <translation>%1 wird aus dem Bereich von %2 gelesen</translation>
    </message>
    <message>
        <source>is master</source>
        <translation>ist Master</translation>
    </message>
    <message>
        <source>is master no more</source>
        <translation>ist nicht mehr Master</translation>
    </message>
    <message>
        <source>built-in test started</source>
        <translation>Eingebauter Test begonnen</translation>
    </message>
    <message>
        <source>calibration started</source>
        <translation>Kalibrierung begonnen</translation>
    </message>
    <message>
        <source>the job starts anew</source>
        <translation>Der Auftrag beginnt neu</translation>
    </message>
    <message>
        <source>reports every %1 ms</source>
        <translation>meldet alle %1 ms</translation>
    </message>
    <message>
        <source>needs %1%2</source>
        <translation>braucht %1%2</translation>
    </message>
    <message>
        <source>the right %1%2</source>
        <translation>das Recht %1%2</translation>
    </message>
    <message>
        <source>%1 lost its frequency</source>
        <translation>%1 hat seine Frequenz verloren</translation>
    </message>
    <message>
        <source>%1 was tuned to %2</source>
        <translation>%1 wurde auf %2 eingestellt</translation>
    </message>
    <message>
        <source>%1 is master since %2</source>
        <translation>%1 ist Master seit %2</translation>
    </message>
    <message>
        <source>%1 is master since %2, and %3 is not in its range</source>
        <translation>%1 ist Master seit %2, und %3 liegt nicht in seinem Bereich</translation>
    </message>
    <message>
        <source>no report interval was chosen</source>
        <translation>es wurde kein Meldeabstand gewählt</translation>
    </message>
    <message>
        <source>the ORV is not connected%1</source>
        <translation>der ORV ist nicht verbunden%1</translation>
    </message>
    <message>
        <source>the ORV is not ready: %1%2</source>
        <translation>der ORV ist nicht bereit: %1%2</translation>
    </message>
    <message>
        <source>the ORV is not ready</source>
        <translation>der ORV ist nicht bereit</translation>
    </message>
    <message>
        <source>the ORV is busy: %1</source>
        <translation>der ORV ist beschäftigt: %1</translation>
    </message>
    <message>
        <source>no frequency channel is free, %1 are in use</source>
        <translation>kein Frequenzkanal ist frei, %1 sind in Gebrauch</translation>
    </message>
    <message>
        <source>there is no such channel</source>
        <translation>es gibt keinen solchen Kanal</translation>
    </message>
    <message>
        <source>connected to %1 at %2</source>
        <translation>verbunden mit %1 unter %2</translation>
    </message>
    <message>
        <source>connection lost: %1</source>
        <translation>Verbindung verloren: %1</translation>
    </message>
    <message>
        <source>in use by %1</source>
        <translation>in Gebrauch von %1</translation>
    </message>
    <message>
        <source>the device does not answer</source>
        <translation>das Gerät antwortet nicht</translation>
    </message>
    <message>
        <source>not connected</source>
        <translation>nicht verbunden</translation>
    </message>
    <message>
        <source>%1 passed</source>
        <translation>%1 bestanden</translation>
    </message>
    <message>
        <source>%1 is blanked by %2</source>
        <translation>%1 ist ausgetastet durch %2</translation>
    </message>
    <message>
        <source>a ground transmitter</source>
        <translation>einen Bodensender</translation>
    </message>
    <message>
        <source>user or token is wrong</source>
        <translation>Benutzer oder Token ist falsch</translation>
    </message>
    <message>
        <source>the certificate&apos;s name is not known here</source>
        <translation>der Name des Zertifikats ist hier nicht bekannt</translation>
    </message>
    <message>
        <source>too many failed attempts, wait %1 s</source>
        <translation>zu viele Fehlversuche, %1 s warten</translation>
    </message>
    <message>
        <source>too many tokens are to be checked at once, try again</source>
        <translation>zu viele Token sind zugleich zu prüfen, noch einmal versuchen</translation>
    </message>
    <message>
        <source>no rule of this server allows it</source>
        <translation>keine Regel dieses Servers erlaubt es</translation>
    </message>
    <message>
        <source>the status is the server&apos;s own</source>
        <translation>der Status gehört dem Server</translation>
    </message>
    <message>
        <source>only the server writes this</source>
        <translation>dies schreibt nur der Server</translation>
    </message>
    <message>
        <source>what is below %1 is the server&apos;s own</source>
        <translation>was unter %1 liegt, gehört dem Server</translation>
    </message>
    <message>
        <source>there is no such MpxORV</source>
        <translation>es gibt keinen solchen MpxORV</translation>
    </message>
    <message>
        <source>only clients of the MpxORV comment on it</source>
        <translation>nur Clients des MpxORV kommentieren ihn</translation>
    </message>
    <message>
        <source>only operators switch policies</source>
        <translation>nur Bediener schalten Rechte</translation>
    </message>
    <message>
        <source>%1 uses this MpxORV, and no rule allows it to switch policies of its own</source>
        <translation>%1 benutzt diesen MpxORV, und keine Regel erlaubt, eigene Rechte zu schalten</translation>
    </message>
    <message>
        <source>nobody switches the policies of an MpxORV that it uses</source>
        <translation>niemand schaltet die Rechte eines MpxORV, den er selbst benutzt</translation>
    </message>
    <message>
        <source>a client may use %1 MpxORVs at most</source>
        <translation>ein Client darf höchstens %1 MpxORVs benutzen</translation>
    </message>
    <message>
        <source>there is no static MpxORV &apos;%1&apos;</source>
        <translation>es gibt keinen statischen MpxORV „%1“</translation>
    </message>
    <message>
        <source>%1 belongs to another user</source>
        <translation>%1 gehört einem anderen Benutzer</translation>
    </message>
    <message>
        <source>this cannot be the name of an MpxORV</source>
        <translation>so kann kein MpxORV heißen</translation>
    </message>
    <message>
        <source>there are %1 dynamic MpxORVs already</source>
        <translation>es gibt schon %1 dynamische MpxORVs</translation>
    </message>
    <message>
        <source>something else has the name %1</source>
        <translation>etwas anderes heißt schon %1</translation>
    </message>
    <message>
        <source>cannot be the name of an MpxORV</source>
        <translation>kann nicht der Name eines MpxORV sein</translation>
    </message>
    <message>
        <source>is there twice</source>
        <translation>ist zweimal da</translation>
    </message>
    <message>
        <source>is one too many</source>
        <translation>ist einer zu viel</translation>
    </message>
    <message>
        <source>, which stands for a frequency above 2147483647 Hz</source>
        <translation>, was für eine Frequenz über 2147483647 Hz steht</translation>
    </message>
    <message>
        <source>is damaged</source>
        <translation>ist beschädigt</translation>
    </message>
    <message>
        <source>is of another configuration</source>
        <translation>gehört zu einer anderen Konfiguration</translation>
    </message>
    <message>
        <source>is older than the configuration, whose section GTS was changed since</source>
        <translation>ist älter als die Konfiguration, deren Abschnitt GTS seither geändert wurde</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>%2 is tuned to %1, not supervised</source>
        <translation>%2 ist auf %1 eingestellt, nicht überwacht</translation>
    </message>
    <message>
        <source>done, not supervised: %1</source>
        <translation>erledigt, nicht überwacht: %1</translation>
    </message>
    <message>
        <source>%1, input %2</source>
        <translation>%1, Eingang %2</translation>
    </message>
    <message>
        <source>Job master</source>
        <translation>Auftragsmaster</translation>
    </message>
    <message>
        <source>FFM %1</source>
        <translation>FFM auf %1</translation>
    </message>
    <message>
        <source>offered at NATS as the station %1</source>
        <translation>bei NATS angeboten als die Station %1</translation>
    </message>
    <message>
        <source>not offered at NATS as the station %1: %2</source>
        <translation>bei NATS nicht angeboten als die Station %1: %2</translation>
    </message>
    <message>
        <source>data module %1 at %2 is added%3</source>
        <translation>Datenmodul %1 unter %2 ist hinzugefügt%3</translation>
    </message>
    <message>
        <source>data module %1 at %2 is disconnected%3</source>
        <translation>Datenmodul %1 unter %2 ist getrennt%3</translation>
    </message>
    <message>
        <source>data module %1 at %2 is connected anew%3</source>
        <translation>Datenmodul %1 unter %2 wird neu verbunden%3</translation>
    </message>
    <message>
        <source>data module %1: %2 is changed from %3 to %4%5</source>
        <translation>Datenmodul %1: %2 ist von %3 auf %4 geändert%5</translation>
    </message>
    <message>
        <source>%1 at the server&apos;s window</source>
        <translation>%1 am Fenster des Servers</translation>
    </message>
    <message>
        <source>its name</source>
        <translation>sein Name</translation>
    </message>
    <message>
        <source>its type</source>
        <translation>sein Typ</translation>
    </message>
    <message>
        <source>its address</source>
        <translation>seine Adresse</translation>
    </message>
    <message>
        <source>its poll interval</source>
        <translation>sein Abfrageabstand</translation>
    </message>
    <message>
        <source>the name of input %1</source>
        <translation>der Name von Eingang %1</translation>
    </message>
    <message>
        <source>the frequency of input %1</source>
        <translation>die Frequenz von Eingang %1</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>nichts</translation>
    </message>
    <message>
        <source>ORV: receiver %1 is lost: %2</source>
        <translation>ORV: Empfänger %1 ist verloren: %2</translation>
    </message>
    <message>
        <source>ORV: receiver %1 answers again</source>
        <translation>ORV: Empfänger %1 antwortet wieder</translation>
    </message>
    <message>
        <source>no connection</source>
        <translation>keine Verbindung</translation>
    </message>
    <message>
        <source>the receiver does not take it: %1</source>
        <translation>der Empfänger nimmt es nicht an: %1</translation>
    </message>
    <message>
        <source>%1 of %2 receivers answer (%3)</source>
        <translation>%1 von %2 Empfängern antworten (%3)</translation>
    </message>
    <message>
        <source>connecting to receivers (%1)</source>
        <translation>Verbindung zu Empfängern wird hergestellt (%1)</translation>
    </message>
    <message>
        <source>receiver %1 is lost: %2</source>
        <translation>Empfänger %1 ist verloren: %2</translation>
    </message>
    <message>
        <source>no frequency channel is free, %1 are in use and %2 are lost</source>
        <translation>kein Frequenzkanal ist frei, %1 sind in Gebrauch und %2 verloren</translation>
    </message>
    <message>
        <source>receiver %1 receives %2 only</source>
        <translation>Empfänger %1 empfängt nur %2</translation>
    </message>
    <message>
        <source>the ORV has no built-in test</source>
        <translation>der ORV hat keinen Selbsttest</translation>
    </message>
    <message>
        <source>the ORV cannot be calibrated</source>
        <translation>der ORV kann nicht kalibriert werden</translation>
    </message>
    <message>
        <source>the ORV reports every %1 ms at most</source>
        <translation>der ORV meldet höchstens alle %1 ms</translation>
    </message>
    <message>
        <source>; disconnected by hand, and stay so: %1</source>
        <translation>; von Hand getrennt, und bleiben es: %1</translation>
    </message>
    <message>
        <source>the supervision of %1%2</source>
        <translation>die Überwachung von %1%2</translation>
    </message>
    <message>
        <source>data modules in error are connected anew: %1%3%2</source>
        <translation>Gestörte Datenmodule werden neu verbunden: %1%3%2</translation>
    </message>
    <message>
        <source>no data module is in error%2%1</source>
        <translation>Kein Datenmodul ist gestört%2%1</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>the configuration file &apos;%1&apos; cannot be used (%2); defaults are used, so that nothing is supervised, and the file is kept as &apos;%3&apos;</source>
        <translation>Die Konfigurationsdatei „%1“ ist nicht brauchbar (%2); es gelten Standardwerte, also wird nichts überwacht, und die Datei ist als „%3“ aufbewahrt</translation>
    </message>
    <message>
        <source>the configuration file &apos;%1&apos; cannot be used any more (%2); what is known is written anew, and the file is kept as &apos;%3&apos;</source>
        <translation>Die Konfigurationsdatei „%1“ ist nicht mehr brauchbar (%2); was bekannt ist, wird neu geschrieben, und die Datei ist als „%3“ aufbewahrt</translation>
    </message>
    <message>
        <source>the configuration file &apos;%1&apos; was edited, and cannot be used any more (%2); the next save writes what is known anew</source>
        <translation>Die Konfigurationsdatei „%1“ wurde bearbeitet und ist nicht mehr brauchbar (%2); das nächste Speichern schreibt neu, was bekannt ist</translation>
    </message>
    <message>
        <source>a copy of the configuration file as it is now is kept as &apos;%1&apos;</source>
        <translation>Eine Kopie der Konfigurationsdatei, wie sie jetzt ist, ist als „%1“ aufbewahrt</translation>
    </message>
    <message>
        <source>the configuration has a section &apos;%1&apos;, which is not read: the suppression is &apos;%2&apos;</source>
        <translation>Die Konfiguration hat einen Abschnitt „%1“, der nicht gelesen wird: die Unterdrückung ist „%2“</translation>
    </message>
    <message>
        <source>GTS in the configuration: ModuleCount is %1, so these are not read and nothing of them is supervised: %2</source>
        <translation>GTS in der Konfiguration: ModuleCount: %1; deshalb nicht gelesen und nicht überwacht: %2</translation>
    </message>
    <message>
        <source>GTS in the configuration: ModuleCount is %1, so no data module is read</source>
        <translation>GTS in der Konfiguration: ModuleCount: %1; deshalb wird kein Datenmodul gelesen</translation>
    </message>
    <message>
        <source>GTS in the configuration: ModuleCount is %1, and nothing is there of: %2</source>
        <translation>GTS in der Konfiguration: ModuleCount: %1; es gibt dort nichts von: %2</translation>
    </message>
    <message>
        <source>GTS in the configuration: %1 is left out and nothing of it is supervised: its %2 is %3</source>
        <translation>GTS in der Konfiguration: %1 ist ausgelassen, nichts davon wird überwacht; %2: %3</translation>
    </message>
    <message>
        <source>GTS in the configuration: AssignmentCount of %1 is %2, and it has %3 inputs; these are not read and not supervised: %4</source>
        <translation>GTS in der Konfiguration: AssignmentCount von %1: %2, bei %3 Eingängen; nicht gelesen und nicht überwacht: %4</translation>
    </message>
    <message>
        <source>GTS in the configuration: %1 is %2, which are no whole hertz; taken is: %3</source>
        <translation>GTS in der Konfiguration: %1 ist %2, das sind keine ganzen Hertz; übernommen ist: %3</translation>
    </message>
    <message>
        <source>GTS in the configuration: %1 is %2 Hz, to which nobody can be tuned</source>
        <translation>GTS in der Konfiguration: %1 ist %2 Hz, worauf sich niemand einstellen lassen kann</translation>
    </message>
    <message>
        <source>GTS in the configuration: %1 has the index %2 of another module; %3 is used</source>
        <translation>GTS in der Konfiguration: %1 hat den Index %2 eines anderen Moduls; verwendet wird %3</translation>
    </message>
    <message>
        <source>GTS in the configuration: what could not be used once is kept below NotLoaded, and not supervised: %1</source>
        <translation>GTS in der Konfiguration: was einmal nicht brauchbar war, steht unter NotLoaded und wird nicht überwacht: %1</translation>
    </message>
    <message>
        <source>GTS in the configuration: these keys are not known and not read: %1</source>
        <translation>GTS in der Konfiguration: diese Schlüssel sind nicht bekannt und nicht gelesen: %1</translation>
    </message>
    <message>
        <source>GTS in the configuration: further faults: %1</source>
        <translation>GTS in der Konfiguration: weitere Fehler: %1</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>fehlt</translation>
    </message>
    <message>
        <source>data module %1 at %2 is deleted%4%3</source>
        <translation>Datenmodul %1 unter %2 ist gelöscht%4%3</translation>
    </message>
    <message>
        <source> with its frequencies %1</source>
        <translation> mit seinen Frequenzen %1</translation>
    </message>
    <message>
        <source>the token is not that of %1</source>
        <translation>das Token ist nicht das von %1</translation>
    </message>
    <message>
        <source>the user is not known here</source>
        <translation>der Benutzer ist hier nicht bekannt</translation>
    </message>
    <message>
        <source>no user is given</source>
        <translation>kein Benutzer ist angegeben</translation>
    </message>
    <message>
        <source>%1 is to be supervised%2</source>
        <translation>%1 soll überwacht werden%2</translation>
    </message>
    <message>
        <source>the protection by the ground transmitter suppression%1</source>
        <translation>der Schutz durch die Bodensenderunterdrückung%1</translation>
    </message>
    <message>
        <source>the ground transmitter suppression holds again%1</source>
        <translation>die Bodensenderunterdrückung gilt wieder%1</translation>
    </message>
</context>
<context>
    <name>CommandsPage</name>
    <message>
        <source>Let go</source>
        <translation>Loslassen</translation>
    </message>
    <message>
        <source>Let go of the device</source>
        <translation>Gerät loslassen</translation>
    </message>
    <message>
        <source>Reconnect &amp;input modules</source>
        <translation>&amp;Eingangsmodule neu verbinden</translation>
    </message>
    <message>
        <source>Reconnect input modules</source>
        <translation>Eingangsmodule neu verbinden</translation>
    </message>
    <message>
        <source>The server connects to its device.</source>
        <translation>Der Server verbindet sich mit seinem Gerät.</translation>
    </message>
    <message>
        <source>The server lets go of its device.</source>
        <translation>Der Server lässt sein Gerät los.</translation>
    </message>
    <message>
        <source>These lose what they have of it: %1.</source>
        <translation>Es verlieren, was sie davon haben: %1.</translation>
    </message>
</context>
<context>
    <name>ConfigPage</name>
    <message>
        <source>Reverted to what was saved: %1.</source>
        <translation>Zurück auf den gespeicherten Stand: %1.</translation>
    </message>
    <message>
        <source>Save &amp;configuration</source>
        <translation>&amp;Konfiguration speichern</translation>
    </message>
    <message>
        <source>Save configuration</source>
        <translation>Konfiguration speichern</translation>
    </message>
    <message>
        <source>DF Station Name</source>
        <translation>Name der Peilstation</translation>
    </message>
    <message>
        <source>DF Address</source>
        <translation>Peileradresse</translation>
    </message>
    <message>
        <source>Connect on startup</source>
        <translation>Beim Start verbinden</translation>
    </message>
    <message>
        <source>Force connection</source>
        <translation>Verbindung erzwingen</translation>
    </message>
    <message>
        <source>Number of Frequency Channels</source>
        <translation>Anzahl der Frequenzkanäle</translation>
    </message>
    <message>
        <source>on</source>
        <translation>an</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>&amp;Revert to what was saved</source>
        <translation>&amp;Zurück zum Gespeicherten</translation>
    </message>
    <message>
        <source>Name, address and forcing take effect with the next connection to the device; the averaging time is saved by itself.</source>
        <translation>Name, Adresse und Erzwingen wirken mit der nächsten Verbindung zum Gerät; die Mittelungszeit wird von selbst gespeichert.</translation>
    </message>
    <message>
        <source>Revert to what was saved</source>
        <translation>Zurück zum Gespeicherten</translation>
    </message>
    <message>
        <source>%1 (saved: &quot;%2&quot;)</source>
        <translation>%1 (gespeichert: „%2“)</translation>
    </message>
    <message>
        <source>Not saved: %1</source>
        <translation>Nicht gespeichert: %1</translation>
    </message>
    <message>
        <source>Not saved since the server began</source>
        <translation>Seit Beginn des Servers nicht gespeichert</translation>
    </message>
    <message>
        <source>Saved at the server, %1</source>
        <translation>Am Server gespeichert, %1</translation>
    </message>
    <message>
        <source>Saved by %1, %2</source>
        <translation>Gespeichert von %1, %2</translation>
    </message>
</context>
<context>
    <name>ConnectDialog</name>
    <message>
        <source>&amp;Encrypted (TLS)</source>
        <translation>&amp;Verschlüsselt (TLS)</translation>
    </message>
    <message>
        <source>Connect to a server</source>
        <translation>Mit einem Server verbinden</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>&amp;Durchsuchen...</translation>
    </message>
    <message>
        <source>&amp;Connect</source>
        <translation>V&amp;erbinden</translation>
    </message>
    <message>
        <source>&amp;Server:</source>
        <translation>&amp;Server:</translation>
    </message>
    <message>
        <source>Certificate &amp;authority:</source>
        <translation>&amp;Zertifizierungsstelle:</translation>
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
        <source>those that the system trusts</source>
        <translation>die, denen das System vertraut</translation>
    </message>
    <message>
        <source>Certificate authority</source>
        <translation>Zertifizierungsstelle</translation>
    </message>
    <message>
        <source>Certificates (*.pem *.crt);;All files (*)</source>
        <translation>Zertifikate (*.pem *.crt);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be a server: write HOST or HOST:PORT.</source>
        <translation>&quot;%1&quot; kann kein Server sein: HOST oder HOST:PORT angeben.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has letters that addresses cannot have: write %2.</source>
        <translation>&quot;%1&quot; hat Buchstaben, die in Adressen nicht möglich sind: %2 schreiben.</translation>
    </message>
    <message>
        <source>A token belongs to a user: say whose it is.</source>
        <translation>Ein Token gehört zu einem Benutzer: bitte angeben, zu wem.</translation>
    </message>
    <message>
        <source>A token is a secret: it is sent to other machines only if the connection is encrypted.</source>
        <translation>Ein Token ist ein Geheimnis: An andere Rechner wird es nur über eine verschlüsselte Verbindung gesendet.</translation>
    </message>
    <message>
        <source>This build knows no NATS: give HOST or HOST:PORT.</source>
        <translation>Dieser Build kennt kein NATS: geben Sie HOST oder HOST:PORT an.</translation>
    </message>
</context>
<context>
    <name>ConnectionBar</name>
    <message>
        <source>Try now to connect</source>
        <translation>Jetzt versuchen zu verbinden</translation>
    </message>
    <message>
        <source>Tr&amp;y now</source>
        <translation>&amp;Jetzt versuchen</translation>
    </message>
</context>
<context>
    <name>ConnectionTexts</name>
    <message>
        <source>No MpxORV is connected.</source>
        <translation>Kein MpxORV ist verbunden.</translation>
    </message>
    <message>
        <source>MpxORV: %1</source>
        <translation>MpxORV: %1</translation>
    </message>
    <message>
        <source>There is no MpxORV: %1</source>
        <translation>Es gibt keinen MpxORV: %1</translation>
    </message>
    <message>
        <source>Not connected</source>
        <translation>Nicht verbunden</translation>
    </message>
    <message>
        <source>Connecting to %1</source>
        <translation>Verbindung zu %1 wird aufgebaut</translation>
    </message>
    <message>
        <source>Connected to %1, encrypted</source>
        <translation>Mit %1 verbunden, verschlüsselt</translation>
    </message>
    <message>
        <source>Connected to %1</source>
        <translation>Mit %1 verbunden</translation>
    </message>
    <message>
        <source>The connection to %1 is lost</source>
        <translation>Die Verbindung zu %1 ist verloren</translation>
    </message>
    <message>
        <source>Not connected: choose Server, Connect.</source>
        <translation>Nicht verbunden: Server, Verbinden wählen.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>What the connection does, and why</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 ms</translation>
    </message>
    <message>
        <source>There is no MpxORV: the server does not give this console one.</source>
        <translation>Es gibt keinen MpxORV: Der Server gibt dieser Konsole keinen.</translation>
    </message>
    <message>
        <source>The server has not answered for %1. What is shown may be old.</source>
        <translation>Der Server antwortet seit %1 nicht. Was gezeigt wird, kann veraltet sein.</translation>
    </message>
    <message>
        <source>Lost at %1; what is shown is %2 old.</source>
        <translation>Verloren um %1; was gezeigt wird, ist %2 alt.</translation>
    </message>
    <message>
        <source>An attempt is under way.</source>
        <translation>Ein Versuch läuft.</translation>
    </message>
    <message>
        <source>The next try is in %1.</source>
        <translation>Der nächste Versuch ist in %1.</translation>
    </message>
    <message>
        <source>no answer for %1 ms</source>
        <translation>keine Antwort seit %1 ms</translation>
    </message>
</context>
<context>
    <name>ConsoleWindow</name>
    <message>
        <source>Multi-channel console</source>
        <translation>Mehrkanal-Konsole</translation>
    </message>
    <message>
        <source>The round trip to the server</source>
        <translation>Die Laufzeit zum Server und zurück</translation>
    </message>
    <message>
        <source>What this console is called at the server</source>
        <translation>Wie diese Konsole beim Server heißt</translation>
    </message>
    <message>
        <source>&amp;Server</source>
        <translation>&amp;Server</translation>
    </message>
    <message>
        <source>&amp;Connect...</source>
        <translation>&amp;Verbinden...</translation>
    </message>
    <message>
        <source>&amp;Disconnect</source>
        <translation>&amp;Trennen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Dark colours</source>
        <translation>&amp;Dunkle Farben</translation>
    </message>
    <message>
        <source>Connect to a server</source>
        <translation>Mit einem Server verbinden</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be a server.</source>
        <translation>&quot;%1&quot; kann kein Server sein.</translation>
    </message>
    <message>
        <source>Multi-channel console %1</source>
        <translation>Mehrkanal-Konsole %1</translation>
    </message>
    <message>
        <source>Connect to another server</source>
        <translation>Mit einem anderen Server verbinden</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Disconnect from the server</source>
        <translation>Vom Server trennen</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>Trennen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>&amp;Go</source>
        <translation>&amp;Gehe zu</translation>
    </message>
    <message>
        <source>&amp;Frequency field</source>
        <translation>&amp;Frequenzfeld</translation>
    </message>
    <message>
        <source>&amp;Recent frequencies</source>
        <translation>&amp;Letzte Frequenzen</translation>
    </message>
    <message>
        <source>Fa&amp;vourite frequencies</source>
        <translation>Fa&amp;voriten</translation>
    </message>
    <message>
        <source>&amp;Add to the favourites...</source>
        <translation>Zu den Favoriten &amp;hinzufügen...</translation>
    </message>
    <message>
        <source>&amp;Edit the favourites...</source>
        <translation>Favoriten &amp;bearbeiten...</translation>
    </message>
    <message>
        <source>One of the kept frequencies cannot be right and is left out.</source>
        <translation>Eine der gemerkten Frequenzen kann nicht stimmen und fehlt.</translation>
    </message>
    <message numerus="yes">
        <source>%n of the kept frequencies cannot be right and are left out.</source>
        <translation>
            <numerusform>%n der gemerkten Frequenzen kann nicht stimmen und fehlt.</numerusform>
            <numerusform>%n der gemerkten Frequenzen können nicht stimmen und fehlen.</numerusform>
        </translation>
    </message>
    <message>
        <source>Open a further &amp;station...</source>
        <translation>Weitere &amp;Station öffnen...</translation>
    </message>
    <message>
        <source>C&amp;lose this station</source>
        <translation>Diese Station s&amp;chließen</translation>
    </message>
    <message>
        <source>&amp;Next station</source>
        <translation>&amp;Nächste Station</translation>
    </message>
    <message>
        <source>&amp;Previous station</source>
        <translation>V&amp;orige Station</translation>
    </message>
    <message>
        <source>There are %1 stations, and no more have room.</source>
        <translation>Es sind %1 Stationen, mehr haben nicht Platz.</translation>
    </message>
    <message>
        <source>Open a further station</source>
        <translation>Weitere Station öffnen</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>In the frequency field: asks for the frequency</source>
        <translation>Im Frequenzfeld: fordert die Frequenz an</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>In the frequency field: takes back what is not sent</source>
        <translation>Im Frequenzfeld: nimmt zurück, was nicht gesendet ist</translation>
    </message>
    <message>
        <source>Up, Down</source>
        <translation>Auf, Ab</translation>
    </message>
    <message>
        <source>In the frequency field: a step, asked for once the steps rest</source>
        <translation>Im Frequenzfeld: ein Schritt, angefordert, sobald die Schritte ruhen</translation>
    </message>
    <message>
        <source>+, -, Left, Right, Home</source>
        <translation>+, -, Links, Rechts, Pos1</translation>
    </message>
    <message>
        <source>On the line of frequencies: nearer, wider, aside, all</source>
        <translation>Auf der Frequenzlinie: näher, weiter, zur Seite, alles</translation>
    </message>
    <message>
        <source>Close the station</source>
        <translation>Die Station schließen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Connect once more</source>
        <translation>Noch einmal verbinden</translation>
    </message>
</context>
<context>
    <name>EventExport</name>
    <message>
        <source>Events of %1, %2</source>
        <translation>Ereignisse von %1, %2</translation>
    </message>
</context>
<context>
    <name>EventFeed</name>
    <message>
        <source>One event is missing here: the server does not keep so many</source>
        <translation>Hier fehlt ein Ereignis: so viele bewahrt der Server nicht auf</translation>
    </message>
    <message>
        <source>%1 events are missing here: the server does not keep so many</source>
        <translation>Hier fehlen %1 Ereignisse: so viele bewahrt der Server nicht auf</translation>
    </message>
</context>
<context>
    <name>EventLook</name>
    <message>
        <source>Refused</source>
        <translation>Abgelehnt</translation>
    </message>
    <message>
        <source>Notice</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Alarm</source>
        <translation>Alarm</translation>
    </message>
    <message>
        <source>Info</source>
        <translation>Info</translation>
    </message>
</context>
<context>
    <name>EventModel</name>
    <message>
        <source>Server</source>
        <translation>Server</translation>
    </message>
    <message>
        <source>Access</source>
        <translation>Zugang</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>Konfiguration</translation>
    </message>
    <message>
        <source>Suppression</source>
        <translation>Unterdrückung</translation>
    </message>
    <message>
        <source>Severity</source>
        <translation>Stufe</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>Who</source>
        <translation>Wer</translation>
    </message>
    <message>
        <source>What</source>
        <translation>Was</translation>
    </message>
</context>
<context>
    <name>EventsPage</name>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Severity</source>
        <translation>Stufe</translation>
    </message>
    <message>
        <source>All severities</source>
        <translation>Alle Stufen</translation>
    </message>
    <message>
        <source>Notices and above</source>
        <translation>Ab Hinweis</translation>
    </message>
    <message>
        <source>Warnings and alarms</source>
        <translation>Warnungen und Alarme</translation>
    </message>
    <message>
        <source>Alarms</source>
        <translation>Alarme</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>All sources</source>
        <translation>Alle Quellen</translation>
    </message>
    <message>
        <source>MpxORVs</source>
        <translation>MpxORVs</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suche</translation>
    </message>
    <message>
        <source>Ctrl+F</source>
        <translation>Strg+F</translation>
    </message>
    <message>
        <source>&amp;Export...</source>
        <translation>&amp;Exportieren...</translation>
    </message>
    <message>
        <source>&amp;Following</source>
        <translation>&amp;Folgt</translation>
    </message>
    <message numerus="yes">
        <source>&amp;Follow (%n new)</source>
        <translation>
            <numerusform>&amp;Folgen (%n neu)</numerusform>
            <numerusform>&amp;Folgen (%n neu)</numerusform>
        </translation>
    </message>
    <message>
        <source>&amp;Follow</source>
        <translation>&amp;Folgen</translation>
    </message>
    <message>
        <source>No server tells its events here. The page Log may have more.</source>
        <translation>Hier teilt kein Server seine Ereignisse mit. Mehr steht vielleicht auf der Seite Protokoll.</translation>
    </message>
    <message>
        <source>%1 of %2 events</source>
        <translation>%1 von %2 Ereignissen</translation>
    </message>
    <message>
        <source>%1 of 1 event</source>
        <translation>%1 von 1 Ereignis</translation>
    </message>
    <message>
        <source>Export events</source>
        <translation>Ereignisse exportieren</translation>
    </message>
    <message>
        <source>Table (*.csv)</source>
        <translation>Tabelle (*.csv)</translation>
    </message>
    <message>
        <source>Text (*.txt)</source>
        <translation>Text (*.txt)</translation>
    </message>
    <message>
        <source>The file cannot be written: %1</source>
        <translation>Die Datei kann nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>What happened from %1 to %2 did not come here: lines of the log are missing, events were asked for again</source>
        <translation>Was von %1 bis %2 geschah, kam hier nicht an: Zeilen des Protokolls fehlen, Ereignisse wurden noch einmal erfragt</translation>
    </message>
    <message>
        <source>Not connected from %1 to %2: lines of the log are missing, events were asked for again</source>
        <translation>Nicht verbunden von %1 bis %2: Zeilen des Protokolls fehlen, Ereignisse wurden noch einmal erfragt</translation>
    </message>
    <message>
        <source>Show o&amp;lder</source>
        <translation>Ä&amp;ltere zeigen</translation>
    </message>
</context>
<context>
    <name>FaultNotice</name>
    <message>
        <source>Not all of the configuration file is in use:</source>
        <translation>Nicht alles aus der Konfigurationsdatei ist in Gebrauch:</translation>
    </message>
    <message>
        <source>The log tells of %1 more.</source>
        <translation>Das Protokoll nennt %1 weitere.</translation>
    </message>
</context>
<context>
    <name>FavouritesDialog</name>
    <message>
        <source>Favourite frequencies</source>
        <translation>Favoriten</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Hinzufügen</translation>
    </message>
    <message>
        <source>Re&amp;name</source>
        <translation>&amp;Umbenennen</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>&amp;Up</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>&amp;Down</source>
        <translation>Nach u&amp;nten</translation>
    </message>
</context>
<context>
    <name>FavouritesModel</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no frequency that can be tuned to. Enter one such as 121.5 or 118400 kHz.</source>
        <translation>„%1“ ist keine Frequenz, die sich einstellen lässt. Geben Sie eine wie 121,5 oder 118400 kHz ein.</translation>
    </message>
    <message>
        <source>There are %1 favourites, and cannot be more.</source>
        <translation>Es gibt %1 Favoriten; mehr können es nicht sein.</translation>
    </message>
</context>
<context>
    <name>FrequencyLine</name>
    <message>
        <source>Frequencies in use</source>
        <translation>Benutzte Frequenzen</translation>
    </message>
    <message>
        <source>The connection is lost: this is what was last known.</source>
        <translation>Die Verbindung ist verloren: Das ist zuletzt bekannt gewesen.</translation>
    </message>
</context>
<context>
    <name>FrequencyList</name>
    <message>
        <source>%1 more</source>
        <translation>%1 weitere</translation>
    </message>
</context>
<context>
    <name>FrequencyPicker</name>
    <message>
        <source>Recent</source>
        <translation>Letzte</translation>
    </message>
    <message>
        <source>The frequencies that were granted last. Choosing one asks for nothing yet.</source>
        <translation>Die Frequenzen, die zuletzt gewährt wurden. Auswählen fordert noch nichts an.</translation>
    </message>
    <message>
        <source>Favourites</source>
        <translation>Favoriten</translation>
    </message>
    <message>
        <source>Frequencies with names of yours. Choosing one asks for nothing yet.</source>
        <translation>Frequenzen mit eigenen Namen. Auswählen fordert noch nichts an.</translation>
    </message>
    <message>
        <source>(outside the range of this device)</source>
        <translation>(außerhalb des Bereichs dieses Geräts)</translation>
    </message>
    <message>
        <source>None was granted yet</source>
        <translation>Noch keine gewährt</translation>
    </message>
    <message>
        <source>There are none yet</source>
        <translation>Noch keine</translation>
    </message>
    <message>
        <source>&amp;Add %1...</source>
        <translation>%1 &amp;hinzufügen...</translation>
    </message>
    <message>
        <source>&amp;Edit...</source>
        <translation>&amp;Bearbeiten...</translation>
    </message>
</context>
<context>
    <name>HelpMenu</name>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>This &amp;page</source>
        <translation>Diese &amp;Seite</translation>
    </message>
    <message>
        <source>&amp;What is this?</source>
        <translation>&amp;Was ist das?</translation>
    </message>
    <message>
        <source>&amp;Keys...</source>
        <translation>&amp;Tasten...</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;Über</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
</context>
<context>
    <name>Holders</name>
    <message>
        <source>%1 more</source>
        <translation>%1 weitere</translation>
    </message>
    <message>
        <source>These read from the master&apos;s range and lose their frequency: %1.</source>
        <translation>Aus dem Bereich des Masters lesen und verlieren ihre Frequenz: %1.</translation>
    </message>
</context>
<context>
    <name>IgnoringModel</name>
    <message>
        <source>Ignores the suppression</source>
        <translation>Missachtet die Unterdrückung</translation>
    </message>
    <message>
        <source>Switched by</source>
        <translation>Geschaltet von</translation>
    </message>
    <message>
        <source>Since</source>
        <translation>Seit</translation>
    </message>
</context>
<context>
    <name>InputModel</name>
    <message>
        <source>%1 and %2 have one address: both read the same inputs</source>
        <translation>%1 und %2 haben eine Adresse: Beide lesen dieselben Eingänge</translation>
    </message>
    <message>
        <source>Module</source>
        <translation>Modul</translation>
    </message>
    <message>
        <source>IP Address</source>
        <translation>IP-Adresse</translation>
    </message>
    <message>
        <source>Input</source>
        <translation>Eingang</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Frequency (MHz)</source>
        <translation>Frequenz (MHz)</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>this column cannot be changed</source>
        <translation>diese Spalte kann nicht geändert werden</translation>
    </message>
    <message>
        <source>Choose the cell to begin at first</source>
        <translation>Wählen Sie zuerst die Zelle, bei der begonnen wird</translation>
    </message>
    <message>
        <source>There are %1 lines for one row</source>
        <translation>Es sind %1 Zeilen für eine Tabellenzeile</translation>
    </message>
    <message>
        <source>There are %1 lines for %2 rows</source>
        <translation>Es sind %1 Zeilen für %2 Tabellenzeilen</translation>
    </message>
    <message>
        <source>The first line has to be: %1</source>
        <translation>Die erste Zeile muss lauten: %1</translation>
    </message>
    <message>
        <source>it has %1 cells and not %2</source>
        <translation>sie hat %1 Zellen statt %2</translation>
    </message>
    <message>
        <source>it has one cell and not %1</source>
        <translation>sie hat eine Zelle statt %1</translation>
    </message>
    <message>
        <source>there is no input %1 of a module %2</source>
        <translation>es gibt keinen Eingang %1 eines Moduls %2</translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>Outside what the device can be tuned to: it will never blank</source>
        <translation>Außerhalb dessen, worauf das Gerät abgestimmt werden kann: Es wird nie ausgetastet</translation>
    </message>
    <message>
        <source>another module is called &quot;%1&quot;</source>
        <translation>ein anderes Modul heißt „%1“</translation>
    </message>
    <message>
        <source>it has %1 cells and not one</source>
        <translation>sie hat %1 Zellen statt einer</translation>
    </message>
    <message>
        <source>this input stands in line %1 too</source>
        <translation>dieser Eingang steht auch in Zeile %1</translation>
    </message>
    <message>
        <source>The module is in error</source>
        <translation>Das Modul ist gestört</translation>
    </message>
    <message>
        <source>The module is disconnected</source>
        <translation>Das Modul ist getrennt</translation>
    </message>
    <message>
        <source>There is nothing below the first line</source>
        <translation>Unter der ersten Zeile steht nichts</translation>
    </message>
    <message>
        <source>a quotation mark is not closed</source>
        <translation>ein Anführungszeichen ist nicht geschlossen</translation>
    </message>
</context>
<context>
    <name>InputRules</name>
    <message>
        <source>&quot;%1&quot; is no frequency</source>
        <translation>„%1“ ist keine Frequenz</translation>
    </message>
    <message>
        <source>%1 MHz lies outside %2 to %3 MHz</source>
        <translation>%1 MHz liegt nicht zwischen %2 und %3 MHz</translation>
    </message>
    <message>
        <source>a name has %1 characters at most</source>
        <translation>ein Name hat höchstens %1 Zeichen</translation>
    </message>
    <message>
        <source>a name is one line of visible characters</source>
        <translation>ein Name ist eine Zeile sichtbarer Zeichen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be right: %2</source>
        <translation>„%1“ kann nicht stimmen: %2</translation>
    </message>
</context>
<context>
    <name>InputStatusModel</name>
    <message>
        <source>● keyed</source>
        <translation>● getastet</translation>
    </message>
    <message>
        <source>○ silent</source>
        <translation>○ still</translation>
    </message>
    <message>
        <source>✕ not supervised</source>
        <translation>✕ nicht überwacht</translation>
    </message>
    <message>
        <source>? not live</source>
        <translation>? unbekannt</translation>
    </message>
    <message>
        <source>Module</source>
        <translation>Modul</translation>
    </message>
    <message>
        <source>Input</source>
        <translation>Eingang</translation>
    </message>
    <message>
        <source>Transmitter</source>
        <translation>Sender</translation>
    </message>
    <message>
        <source>Frequency (MHz)</source>
        <translation>Frequenz (MHz)</translation>
    </message>
    <message>
        <source>Keyed since</source>
        <translation>Getastet seit</translation>
    </message>
    <message>
        <source>Blanked last</source>
        <translation>Zuletzt ausgetastet</translation>
    </message>
</context>
<context>
    <name>InputsView</name>
    <message>
        <source>Taken. %1</source>
        <translation>Übernommen. %1</translation>
    </message>
    <message>
        <source>Inputs</source>
        <translation>Eingänge</translation>
    </message>
    <message>
        <source>Inputs: name, frequency and state</source>
        <translation>Eingänge: Name, Frequenz und Zustand</translation>
    </message>
    <message>
        <source>Reads the inputs of the module of the current row once</source>
        <translation>Liest die Eingänge des Moduls der aktuellen Zeile einmal</translation>
    </message>
    <message>
        <source>Enters cells of a spreadsheet, from the current cell on (Ctrl+V)</source>
        <translation>Trägt Zellen einer Tabellenkalkulation ein, ab der aktuellen Zelle (Strg+V)</translation>
    </message>
    <message>
        <source>Not taken. %1</source>
        <translation>Nicht übernommen. %1</translation>
    </message>
    <message>
        <source>Testing %1 at %2…</source>
        <translation>%1 bei %2 wird geprüft …</translation>
    </message>
    <message>
        <source>no input is keyed</source>
        <translation>kein Eingang ist getastet</translation>
    </message>
    <message>
        <source>keyed: %1</source>
        <translation>getastet: %1</translation>
    </message>
    <message>
        <source>Export the inputs</source>
        <translation>Eingänge exportieren</translation>
    </message>
    <message>
        <source>Import inputs</source>
        <translation>Eingänge importieren</translation>
    </message>
    <message>
        <source>Written to %1</source>
        <translation>Geschrieben nach %1</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Names and frequencies of %1 are taken</source>
        <translation>Namen und Frequenzen aus %1 sind übernommen</translation>
    </message>
    <message>
        <source>One cell of the inputs is changed.</source>
        <translation>Eine Zelle der Eingänge ist geändert.</translation>
    </message>
    <message>
        <source>%1 cells of the inputs are changed.</source>
        <translation>%1 Zellen der Eingänge sind geändert.</translation>
    </message>
    <message>
        <source>Names and frequencies of the clipboard are taken</source>
        <translation>Namen und Frequenzen der Zwischenablage sind übernommen</translation>
    </message>
    <message>
        <source>&amp;Test connection</source>
        <translation>Verbindung &amp;prüfen</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>&amp;Import…</source>
        <translation>&amp;Importieren …</translation>
    </message>
    <message>
        <source>&amp;Export…</source>
        <translation>E&amp;xportieren …</translation>
    </message>
    <message>
        <source>%1 at %2 answers at %3: %4</source>
        <translation>%1 bei %2 antwortet um %3: %4</translation>
    </message>
    <message>
        <source>%1 at %2 does not answer at %3: %4</source>
        <translation>%1 bei %2 antwortet um %3 nicht: %4</translation>
    </message>
    <message>
        <source>No input has any more: %1.</source>
        <translation>Kein Eingang hat mehr: %1.</translation>
    </message>
    <message>
        <source>%1 is not taken. %2</source>
        <translation>%1 ist nicht übernommen. %2</translation>
    </message>
</context>
<context>
    <name>Judgement</name>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>power on</source>
        <translation>eingeschaltet</translation>
    </message>
    <message>
        <source>loading</source>
        <translation>lädt</translation>
    </message>
    <message>
        <source>self test</source>
        <translation>Selbsttest</translation>
    </message>
    <message>
        <source>calibrating</source>
        <translation>kalibriert</translation>
    </message>
    <message>
        <source>ready</source>
        <translation>bereit</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>ausgefallen</translation>
    </message>
    <message>
        <source>idle</source>
        <translation>Ruhe</translation>
    </message>
    <message>
        <source>fixed frequency</source>
        <translation>Festfrequenz</translation>
    </message>
    <message>
        <source>audio</source>
        <translation>Audio</translation>
    </message>
    <message>
        <source>search</source>
        <translation>Suche</translation>
    </message>
    <message>
        <source>scan</source>
        <translation>Suchlauf</translation>
    </message>
    <message>
        <source>calibration</source>
        <translation>Kalibrierung</translation>
    </message>
    <message>
        <source>built-in test</source>
        <translation>Eigentest</translation>
    </message>
    <message>
        <source>memory scan</source>
        <translation>Speichersuchlauf</translation>
    </message>
    <message>
        <source>The server does not tell.</source>
        <translation>Der Server sagt es nicht.</translation>
    </message>
    <message>
        <source>%1 since %2</source>
        <translation>%1 seit %2</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 ms</translation>
    </message>
    <message>
        <source>Connected to %1, encrypted. What is shown is live.</source>
        <translation>Mit %1 verbunden, verschlüsselt. Alles Gezeigte gilt jetzt.</translation>
    </message>
    <message>
        <source>Connected to %1. What is shown is live.</source>
        <translation>Mit %1 verbunden. Alles Gezeigte gilt jetzt.</translation>
    </message>
    <message>
        <source>not connected</source>
        <translation>nicht verbunden</translation>
    </message>
    <message>
        <source>A click asks for a server.</source>
        <translation>Ein Klick fragt nach einem Server.</translation>
    </message>
    <message>
        <source>connecting</source>
        <translation>verbindet</translation>
    </message>
    <message>
        <source>lost for %1</source>
        <translation>verloren seit %1</translation>
    </message>
    <message>
        <source>The connection to %1 is lost; what is shown is %2 old.</source>
        <translation>Die Verbindung zu %1 ist verloren; das Gezeigte ist %2 alt.</translation>
    </message>
    <message>
        <source>switched off</source>
        <translation>ausgeschaltet</translation>
    </message>
    <message>
        <source>no connection</source>
        <translation>keine Verbindung</translation>
    </message>
    <message>
        <source>Boot state: %1</source>
        <translation>Bootzustand: %1</translation>
    </message>
    <message>
        <source>Mode: %1</source>
        <translation>Betriebsart: %1</translation>
    </message>
    <message>
        <source>Connection: %1</source>
        <translation>Verbindung: %1</translation>
    </message>
    <message>
        <source>nobody</source>
        <translation>niemand</translation>
    </message>
    <message>
        <source>No MpxORV is job master.</source>
        <translation>Kein MpxORV ist Auftragsmaster.</translation>
    </message>
    <message>
        <source>this console</source>
        <translation>diese Konsole</translation>
    </message>
    <message>
        <source>Job master: %1</source>
        <translation>Auftragsmaster: %1</translation>
    </message>
    <message>
        <source>%1 NOT SUPERVISED</source>
        <translation>%1 UNÜBERWACHT</translation>
    </message>
    <message>
        <source>Not supervised: %1</source>
        <translation>Nicht überwacht: %1</translation>
    </message>
    <message>
        <source>%1 keyed</source>
        <translation>%1 getastet</translation>
    </message>
    <message>
        <source>Keyed: %1</source>
        <translation>Getastet: %1</translation>
    </message>
    <message>
        <source>%1 of %2 in use</source>
        <translation>%1 von %2 in Betrieb</translation>
    </message>
    <message>
        <source>no modules</source>
        <translation>keine Module</translation>
    </message>
    <message>
        <source>%1 of %2 modules are in use</source>
        <translation>%1 von %2 Modulen in Betrieb</translation>
    </message>
    <message>
        <source>The input module is in use</source>
        <translation>Das Eingangsmodul ist in Betrieb</translation>
    </message>
    <message>
        <source>The input module is not in use</source>
        <translation>Das Eingangsmodul ist nicht in Betrieb</translation>
    </message>
    <message>
        <source>The server has no input modules.</source>
        <translation>Der Server hat keine Eingangsmodule.</translation>
    </message>
    <message>
        <source>not used</source>
        <translation>nicht benutzt</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keines</translation>
    </message>
    <message>
        <source>There is none yet.</source>
        <translation>Es gibt noch keines.</translation>
    </message>
    <message>
        <source>NOT TUNED</source>
        <translation>NICHT EINGESTELLT</translation>
    </message>
    <message>
        <source>keyed</source>
        <translation>getastet</translation>
    </message>
    <message>
        <source>%1 old</source>
        <translation>%1 alt</translation>
    </message>
    <message>
        <source>The connection is lost: %1.</source>
        <translation>Die Verbindung ist verloren: %1.</translation>
    </message>
    <message>
        <source>unsupervised</source>
        <translation>unüberwacht</translation>
    </message>
    <message>
        <source>lost</source>
        <translation>verloren</translation>
    </message>
    <message>
        <source>%1 of %2 receivers</source>
        <translation>%1 von %2 Empfängern</translation>
    </message>
    <message>
        <source>%1/%2 ready</source>
        <translation>%1/%2 bereit</translation>
    </message>
    <message>
        <source>unprotected</source>
        <translation>ungeschützt</translation>
    </message>
    <message>
        <source>The ground transmitter suppression is switched off for it.</source>
        <translation>Die Bodensenderunterdrückung ist für ihn ausgeschaltet.</translation>
    </message>
    <message>
        <source>The ground transmitter suppression is switched off for it, by %1.</source>
        <translation>Die Bodensenderunterdrückung ist für ihn ausgeschaltet, durch %1.</translation>
    </message>
    <message>
        <source>taken away</source>
        <translation>weggenommen</translation>
    </message>
</context>
<context>
    <name>KeyingTimeline</name>
    <message>
        <source>Timeline of the transmitters</source>
        <translation>Zeitverlauf der Sender</translation>
    </message>
    <message>
        <source>10 min</source>
        <translation>10 Min.</translation>
    </message>
    <message>
        <source>1 h</source>
        <translation>1 Std.</translation>
    </message>
    <message>
        <source>24 h</source>
        <translation>24 Std.</translation>
    </message>
    <message>
        <source>solid: keyed, hatched: not known, empty: silent</source>
        <translation>voll: getastet, schraffiert: unbekannt, leer: still</translation>
    </message>
</context>
<context>
    <name>KeysDialog</name>
    <message>
        <source>The next page, from the tabs</source>
        <translation>Die nächste Seite, von den Reitern aus</translation>
    </message>
    <message>
        <source>The next control; with Shift the one before</source>
        <translation>Das nächste Bedienelement; mit Umschalt das vorige</translation>
    </message>
    <message>
        <source>Alt and an underlined letter</source>
        <translation>Alt und ein unterstrichener Buchstabe</translation>
    </message>
    <message>
        <source>That control</source>
        <translation>Dieses Bedienelement</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Taste</translation>
    </message>
    <message>
        <source>What it does</source>
        <translation>Was sie tut</translation>
    </message>
    <message>
        <source>Arrow keys</source>
        <translation>Pfeiltasten</translation>
    </message>
    <message>
        <source>The cell beside, in a table</source>
        <translation>Die Zelle daneben, in einer Tabelle</translation>
    </message>
</context>
<context>
    <name>LastEvents</name>
    <message>
        <source>Last events</source>
        <translation>Letzte Ereignisse</translation>
    </message>
</context>
<context>
    <name>Marks</name>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>keyed since %1</source>
        <translation>getastet seit %1</translation>
    </message>
    <message>
        <source>keyed</source>
        <translation>getastet</translation>
    </message>
    <message>
        <source>not supervised</source>
        <translation>nicht überwacht</translation>
    </message>
    <message>
        <source> (master)</source>
        <translation> (Master)</translation>
    </message>
    <message>
        <source>since %1</source>
        <translation>seit %1</translation>
    </message>
    <message>
        <source>job master</source>
        <translation>Auftragsmaster</translation>
    </message>
    <message>
        <source>this console</source>
        <translation>diese Konsole</translation>
    </message>
    <message>
        <source>wanted</source>
        <translation>gewünscht</translation>
    </message>
    <message>
        <source>%1: wanted here</source>
        <translation>%1: hier gewünscht</translation>
    </message>
    <message>
        <source>range of the master</source>
        <translation>Bereich des Masters</translation>
    </message>
    <message>
        <source>%1 to %2: received by the job master, %3; who may read from it needs no channel there</source>
        <translation>%1 bis %2: empfängt der Auftragsmaster, %3; wer dort mitlesen darf, braucht keinen eigenen Kanal</translation>
    </message>
    <message>
        <source>outside the device&apos;s range</source>
        <translation>außerhalb des Gerätebereichs</translation>
    </message>
    <message>
        <source>The device can be tuned from %1 to %2</source>
        <translation>Das Gerät lässt sich von %1 bis %2 einstellen</translation>
    </message>
</context>
<context>
    <name>ModuleStatusModel</name>
    <message>
        <source>It answers since %1, and blanks nothing until it is connected anew.</source>
        <translation>Es antwortet seit %1, und tastet nichts aus, bis es neu verbunden ist.</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>Disconnected</source>
        <translation>Getrennt</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>never</source>
        <translation>nie</translation>
    </message>
    <message>
        <source>%1 ago</source>
        <translation>vor %1</translation>
    </message>
    <message>
        <source>%1 when last heard of</source>
        <translation>%1, als zuletzt davon gehört wurde</translation>
    </message>
    <message>
        <source>Module</source>
        <translation>Modul</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Since</source>
        <translation>Seit</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>Grund</translation>
    </message>
    <message>
        <source>IP Address</source>
        <translation>IP-Adresse</translation>
    </message>
    <message>
        <source>Last answer</source>
        <translation>Letzte Antwort</translation>
    </message>
</context>
<context>
    <name>MpxOrvCells</name>
    <message>
        <source>Idle</source>
        <translation>untätig</translation>
    </message>
    <message>
        <source>At work</source>
        <translation>arbeitet</translation>
    </message>
    <message>
        <source>Tuned</source>
        <translation>eingestellt</translation>
    </message>
    <message>
        <source>Reads along</source>
        <translation>liest mit</translation>
    </message>
    <message>
        <source>Job master</source>
        <translation>Auftragsmaster</translation>
    </message>
    <message>
        <source>is master</source>
        <translation>ist Master</translation>
    </message>
    <message>
        <source>reads from it</source>
        <translation>liest daraus</translation>
    </message>
    <message>
        <source>Switched in the server&apos;s own window, %1</source>
        <translation>Im Fenster des Servers geschaltet, %1</translation>
    </message>
    <message>
        <source>Switched by %1, %2</source>
        <translation>Geschaltet von %1, %2</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Since</source>
        <translation>Seit</translation>
    </message>
    <message>
        <source>Master</source>
        <translation>Master</translation>
    </message>
    <message>
        <source>Suppression</source>
        <translation>Unterdrückung</translation>
    </message>
    <message>
        <source>Clients</source>
        <translation>Clients</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>Kommentar</translation>
    </message>
    <message>
        <source>static</source>
        <translation>statisch</translation>
    </message>
    <message>
        <source>dynamic</source>
        <translation>dynamisch</translation>
    </message>
    <message>
        <source>obeys</source>
        <translation>beachtet</translation>
    </message>
    <message>
        <source>ignores</source>
        <translation>missachtet</translation>
    </message>
    <message>
        <source>Operation mode: %1</source>
        <translation>Betriebsart: %1</translation>
    </message>
    <message>
        <source>Not switched so far</source>
        <translation>Bisher nicht geschaltet</translation>
    </message>
</context>
<context>
    <name>MpxOrvDetails</name>
    <message>
        <source>Comment</source>
        <translation>Kommentar</translation>
    </message>
    <message>
        <source>Comment:</source>
        <translation>Kommentar:</translation>
    </message>
    <message>
        <source>Obeys the ground transmitter suppression</source>
        <translation>Beachtet die Bodensenderunterdrückung</translation>
    </message>
    <message>
        <source>%1 loses its protection: it can then be tuned to the frequencies of ground transmitters while these are on the air.</source>
        <translation>%1 verliert den Schutz: Es kann dann auf Frequenzen von Bodensendern eingestellt werden, während diese senden.</translation>
    </message>
    <message>
        <source>Switch the suppression off</source>
        <translation>Die Unterdrückung ausschalten</translation>
    </message>
    <message>
        <source>Switch off</source>
        <translation>Ausschalten</translation>
    </message>
    <message>
        <source>No MpxORV is chosen</source>
        <translation>Kein MpxORV ausgewählt</translation>
    </message>
</context>
<context>
    <name>MpxOrvListPage</name>
    <message>
        <source>Filter: part of a name, a frequency, a client or a comment</source>
        <translation>Filter: Teil eines Namens, einer Frequenz, eines Clients oder Kommentars</translation>
    </message>
    <message>
        <source>Filter of the list of MpxORVs</source>
        <translation>Filter der Liste der MpxORVs</translation>
    </message>
    <message>
        <source>Filter the MpxORVs</source>
        <translation>MpxORVs filtern</translation>
    </message>
    <message>
        <source>MpxORVs</source>
        <translation>MpxORVs</translation>
    </message>
    <message>
        <source>MpxORVs: %1</source>
        <translation>Anzahl: %1</translation>
    </message>
    <message>
        <source>MpxORVs: %1 of %2</source>
        <translation>Anzahl: %1 von %2</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
</context>
<context>
    <name>MpxOrvPage</name>
    <message>
        <source>Use an MpxORV of my own</source>
        <translation>Einen eigenen MpxORV benutzen</translation>
    </message>
    <message>
        <source>Operation mode:</source>
        <translation>Betriebsart:</translation>
    </message>
    <message>
        <source>Does:</source>
        <translation>Tut:</translation>
    </message>
    <message>
        <source>Job master:</source>
        <translation>Auftragsmaster:</translation>
    </message>
    <message>
        <source>Requests</source>
        <translation>Anforderungen</translation>
    </message>
    <message>
        <source>Report interval</source>
        <translation>Meldeintervall</translation>
    </message>
    <message>
        <source>Report &amp;interval:</source>
        <translation>Melde&amp;intervall:</translation>
    </message>
    <message>
        <source>Take or give up &amp;mastership</source>
        <translation>&amp;Master werden oder aufgeben</translation>
    </message>
    <message>
        <source>&amp;Restart job</source>
        <translation>Auftrag &amp;neu starten</translation>
    </message>
    <message>
        <source>&amp;Built-in test</source>
        <translation>Selbst&amp;test</translation>
    </message>
    <message>
        <source>Ca&amp;librate</source>
        <translation>&amp;Kalibrieren</translation>
    </message>
    <message>
        <source>Policies</source>
        <translation>Rechte</translation>
    </message>
    <message>
        <source>Answers</source>
        <translation>Antworten</translation>
    </message>
</context>
<context>
    <name>NoticeBar</name>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>&amp;Dismiss</source>
        <translation>Aus&amp;blenden</translation>
    </message>
</context>
<context>
    <name>OverviewPage</name>
    <message>
        <source>%1: Nobody waits any more until %2 is silent, since there is no MpxORV to tune any more.</source>
        <translation>%1: Niemand wartet mehr, bis %2 still ist, denn es gibt keinen MpxORV mehr, der einzustellen wäre.</translation>
    </message>
    <message>
        <source>%1: Nobody waits any more until %2 is silent, since the server has ceased to say so.</source>
        <translation>%1: Niemand wartet mehr, bis %2 still ist, denn der Server teilt es nicht mehr mit.</translation>
    </message>
    <message>
        <source>Asks for the wanted frequency once more, one time, as soon as no transmitter on it is keyed.</source>
        <translation>Fordert die gewünschte Frequenz noch einmal an, ein einziges Mal, sobald kein Sender darauf getastet ist.</translation>
    </message>
    <message>
        <source>Show &amp;all</source>
        <translation>Alles &amp;zeigen</translation>
    </message>
    <message>
        <source>Show all frequencies</source>
        <translation>Alle Frequenzen zeigen</translation>
    </message>
    <message>
        <source>A click puts a frequency into the field, the wheel zooms, dragging moves.</source>
        <translation>Ein Klick setzt eine Frequenz ins Feld, das Rad vergrößert, Ziehen verschiebt.</translation>
    </message>
    <message>
        <source>Frequencies in use (MHz)</source>
        <translation>Benutzte Frequenzen (MHz)</translation>
    </message>
    <message>
        <source>Sweep time, round trip (dotted, right), in ms</source>
        <translation>Durchlaufzeit, Umlauf (punktiert, rechts) in ms</translation>
    </message>
    <message>
        <source>Last events</source>
        <translation>Letzte Ereignisse</translation>
    </message>
    <message>
        <source>Waits until %1 is silent: cancel</source>
        <translation>Wartet, bis %1 still ist: abbrechen</translation>
    </message>
    <message>
        <source>&amp;Retry when silent</source>
        <translation>&amp;Wiederholen, wenn still</translation>
    </message>
</context>
<context>
    <name>PageHelp</name>
    <message>
        <source>What matters at a glance: your own MpxORV and its frequency, what the server answered, who is tuned to what, and how the device and the connection have been lately.</source>
        <translation>Was auf einen Blick zählt: das eigene MpxORV und seine Frequenz, was der Server geantwortet hat, wer worauf eingestellt ist, und wie es Gerät und Verbindung zuletzt ging.</translation>
    </message>
    <message>
        <source>What the server and its device do. What is dimmed and hatched is not live: it is the last content known.</source>
        <translation>Was der Server und sein Gerät tun. Was abgedunkelt und schraffiert ist, ist nicht aktuell: Es ist der letzte bekannte Inhalt.</translation>
    </message>
    <message>
        <source>How the server is configured. A change holds at once, or with the next connection to the device where that is said; it is kept for the next start only when it is saved. A bar marks what is not saved.</source>
        <translation>Wie der Server konfiguriert ist. Eine Änderung gilt sofort, oder mit der nächsten Verbindung zum Gerät, wo das gesagt ist; für den nächsten Start bleibt sie nur, wenn sie gespeichert wird. Ein Balken zeigt, was nicht gespeichert ist.</translation>
    </message>
    <message>
        <source>Whether the server holds its device. Letting go of it takes the frequencies and the mastership from everybody; for ten seconds that can be undone.</source>
        <translation>Ob der Server sein Gerät hält. Es loszulassen nimmt allen die Frequenzen und die Masterschaft; zehn Sekunden lang lässt sich das zurücknehmen.</translation>
    </message>
    <message>
        <source>What happens at the server, as it says it, a line each. The page holds 1000 lines.</source>
        <translation>Was am Server geschieht, wie er es sagt, je eine Zeile. Die Seite fasst 1000 Zeilen.</translation>
    </message>
    <message>
        <source>What happened at the server, also before this console was there: by severity, source and person, to be filtered, searched and exported.</source>
        <translation>Was am Server geschah, auch bevor diese Konsole da war: nach Schwere, Quelle und Person, zum Filtern, Suchen und Ausgeben.</translation>
    </message>
    <message>
        <source>Which ground transmitters are on the air, and which frequencies nobody watches because a module does not answer.</source>
        <translation>Welche Bodensender senden, und welche Frequenzen niemand überwacht, weil ein Modul nicht antwortet.</translation>
    </message>
    <message>
        <source>All MpxORVs, yours in bold, the job master on top. A click on a title sorts, Ctrl+F filters. Below are the comment and the policies of the one that is chosen.</source>
        <translation>Alle MpxORVs, das eigene fett, der Auftragsmaster oben. Ein Klick auf einen Titel sortiert, Strg+F filtert. Darunter stehen Kommentar und Rechte des ausgewählten.</translation>
    </message>
    <message>
        <source>All MpxORVs in the server&apos;s own words, in the order in which they came.</source>
        <translation>Alle MpxORVs in den Worten des Servers, in der Reihenfolge, in der sie kamen.</translation>
    </message>
    <message>
        <source>Your own MpxORV: type a frequency and press Enter to tune it, ask the server for other things, and see what it answered and what you may do.</source>
        <translation>Das eigene MpxORV: Eine Frequenz eintippen und mit Enter einstellen, den Server um anderes bitten, und sehen, was er geantwortet hat und was man darf.</translation>
    </message>
    <message>
        <source>What the server and its device do.</source>
        <translation>Was der Server und sein Gerät tun.</translation>
    </message>
    <message>
        <source>All MpxORVs, the job master on top. A click on a title sorts, Ctrl+F filters. Below are the comment and the policies of the one that is chosen.</source>
        <translation>Alle MpxORVs, der Auftragsmaster oben. Ein Klick auf einen Titel sortiert, Strg+F filtert. Darunter stehen Kommentar und Rechte des ausgewählten.</translation>
    </message>
    <message>
        <source>The data modules that tell which ground transmitters are on the air. Modules are changed by a right click on them, their inputs by typing below. &quot;What it does&quot; shows which frequencies are blanked now, and who is tuned to one all the same.</source>
        <translation>Die Datenmodule, die sagen, welche Bodensender senden. Module ändert man mit einem Rechtsklick darauf, ihre Eingänge durch Eintippen darunter. &quot;Was geschieht&quot; zeigt, welche Frequenzen gerade ausgeblendet sind, und wer trotzdem auf eine eingestellt ist.</translation>
    </message>
</context>
<context>
    <name>PolicyPanel</name>
    <message>
        <source>May tune a single frequency</source>
        <translation>Darf eine einzelne Frequenz einstellen</translation>
    </message>
    <message>
        <source>May alter frequency ranges</source>
        <translation>Darf Frequenzbereiche ändern</translation>
    </message>
    <message>
        <source>May read a frequency from the master&apos;s ranges</source>
        <translation>Darf eine Frequenz aus den Bereichen des Masters lesen</translation>
    </message>
    <message>
        <source>May be job master</source>
        <translation>Darf Auftragsmaster sein</translation>
    </message>
    <message>
        <source>Follows the master&apos;s job</source>
        <translation>Folgt dem Auftrag des Masters</translation>
    </message>
    <message>
        <source>Sees the RF of the master&apos;s job</source>
        <translation>Sieht die HF des Masterauftrags</translation>
    </message>
    <message>
        <source>May restart the job</source>
        <translation>Darf den Auftrag neu starten</translation>
    </message>
    <message>
        <source>May run built-in tests</source>
        <translation>Darf Selbsttests ausführen</translation>
    </message>
    <message>
        <source>May calibrate</source>
        <translation>Darf kalibrieren</translation>
    </message>
    <message>
        <source>May alter device settings</source>
        <translation>Darf Geräteeinstellungen ändern</translation>
    </message>
    <message>
        <source>%1 is job master%2 and loses that.</source>
        <translation>%1 ist Auftragsmaster%2 und verliert das.</translation>
    </message>
    <message>
        <source>%1 is job master%2 and loses this right: %3.</source>
        <translation>%1 ist Auftragsmaster%2 und verliert dieses Recht: %3.</translation>
    </message>
    <message>
        <source>%1 reads from the range of the job master (%2) and loses its frequency.</source>
        <translation>%1 liest aus dem Bereich des Auftragsmasters (%2) und verliert die Frequenz.</translation>
    </message>
    <message>
        <source>Take a right away</source>
        <translation>Ein Recht entziehen</translation>
    </message>
    <message>
        <source>Take away</source>
        <translation>Entziehen</translation>
    </message>
    <message>
        <source>The server does not allow it.</source>
        <translation>Der Server erlaubt es nicht.</translation>
    </message>
    <message>
        <source>&quot;%1&quot;</source>
        <comment>A policy in a sentence</comment>
        <translation>„%1“</translation>
    </message>
</context>
<context>
    <name>Problem</name>
    <message>
        <source>Connection refused</source>
        <translation>Verbindung abgelehnt</translation>
    </message>
    <message>
        <source>Connection timed out</source>
        <translation>keine Antwort innerhalb der Frist</translation>
    </message>
    <message>
        <source>Connection reset by peer</source>
        <translation>Verbindung von der Gegenstelle abgebrochen</translation>
    </message>
    <message>
        <source>Host not found</source>
        <translation>Rechner nicht gefunden</translation>
    </message>
    <message>
        <source>Host is down</source>
        <translation>Rechner ist nicht erreichbar</translation>
    </message>
    <message>
        <source>No route to host</source>
        <translation>kein Weg zum Rechner</translation>
    </message>
    <message>
        <source>Network is unreachable</source>
        <translation>Netz nicht erreichbar</translation>
    </message>
    <message>
        <source>Network unreachable</source>
        <translation>Netz nicht erreichbar</translation>
    </message>
    <message>
        <source>Network operation timed out</source>
        <translation>keine Antwort des Netzes innerhalb der Frist</translation>
    </message>
    <message>
        <source>Socket operation timed out</source>
        <translation>keine Antwort innerhalb der Frist</translation>
    </message>
    <message>
        <source>The remote host closed the connection</source>
        <translation>der andere Rechner hat die Verbindung geschlossen</translation>
    </message>
    <message>
        <source>Cannot assign requested address</source>
        <translation>diese Adresse kann nicht benutzt werden</translation>
    </message>
    <message>
        <source>Address family not supported by protocol</source>
        <translation>diese Art von Adressen gibt es hier nicht</translation>
    </message>
    <message>
        <source>Broken pipe</source>
        <translation>die Gegenstelle liest nicht mehr</translation>
    </message>
    <message>
        <source>Permission denied</source>
        <translation>keine Berechtigung</translation>
    </message>
    <message>
        <source>Operation not permitted</source>
        <translation>nicht erlaubt</translation>
    </message>
    <message>
        <source>No such file or directory</source>
        <translation>es gibt keine solche Datei und keinen solchen Ordner</translation>
    </message>
    <message>
        <source>No such device or address</source>
        <translation>es gibt kein solches Gerät und keine solche Adresse</translation>
    </message>
    <message>
        <source>Not a directory</source>
        <translation>kein Ordner</translation>
    </message>
    <message>
        <source>Is a directory</source>
        <translation>ist ein Ordner</translation>
    </message>
    <message>
        <source>File exists</source>
        <translation>die Datei gibt es schon</translation>
    </message>
    <message>
        <source>File too large</source>
        <translation>die Datei ist zu groß</translation>
    </message>
    <message>
        <source>File name too long</source>
        <translation>der Dateiname ist zu lang</translation>
    </message>
    <message>
        <source>No space left on device</source>
        <translation>kein Platz mehr auf dem Datenträger</translation>
    </message>
    <message>
        <source>Disk quota exceeded</source>
        <translation>der zugeteilte Platz ist aufgebraucht</translation>
    </message>
    <message>
        <source>Read-only file system</source>
        <translation>der Datenträger kann nur gelesen werden</translation>
    </message>
    <message>
        <source>Input/output error</source>
        <translation>Fehler beim Lesen oder Schreiben</translation>
    </message>
    <message>
        <source>Too many open files</source>
        <translation>zu viele offene Dateien</translation>
    </message>
    <message>
        <source>is not a file</source>
        <translation>ist keine Datei</translation>
    </message>
    <message>
        <source>is larger than %1 bytes</source>
        <translation>ist größer als %1 Bytes</translation>
    </message>
    <message>
        <source>is not UTF-8 text</source>
        <translation>ist kein Text in UTF-8</translation>
    </message>
    <message>
        <source>Unknown error</source>
        <translation>unbekannter Fehler</translation>
    </message>
    <message>
        <source>Unknown error %1</source>
        <translation>unbekannter Fehler %1</translation>
    </message>
    <message>
        <source>disconnected by an operator</source>
        <translation>von einem Bediener getrennt</translation>
    </message>
    <message>
        <source>no answer yet</source>
        <translation>noch keine Antwort</translation>
    </message>
    <message>
        <source>the connection was closed</source>
        <translation>die Verbindung wurde geschlossen</translation>
    </message>
    <message>
        <source>answers again, reconnect it</source>
        <translation>antwortet wieder, bitte neu verbinden</translation>
    </message>
    <message>
        <source>Modbus exception 1: the module does not know this function</source>
        <translation>Modbus-Ausnahme 1: das Modul kennt diese Funktion nicht</translation>
    </message>
    <message>
        <source>Modbus exception 2: the module does not have these inputs</source>
        <translation>Modbus-Ausnahme 2: das Modul hat diese Eingänge nicht</translation>
    </message>
    <message>
        <source>Modbus exception 3: the module does not accept this number of inputs</source>
        <translation>Modbus-Ausnahme 3: das Modul nimmt diese Zahl von Eingängen nicht an</translation>
    </message>
    <message>
        <source>Modbus exception 4: the module has failed</source>
        <translation>Modbus-Ausnahme 4: das Modul ist ausgefallen</translation>
    </message>
    <message>
        <source>Modbus exception 5: the module needs more time</source>
        <translation>Modbus-Ausnahme 5: das Modul braucht mehr Zeit</translation>
    </message>
    <message>
        <source>Modbus exception 6: the module is busy</source>
        <translation>Modbus-Ausnahme 6: das Modul ist beschäftigt</translation>
    </message>
    <message>
        <source>Modbus exception 7: the module cannot do this</source>
        <translation>Modbus-Ausnahme 7: das Modul kann das nicht</translation>
    </message>
    <message>
        <source>Modbus exception 8: the module&apos;s memory is damaged</source>
        <translation>Modbus-Ausnahme 8: der Speicher des Moduls ist beschädigt</translation>
    </message>
    <message>
        <source>Modbus exception 10: the gateway has no way to the module</source>
        <translation>Modbus-Ausnahme 10: das Gateway hat keinen Weg zum Modul</translation>
    </message>
    <message>
        <source>Modbus exception 11: the module behind the gateway does not answer</source>
        <translation>Modbus-Ausnahme 11: das Modul hinter dem Gateway antwortet nicht</translation>
    </message>
    <message>
        <source>The module&apos;s answer does not fit the request</source>
        <translation>die Antwort des Moduls passt nicht zur Frage</translation>
    </message>
    <message>
        <source>The module refuses, for an unknown reason</source>
        <translation>das Modul weigert sich aus unbekanntem Grund</translation>
    </message>
    <message>
        <source>The module sent something that it was not asked for</source>
        <translation>das Modul hat ungefragt etwas gesendet</translation>
    </message>
    <message>
        <source>Another unit than the module answered</source>
        <translation>es hat eine andere Einheit als das Modul geantwortet</translation>
    </message>
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
        <translation>es hat keine IP-Adresse</translation>
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
        <translation>Namen werden nicht aufgelöst: geben Sie die IPv4-Adresse des Moduls an</translation>
    </message>
    <message>
        <source>the peer closed the connection</source>
        <translation>die Gegenstelle hat die Verbindung geschlossen</translation>
    </message>
    <message>
        <source>the peer speaks TLS, this port does not</source>
        <translation>die Gegenstelle spricht TLS, dieser Port nicht</translation>
    </message>
    <message>
        <source>the peer does not speak this protocol: it begins with &apos;%1&apos;</source>
        <translation>die Gegenstelle spricht dieses Protokoll nicht: sie beginnt mit „%1“</translation>
    </message>
    <message>
        <source>no connection within %1 ms</source>
        <translation>keine Verbindung innerhalb von %1 ms</translation>
    </message>
    <message>
        <source>no welcome within %1 ms (does it want TLS?)</source>
        <translation>keine Begrüßung innerhalb von %1 ms (erwartet der Server TLS?)</translation>
    </message>
    <message>
        <source>no welcome within %1 ms</source>
        <translation>keine Begrüßung innerhalb von %1 ms</translation>
    </message>
    <message>
        <source>nothing heard for %1 ms</source>
        <translation>seit %1 ms nichts gehört</translation>
    </message>
    <message>
        <source>nothing acknowledged for %1 s</source>
        <translation>seit %1 s nichts quittiert</translation>
    </message>
    <message>
        <source>no hello in time</source>
        <translation>keine Anmeldung in der gegebenen Zeit</translation>
    </message>
    <message>
        <source>malformed message: %1</source>
        <translation>fehlerhafte Nachricht: %1</translation>
    </message>
    <message>
        <source>the server refuses: %1</source>
        <translation>der Server weigert sich: %1</translation>
    </message>
    <message>
        <source>the server speaks version %1</source>
        <translation>der Server spricht Version %1</translation>
    </message>
    <message>
        <source>this server speaks version %1 of the protocol, not %2</source>
        <translation>dieser Server spricht Version %1 des Protokolls, nicht %2</translation>
    </message>
    <message>
        <source>the server has %1 clients</source>
        <translation>der Server hat %1 Clients</translation>
    </message>
    <message>
        <source>the server listens elsewhere</source>
        <translation>der Server wartet jetzt anderswo</translation>
    </message>
    <message>
        <source>too many connections wait for their hello</source>
        <translation>zu viele Verbindungen warten auf ihre Anmeldung</translation>
    </message>
    <message>
        <source>the client sends but does not read</source>
        <translation>der Client sendet, aber liest nicht</translation>
    </message>
    <message>
        <source>the server&apos;s certificate: %1</source>
        <translation>das Zertifikat des Servers: %1</translation>
    </message>
    <message>
        <source>TLS failed (does the server speak TLS?): %1</source>
        <translation>TLS ist gescheitert (spricht der Server TLS?): %1</translation>
    </message>
    <message>
        <source>TLS is not available: Qt finds no OpenSSL library</source>
        <translation>TLS ist nicht verfügbar: Qt findet keine OpenSSL-Bibliothek</translation>
    </message>
    <message>
        <source>The token is not sent to %1: the connection is not encrypted</source>
        <translation>Das Token wird nicht an %1 gesendet: die Verbindung ist nicht verschlüsselt</translation>
    </message>
    <message>
        <source>cannot read &apos;%1&apos;: %2</source>
        <translation>„%1“ kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>the certificate &apos;%1&apos; expired on %2</source>
        <translation>das Zertifikat „%1“ ist am %2 abgelaufen</translation>
    </message>
    <message>
        <source>the certificate &apos;%1&apos; holds from %2 on only</source>
        <translation>das Zertifikat „%1“ gilt erst ab %2</translation>
    </message>
    <message>
        <source>there is no connection to the server</source>
        <translation>es gibt keine Verbindung zum Server</translation>
    </message>
    <message>
        <source>the server&apos;s content has not arrived yet</source>
        <translation>der Inhalt des Servers ist noch nicht angekommen</translation>
    </message>
    <message>
        <source>the connection was lost before the server answered</source>
        <translation>die Verbindung ging verloren, bevor der Server antwortete</translation>
    </message>
    <message>
        <source>the server does not say why</source>
        <translation>der Server sagt nicht, warum</translation>
    </message>
    <message>
        <source>the content is too large to be sent</source>
        <translation>der Inhalt ist zu groß zum Senden</translation>
    </message>
    <message>
        <source>it is too large to be sent</source>
        <translation>es ist zu groß zum Senden</translation>
    </message>
    <message>
        <source>the item has gone</source>
        <translation>das gibt es nicht mehr</translation>
    </message>
    <message>
        <source>the subscription has ended</source>
        <translation>das wird nicht mehr gezeigt</translation>
    </message>
    <message>
        <source>the selection has no item with this key</source>
        <translation>in der Auswahl gibt es das nicht</translation>
    </message>
    <message>
        <source>a text has at most %1 characters here, this one has %2</source>
        <translation>ein Text hat hier höchstens %1 Zeichen, dieser hat %2</translation>
    </message>
    <message>
        <source>a list has at most %1 numbers, this one has %2</source>
        <translation>eine Liste hat höchstens %1 Zahlen, diese hat %2</translation>
    </message>
    <message>
        <source>the path is too deep, or the name too long</source>
        <translation>der Pfad ist zu tief oder der Name zu lang</translation>
    </message>
    <message>
        <source>a value stands in the way</source>
        <translation>ein Wert steht im Weg</translation>
    </message>
    <message>
        <source>this build knows no NATS</source>
        <translation>dieses Programm kennt kein NATS</translation>
    </message>
    <message>
        <source>NATS refuses: %1</source>
        <translation>NATS lehnt ab: %1</translation>
    </message>
    <message>
        <source>NATS at %1: Timeout</source>
        <translation>NATS unter %1: keine Antwort innerhalb der Frist</translation>
    </message>
    <message>
        <source>NATS at %1: %2</source>
        <translation>NATS unter %1: %2</translation>
    </message>
    <message>
        <source>NATS answers with status %1</source>
        <translation>NATS antwortet mit dem Status %1</translation>
    </message>
    <message>
        <source>the connection to NATS at %1 is lost: %2</source>
        <translation>die Verbindung zu NATS unter %1 ist verloren: %2</translation>
    </message>
    <message>
        <source>the connection to NATS at %1 is lost</source>
        <translation>die Verbindung zu NATS unter %1 ist verloren</translation>
    </message>
    <message>
        <source>nothing heard from NATS at %1 for %2 ms</source>
        <translation>seit %2 ms nichts von NATS unter %1 gehört</translation>
    </message>
    <message>
        <source>this NATS has no JetStream</source>
        <translation>dieses NATS hat kein JetStream</translation>
    </message>
    <message>
        <source>no answer in time</source>
        <translation>keine Antwort innerhalb der Frist</translation>
    </message>
    <message>
        <source>no connection</source>
        <translation>keine Verbindung</translation>
    </message>
    <message>
        <source>nobody there answers</source>
        <translation>dort antwortet niemand</translation>
    </message>
    <message>
        <source>NATS takes a user, a token, a file of credentials or an NKey, not several</source>
        <translation>NATS nimmt einen Benutzer, ein Token, eine Datei mit Ausweisen oder einen NKey, nicht mehrere davon</translation>
    </message>
    <message>
        <source>an NKey and the file with its seed need each other</source>
        <translation>ein NKey und die Datei mit seinem Ursprung brauchen einander</translation>
    </message>
    <message>
        <source>a certificate for NATS and its private key need each other</source>
        <translation>ein Zertifikat für NATS und sein geheimer Schlüssel brauchen einander</translation>
    </message>
    <message>
        <source>the file &apos;%1&apos; cannot be read</source>
        <translation>die Datei &apos;%1&apos; kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>nobody offers the station &apos;%1&apos; at NATS</source>
        <translation>niemand bietet bei NATS die Station &apos;%1&apos; an</translation>
    </message>
    <message>
        <source>it is taken by %1</source>
        <translation>sie ist schon vergeben, an %1</translation>
    </message>
    <message>
        <source>%1 on %2 (process %3, since %4)</source>
        <translation>%1 auf %2 (Prozess %3, seit %4)</translation>
    </message>
    <message>
        <source>the station speaks version %1 of the session over NATS, not %2</source>
        <translation>die Station spricht Fassung %1 der Sitzung über NATS, nicht %2</translation>
    </message>
    <message>
        <source>the station sends what is no key</source>
        <translation>die Station sendet, was kein Schlüssel ist</translation>
    </message>
    <message>
        <source>the server was restarted</source>
        <translation>der Server wurde neu gestartet</translation>
    </message>
    <message>
        <source>the server knows of no such session: it was restarted, or ended it</source>
        <translation>der Server kennt keine solche Sitzung: er wurde neu gestartet, oder hat sie beendet</translation>
    </message>
    <message>
        <source>a message was lost over NATS (number %1 came, %2 was due)</source>
        <translation>eine Nachricht ging über NATS verloren (Nummer %1 kam, %2 war an der Reihe)</translation>
    </message>
    <message>
        <source>a message of %1 bytes, where %2 are allowed</source>
        <translation>eine Nachricht von %1 Bytes, wo %2 erlaubt sind</translation>
    </message>
    <message>
        <source>the peer acknowledges what was not sent over NATS</source>
        <translation>die Gegenstelle bestätigt, was über NATS nicht gesendet wurde</translation>
    </message>
    <message>
        <source>the peer sends more than it may over NATS</source>
        <translation>die Gegenstelle sendet über NATS mehr, als sie darf</translation>
    </message>
    <message>
        <source>the peer has left NATS</source>
        <translation>die Gegenstelle hat NATS verlassen</translation>
    </message>
    <message>
        <source>the peer does not read</source>
        <translation>die Gegenstelle liest nicht</translation>
    </message>
    <message>
        <source>Connection Closed</source>
        <translation>Verbindung geschlossen</translation>
    </message>
    <message>
        <source>Connection Disconnected</source>
        <translation>Verbindung getrennt</translation>
    </message>
    <message>
        <source>No server available for connection</source>
        <translation>kein Server nimmt die Verbindung an</translation>
    </message>
    <message>
        <source>Stale Connection</source>
        <translation>die Gegenstelle schweigt zu lange</translation>
    </message>
    <message>
        <source>Secure Connection Required</source>
        <translation>eine verschlüsselte Verbindung wird verlangt</translation>
    </message>
    <message>
        <source>Secure Connection not available</source>
        <translation>eine verschlüsselte Verbindung gibt es dort nicht</translation>
    </message>
    <message>
        <source>Authorization Violation</source>
        <translation>Benutzer oder Token ist falsch</translation>
    </message>
    <message>
        <source>Authentication Violation</source>
        <translation>Benutzer oder Token ist falsch</translation>
    </message>
    <message>
        <source>User Authentication Expired</source>
        <translation>der Ausweis des Benutzers ist abgelaufen</translation>
    </message>
    <message>
        <source>Not Permitted</source>
        <translation>nicht erlaubt</translation>
    </message>
    <message>
        <source>SSL Error</source>
        <translation>Fehler von TLS</translation>
    </message>
    <message>
        <source>Slow Consumer, messages dropped</source>
        <translation>zu langsam gelesen, Nachrichten wurden verworfen</translation>
    </message>
    <message>
        <source>Slow Consumer</source>
        <translation>zu langsam gelesen</translation>
    </message>
    <message>
        <source>maximum connections exceeded</source>
        <translation>mehr Verbindungen lässt der Server nicht zu</translation>
    </message>
    <message>
        <source>maximum account active connections exceeded</source>
        <translation>mehr Verbindungen lässt das Konto nicht zu</translation>
    </message>
    <message>
        <source>Maximum Payload Exceeded</source>
        <translation>die Nachricht ist größer als erlaubt</translation>
    </message>
    <message>
        <source>Permissions Violation for Publish to &quot;%1&quot;</source>
        <translation>unter &quot;%1&quot; darf nicht gesendet werden</translation>
    </message>
    <message>
        <source>Permissions Violation for Subscription to &quot;%1&quot;</source>
        <translation>auf &quot;%1&quot; darf nicht gehört werden</translation>
    </message>
    <message>
        <source>Out of resources</source>
        <translation>die Mittel des Systems sind erschöpft</translation>
    </message>
    <message>
        <source>Unsupported socket operation</source>
        <translation>dieser Vorgang ist mit der Verbindung nicht möglich</translation>
    </message>
    <message>
        <source>Protocol type not supported</source>
        <translation>diese Art von Protokoll wird nicht unterstützt</translation>
    </message>
    <message>
        <source>Invalid socket descriptor</source>
        <translation>die Verbindung gibt es nicht mehr</translation>
    </message>
    <message>
        <source>Host unreachable</source>
        <translation>Rechner ist nicht erreichbar</translation>
    </message>
    <message>
        <source>The bound address is already in use</source>
        <translation>die Adresse wird schon benutzt</translation>
    </message>
    <message>
        <source>The address is not available</source>
        <translation>die Adresse gibt es hier nicht</translation>
    </message>
    <message>
        <source>The address is protected</source>
        <translation>die Adresse ist geschützt</translation>
    </message>
    <message>
        <source>Unable to send a message</source>
        <translation>eine Nachricht kann nicht gesendet werden</translation>
    </message>
    <message>
        <source>Unable to receive a message</source>
        <translation>eine Nachricht kann nicht empfangen werden</translation>
    </message>
    <message>
        <source>Unable to write</source>
        <translation>Senden ist nicht möglich</translation>
    </message>
    <message>
        <source>Network error</source>
        <translation>Fehler im Netz</translation>
    </message>
    <message>
        <source>Temporary error</source>
        <translation>vorübergehender Fehler</translation>
    </message>
    <message>
        <source>Network dropped connection on reset</source>
        <translation>Verbindung vom Netz abgebrochen</translation>
    </message>
    <message>
        <source>Another socket is already listening on the same port</source>
        <translation>auf diesem Port horcht schon ein anderes Programm</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be written: %2</source>
        <translation>„%1“ kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is in the way</source>
        <translation>„%1“ ist im Weg</translation>
    </message>
    <message>
        <source>&apos;%1&apos; would be larger than %2 bytes</source>
        <translation>„%1“ würde größer als %2 Byte</translation>
    </message>
</context>
<context>
    <name>QtTexts</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>&amp;OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Ja</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;Nein</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>&amp;Öffnen</translation>
    </message>
    <message>
        <source>Show Details...</source>
        <translation>Einzelheiten zeigen...</translation>
    </message>
    <message>
        <source>Hide Details...</source>
        <translation>Einzelheiten verbergen...</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Ausschneiden</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>&amp;Select All</source>
        <translation>Alles au&amp;swählen</translation>
    </message>
    <message>
        <source>&amp;Step up</source>
        <translation>&amp;Mehr</translation>
    </message>
    <message>
        <source>Step &amp;down</source>
        <translation>&amp;Weniger</translation>
    </message>
    <message>
        <source>Copy &amp;Link Location</source>
        <translation>&amp;Adresse kopieren</translation>
    </message>
    <message>
        <source>Look in:</source>
        <translation>Suchen in:</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation>Datei&amp;name:</translation>
    </message>
    <message>
        <source>File name:</source>
        <translation>Dateiname:</translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation>Dateien der Art:</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>Ordner:</translation>
    </message>
    <message>
        <source>&amp;Choose</source>
        <translation>&amp;Wählen</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>&amp;Umbenennen</translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation>&amp;Versteckte Dateien zeigen</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>&amp;Neuer Ordner</translation>
    </message>
    <message>
        <source>New Folder</source>
        <translation>Neuer Ordner</translation>
    </message>
    <message>
        <source>Create New Folder</source>
        <translation>Neuen Ordner anlegen</translation>
    </message>
    <message>
        <source>Create a New Folder</source>
        <translation>Einen neuen Ordner anlegen</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Go back</source>
        <translation>Zurückgehen</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Vor</translation>
    </message>
    <message>
        <source>Go forward</source>
        <translation>Vorgehen</translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation>Übergeordneter Ordner</translation>
    </message>
    <message>
        <source>Go to the parent directory</source>
        <translation>Zum übergeordneten Ordner gehen</translation>
    </message>
    <message>
        <source>List View</source>
        <translation>Liste</translation>
    </message>
    <message>
        <source>Change to list view mode</source>
        <translation>Als Liste zeigen</translation>
    </message>
    <message>
        <source>Detail View</source>
        <translation>Einzelheiten</translation>
    </message>
    <message>
        <source>Change to detail view mode</source>
        <translation>Mit Einzelheiten zeigen</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Date Modified</source>
        <translation>Geändert am</translation>
    </message>
    <message>
        <source>All Files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>Computer</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 gibt es schon.
Soll die Datei ersetzt werden?</translation>
    </message>
    <message>
        <source>%1
File not found.
Please verify the correct file name was given.</source>
        <translation>%1
Die Datei ist nicht zu finden.
Bitte prüfen Sie den Namen.</translation>
    </message>
    <message>
        <source>Ctrl</source>
        <translation>Strg</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Umschalt</translation>
    </message>
    <message>
        <source>Esc</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Enter</translation>
    </message>
    <message>
        <source>Return</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Leertaste</translation>
    </message>
    <message>
        <source>Backspace</source>
        <translation>Rückschritt</translation>
    </message>
    <message>
        <source>Ins</source>
        <translation>Einfg</translation>
    </message>
    <message>
        <source>Del</source>
        <translation>Entf</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Pos1</translation>
    </message>
    <message>
        <source>End</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>PgUp</source>
        <translation>Bild auf</translation>
    </message>
    <message>
        <source>PgDown</source>
        <translation>Bild ab</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Auf</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Ab</translation>
    </message>
    <message>
        <source>Scroll Left</source>
        <translation>Nach links</translation>
    </message>
    <message>
        <source>Scroll Right</source>
        <translation>Nach rechts</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>%1 File</source>
        <translation>%1-Datei</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>File Folder</source>
        <translation>Dateiordner</translation>
    </message>
    <message>
        <source>Drive</source>
        <translation>Laufwerk</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Verknüpfung</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>Directories</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Sidebar</source>
        <translation>Seitenleiste</translation>
    </message>
    <message>
        <source>List of places and bookmarks</source>
        <translation>Liste von Orten und Lesezeichen</translation>
    </message>
    <message>
        <source>Find Directory</source>
        <translation>Ordner suchen</translation>
    </message>
    <message>
        <source>Recent Places</source>
        <translation>Zuletzt besucht</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>My Computer</source>
        <translation>Mein Computer</translation>
    </message>
    <message>
        <source>Invalid filename</source>
        <translation>Ungültiger Dateiname</translation>
    </message>
    <message>
        <source>%1
Directory not found.
Please verify the correct directory name was given.</source>
        <translation>%1
Der Ordner wurde nicht gefunden.
Bitte den Namen des Ordners prüfen.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is write protected.
Do you want to delete it anyway?</source>
        <translation>„%1“ ist schreibgeschützt.
Trotzdem löschen?</translation>
    </message>
    <message>
        <source>Are you sure you want to delete &apos;%1&apos;?</source>
        <translation>„%1“ wirklich löschen?</translation>
    </message>
    <message>
        <source>Could not delete directory.</source>
        <translation>Der Ordner konnte nicht gelöscht werden.</translation>
    </message>
    <message>
        <source>Scroll here</source>
        <translation>Hierher blättern</translation>
    </message>
    <message>
        <source>Left edge</source>
        <translation>Linker Rand</translation>
    </message>
    <message>
        <source>Right edge</source>
        <translation>Rechter Rand</translation>
    </message>
    <message>
        <source>Page left</source>
        <translation>Eine Seite nach links</translation>
    </message>
    <message>
        <source>Page right</source>
        <translation>Eine Seite nach rechts</translation>
    </message>
    <message>
        <source>Scroll left</source>
        <translation>Nach links blättern</translation>
    </message>
    <message>
        <source>Scroll right</source>
        <translation>Nach rechts blättern</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Anfang</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>Page up</source>
        <translation>Eine Seite nach oben</translation>
    </message>
    <message>
        <source>Page down</source>
        <translation>Eine Seite nach unten</translation>
    </message>
    <message>
        <source>Scroll up</source>
        <translation>Nach oben blättern</translation>
    </message>
    <message>
        <source>Scroll down</source>
        <translation>Nach unten blättern</translation>
    </message>
</context>
<context>
    <name>Question</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>At %1:</source>
        <translation>Bei %1:</translation>
    </message>
    <message>
        <source>Nobody loses anything by it any more.</source>
        <translation>Niemand verliert dadurch noch etwas.</translation>
    </message>
</context>
<context>
    <name>ReceiverModel</name>
    <message>
        <source>Connected</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>Disconnected</source>
        <translation>Getrennt</translation>
    </message>
    <message>
        <source>Lost</source>
        <translation>Verloren</translation>
    </message>
    <message>
        <source>%1 when last heard of</source>
        <translation>%1, als zuletzt davon gehört wurde</translation>
    </message>
    <message>
        <source>Receiver</source>
        <translation>Empfänger</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Since</source>
        <translation>Seit</translation>
    </message>
    <message>
        <source>Frequency (MHz)</source>
        <translation>Frequenz (MHz)</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>Betriebsart</translation>
    </message>
    <message>
        <source>Signal (dB/S9)</source>
        <translation>Signal (dB/S9)</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>Grund</translation>
    </message>
</context>
<context>
    <name>RecoveryNotices</name>
    <message>
        <source>The server did not end in an orderly way. What was entered for the ground transmitters until %1 is in use again (data modules: %2). Please check it.</source>
        <translation>Der Server wurde nicht ordentlich beendet. Was für die Bodensender bis %1 eingegeben wurde, gilt wieder (Datenmodule: %2). Bitte prüfen.</translation>
    </message>
    <message>
        <source>The server did not end in an orderly way. What was entered for the ground transmitters then is not in use:</source>
        <translation>Der Server wurde nicht ordentlich beendet. Was zuvor für die Bodensender eingegeben wurde, gilt nicht:</translation>
    </message>
    <message>
        <source>the file with it is damaged.</source>
        <translation>Die Datei damit ist beschädigt.</translation>
    </message>
    <message>
        <source>the file with it is of another configuration.</source>
        <translation>Die Datei damit gehört zu einer anderen Konfiguration.</translation>
    </message>
    <message>
        <source>the configuration was changed since, and holds.</source>
        <translation>Die Konfiguration wurde seitdem geändert und hat Vorrang.</translation>
    </message>
    <message>
        <source>the file with it cannot be read.</source>
        <translation>Die Datei damit kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>It is kept as %1.</source>
        <translation>Sie liegt nun als %1 vor.</translation>
    </message>
    <message>
        <source>%1 cannot be put aside. Until it is, what you enter now would be lost with a killed server.</source>
        <translation>%1 kann nicht beiseitegelegt werden. Bis dahin ginge verloren, was Sie jetzt eingeben, wenn der Server abgebrochen wird.</translation>
    </message>
    <message>
        <source>What is entered for the ground transmitters would be lost with a killed server, until the server ends in an orderly way: %1</source>
        <translation>Was für die Bodensender eingegeben wird, ginge verloren, wenn der Server abgebrochen wird, bevor er ordentlich endet: %1</translation>
    </message>
</context>
<context>
    <name>RestoreOffer</name>
    <message>
        <source>%1; refused: %2</source>
        <translation>%1; abgelehnt: %2</translation>
    </message>
    <message>
        <source>Rest&amp;ore</source>
        <translation>Wie&amp;derherstellen</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Was job master until %1</source>
        <translation>War bis %1 Auftragsmaster</translation>
    </message>
    <message>
        <source>Was job master and at %1 until %2</source>
        <translation>War bis %2 Auftragsmaster und auf %1</translation>
    </message>
    <message>
        <source>Was at %1 until %2</source>
        <translation>War bis %2 auf %1</translation>
    </message>
    <message>
        <source>%1 is job master now</source>
        <translation>Auftragsmaster ist jetzt %1</translation>
    </message>
</context>
<context>
    <name>ServerWindow</name>
    <message>
        <source>Multi-channel server: %1</source>
        <translation>Mehrkanal-Server: %1</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>Konfiguration</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>MpxORVs</source>
        <translation>MpxORVs</translation>
    </message>
    <message>
        <source>Listening on %1</source>
        <translation>Erreichbar unter %1</translation>
    </message>
    <message>
        <source>End the server</source>
        <translation>Server beenden</translation>
    </message>
    <message>
        <source>1 client</source>
        <translation>1 Client</translation>
    </message>
    <message>
        <source>%1 clients</source>
        <translation>%1 Clients</translation>
    </message>
    <message>
        <source>A client will lose the server. End it all the same?</source>
        <translation>Ein Client verliert den Server. Trotzdem beenden?</translation>
    </message>
    <message>
        <source>%1 clients will lose the server. End it all the same?</source>
        <translation>%1 Clients verlieren den Server. Trotzdem beenden?</translation>
    </message>
    <message>
        <source>Ground transmitters</source>
        <translation>Bodensender</translation>
    </message>
    <message>
        <source>These lose what they have: %1.</source>
        <translation>Es verlieren, was sie haben: %1.</translation>
    </message>
    <message>
        <source>&amp;Server</source>
        <translation>&amp;Server</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Go</source>
        <translation>&amp;Gehe zu</translation>
    </message>
    <message>
        <source>Multi-channel server %1</source>
        <translation>Mehrkanal-Server %1</translation>
    </message>
    <message>
        <source>End</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>What was entered for the ground transmitters cannot be saved and will be lost: %1</source>
        <translation>Was für die Bodensender eingegeben wurde, kann nicht gespeichert werden und geht verloren: %1</translation>
    </message>
    <message>
        <source>End the server all the same?</source>
        <translation>Den Server trotzdem beenden?</translation>
    </message>
</context>
<context>
    <name>SeverityLook</name>
    <message>
        <source>in order</source>
        <translation>in Ordnung</translation>
    </message>
    <message>
        <source>worth a look</source>
        <translation>beachten</translation>
    </message>
    <message>
        <source>needs action</source>
        <translation>eingreifen</translation>
    </message>
    <message>
        <source>out of date</source>
        <translation>veraltet</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
</context>
<context>
    <name>Situation</name>
    <message>
        <source>Server</source>
        <translation>Server</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Master</source>
        <translation>Master</translation>
    </message>
    <message>
        <source>Suppression</source>
        <translation>Unterdrückung</translation>
    </message>
    <message>
        <source>My MpxORV</source>
        <translation>Mein MpxORV</translation>
    </message>
    <message>
        <source>connecting to %1</source>
        <translation>verbindet mit %1</translation>
    </message>
    <message>
        <source>%1 is lost</source>
        <translation>%1 ist verloren</translation>
    </message>
</context>
<context>
    <name>StationModel</name>
    <message>
        <source>silent for %1</source>
        <translation>stumm seit %1</translation>
    </message>
    <message>
        <source>%1 at %2: %3</source>
        <translation>%1 auf %2: %3</translation>
    </message>
    <message>
        <source>Running since %1</source>
        <translation>Läuft seit %1</translation>
    </message>
    <message>
        <source>Heard %1 ago</source>
        <translation>Gehört vor %1</translation>
    </message>
    <message>
        <source>Station</source>
        <translation>Station</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>Server</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Machine</source>
        <translation>Rechner</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Running for</source>
        <translation>Läuft seit</translation>
    </message>
</context>
<context>
    <name>StationTabs</name>
    <message>
        <source>Stations</source>
        <translation>Stationen</translation>
    </message>
    <message>
        <source>Close this station</source>
        <translation>Diese Station schließen</translation>
    </message>
</context>
<context>
    <name>StationView</name>
    <message>
        <source>Overview</source>
        <translation>Übersicht</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>Konfiguration</translation>
    </message>
    <message>
        <source>Configuration</source>
        <comment>short, for a tab</comment>
        <translation>Konfig.</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>Ground transmitters</source>
        <translation>Bodensender</translation>
    </message>
    <message>
        <source>Transmitters</source>
        <comment>short, for a tab</comment>
        <translation>Bodensender</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>MpxORVs</source>
        <translation>MpxORVs</translation>
    </message>
    <message>
        <source>MpxORV status</source>
        <translation>MpxORV-Status</translation>
    </message>
    <message>
        <source>My MpxORV</source>
        <translation>Mein MpxORV</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
    <message>
        <source>This console is job master%1 and gives that up.</source>
        <translation>Diese Konsole ist Auftragsmaster%1 und gibt das auf.</translation>
    </message>
    <message>
        <source>Give the MpxORV back</source>
        <translation>Den MpxORV zurückgeben</translation>
    </message>
    <message>
        <source>Give back</source>
        <translation>Zurückgeben</translation>
    </message>
    <message>
        <source>This console is tuned to %1 and gives that up.</source>
        <translation>Diese Konsole ist auf %1 eingestellt und gibt das auf.</translation>
    </message>
    <message>
        <source>%1 is entered and not sent.</source>
        <translation>%1 ist eingegeben und nicht gesendet.</translation>
    </message>
    <message>
        <source>The connection was lost while this was being entered, which is not sent: &quot;%1&quot;</source>
        <translation>Die Verbindung ging verloren, während dies eingegeben wurde; es ist nicht gesendet: „%1“</translation>
    </message>
</context>
<context>
    <name>StationWord</name>
    <message>
        <source>not connected</source>
        <translation>nicht verbunden</translation>
    </message>
    <message>
        <source>connecting</source>
        <translation>verbindet</translation>
    </message>
    <message>
        <source>LOST</source>
        <translation>VERLOREN</translation>
    </message>
    <message>
        <source>answers slowly</source>
        <translation>antwortet langsam</translation>
    </message>
    <message>
        <source>New station</source>
        <translation>Neue Station</translation>
    </message>
</context>
<context>
    <name>StationsPanel</name>
    <message>
        <source>Stations at &amp;NATS</source>
        <translation>Stationen bei &amp;NATS</translation>
    </message>
    <message>
        <source>Where NATS is</source>
        <translation>Wo NATS ist</translation>
    </message>
    <message>
        <source>HOST or HOST:PORT, several with commas between; natss:// in front means TLS.</source>
        <translation>HOST oder HOST:PORT, mehrere mit Kommas dazwischen; natss:// davor bedeutet TLS.</translation>
    </message>
    <message>
        <source>host of NATS</source>
        <translation>Rechner von NATS</translation>
    </message>
    <message>
        <source>&amp;List</source>
        <translation>Auf&amp;listen</translation>
    </message>
    <message>
        <source>List the stations</source>
        <translation>Die Stationen auflisten</translation>
    </message>
    <message>
        <source>Filter of the list of stations</source>
        <translation>Filter der Liste der Stationen</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Stations at NATS</source>
        <translation>Stationen bei NATS</translation>
    </message>
    <message>
        <source>Say where NATS is, and who is there is listed.</source>
        <translation>Geben Sie an, wo NATS ist; wer dort ist, wird aufgelistet.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be where NATS is: write HOST or HOST:PORT.</source>
        <translation>&quot;%1&quot; kann nicht der Ort von NATS sein: schreiben Sie HOST oder HOST:PORT.</translation>
    </message>
    <message>
        <source>Connecting to NATS at %1</source>
        <translation>Verbinde mit NATS bei %1</translation>
    </message>
    <message>
        <source>NATS is not reached, trying again: %1</source>
        <translation>NATS ist nicht erreichbar, neuer Versuch folgt: %1</translation>
    </message>
    <message>
        <source>Nobody offers a station at %1 yet.</source>
        <translation>Noch bietet niemand eine Station bei %1 an.</translation>
    </message>
    <message>
        <source>One station</source>
        <translation>Eine Station</translation>
    </message>
    <message numerus="yes">
        <source>%n stations</source>
        <translation>
            <numerusform>%n Station</numerusform>
            <numerusform>%n Stationen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %n stations</source>
        <translation>
            <numerusform>%1 von %n Station</numerusform>
            <numerusform>%1 von %n Stationen</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>StatusPage</name>
    <message>
        <source>Receivers</source>
        <translation>Empfänger</translation>
    </message>
</context>
<context>
    <name>StatusStrip</name>
    <message>
        <source>Situation</source>
        <translation>Lage</translation>
    </message>
</context>
<context>
    <name>SuppressionAlarm</name>
    <message>
        <source>%1 NOT SUPERVISED</source>
        <translation>%1 UNÜBERWACHT</translation>
    </message>
</context>
<context>
    <name>SuppressionPage</name>
    <message>
        <source>Set up</source>
        <translation>Einrichten</translation>
    </message>
    <message>
        <source>What it does</source>
        <translation>Was geschieht</translation>
    </message>
</context>
<context>
    <name>SuppressionUndo</name>
    <message>
        <source>%1 at %2</source>
        <comment>A data module</comment>
        <translation>%1 bei %2</translation>
    </message>
    <message>
        <source>%1 more</source>
        <translation>%1 weitere</translation>
    </message>
    <message>
        <source>Not supervised any more (MHz): %1.</source>
        <translation>Nicht mehr überwacht (MHz): %1.</translation>
    </message>
    <message>
        <source>The data module %1 is deleted.</source>
        <translation>Das Datenmodul %1 ist gelöscht.</translation>
    </message>
    <message>
        <source>The data module %1 is disconnected.</source>
        <translation>Das Datenmodul %1 ist getrennt.</translation>
    </message>
    <message>
        <source>The data module %1 is changed.</source>
        <translation>Das Datenmodul %1 ist geändert.</translation>
    </message>
</context>
<context>
    <name>SuppressionView</name>
    <message>
        <source>Modules</source>
        <translation>Module</translation>
    </message>
    <message>
        <source>Who ignores the suppression</source>
        <translation>Wer die Unterdrückung missachtet</translation>
    </message>
    <message>
        <source>Inputs</source>
        <translation>Eingänge</translation>
    </message>
    <message>
        <source>Timeline</source>
        <translation>Zeitverlauf</translation>
    </message>
    <message>
        <source>Reconnect</source>
        <translation>Neu verbinden</translation>
    </message>
    <message>
        <source>Connects the modules in error anew</source>
        <translation>Verbindet die Module im Fehlerzustand neu</translation>
    </message>
    <message>
        <source>Show inputs without a frequency too</source>
        <translation>Auch Eingänge ohne Frequenz zeigen</translation>
    </message>
    <message>
        <source>Nobody ignores it</source>
        <translation>Niemand missachtet sie</translation>
    </message>
    <message>
        <source>Ignored by %1</source>
        <translation>Von %1 missachtet</translation>
    </message>
    <message>
        <source>The server tells nothing of its suppression.</source>
        <translation>Der Server sagt nichts über seine Unterdrückung.</translation>
    </message>
    <message>
        <source>There are no input modules.</source>
        <translation>Es gibt keine Eingangsmodule.</translation>
    </message>
    <message>
        <source>%1 of %2 modules are in use.</source>
        <translation>%1 von %2 Modulen in Betrieb.</translation>
    </message>
    <message>
        <source>The input module is in use.</source>
        <translation>Das Eingangsmodul ist in Betrieb.</translation>
    </message>
    <message>
        <source>The input module is not in use.</source>
        <translation>Das Eingangsmodul ist nicht in Betrieb.</translation>
    </message>
    <message>
        <source>Not supervised: %1.</source>
        <translation>Nicht überwacht: %1.</translation>
    </message>
    <message>
        <source>Nothing is blanked now.</source>
        <translation>Zurzeit ist nichts ausgetastet.</translation>
    </message>
    <message>
        <source>Blanked now: %1.</source>
        <translation>Zurzeit ausgetastet: %1.</translation>
    </message>
    <message>
        <source>What was known last:</source>
        <translation>Zuletzt bekannt:</translation>
    </message>
    <message>
        <source>Who ignores it is not known</source>
        <translation>Wer sie missachtet, ist nicht bekannt</translation>
    </message>
    <message>
        <source>Ignored by %1 or more</source>
        <translation>Missachtet von %1 oder mehr</translation>
    </message>
</context>
<context>
    <name>TrendPlot</name>
    <message>
        <source>Sweep time and round trip over the last ten minutes</source>
        <translation>Durchlaufzeit und Umlauf der letzten zehn Minuten</translation>
    </message>
</context>
<context>
    <name>TuneBar</name>
    <message>
        <source>&amp;Tune</source>
        <translation>&amp;Einstellen</translation>
    </message>
    <message>
        <source>&amp;Frequency:</source>
        <translation>&amp;Frequenz:</translation>
    </message>
    <message>
        <source>Tuned to:</source>
        <translation>Eingestellt auf:</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>A frequency, with or without a unit: Hz, k, kHz, M, MHz, G or GHz; with a comma or a point. A plain number up to 30,000 counts MHz, above that hertz. Enter or &quot;Tune&quot; asks for it, Escape takes it back. The arrow keys and the wheel step, which asks for it once they rest.</source>
        <translation>Eine Frequenz, mit oder ohne Einheit: Hz, k, kHz, M, MHz, G oder GHz; mit Komma oder Punkt. Eine bloße Zahl bis 30000 zählt MHz, darüber Hertz. Die Eingabetaste oder „Einstellen“ fordert sie an, Escape nimmt sie zurück. Pfeiltasten und Mausrad gehen Schritte; ruhen sie, wird die Frequenz angefordert.</translation>
    </message>
    <message>
        <source>What the entry is understood as</source>
        <translation>So wird die Eingabe verstanden</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>St&amp;ep:</source>
        <translation>Sch&amp;ritt:</translation>
    </message>
    <message>
        <source>One step down</source>
        <translation>Ein Schritt abwärts</translation>
    </message>
    <message>
        <source>One step up</source>
        <translation>Ein Schritt aufwärts</translation>
    </message>
    <message>
        <source>NOT TUNED</source>
        <translation>NICHT EINGESTELLT</translation>
    </message>
    <message>
        <source>%1 to %2 MHz</source>
        <translation>%1 bis %2 MHz</translation>
    </message>
    <message>
        <source>This user may not tune here.</source>
        <translation>Dieser Benutzer darf hier nichts einstellen.</translation>
    </message>
    <message>
        <source>Enter a frequency, such as 121.5, 118400 kHz or 121500000.</source>
        <translation>Bitte eine Frequenz eingeben, etwa 121,5 oder 118400 kHz oder 121500000.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no frequency. Enter one such as 121.5, 118400 kHz or 121500000.</source>
        <translation>„%1“ ist keine Frequenz. Möglich ist etwa 121,5 oder 118400 kHz oder 121500000.</translation>
    </message>
    <message>
        <source>%1 lies outside the range of the device, %2: nothing is asked for.</source>
        <translation>%1 liegt außerhalb des Bereichs des Geräts, %2: Es wird nichts angefordert.</translation>
    </message>
    <message>
        <source>Enter or &quot;Tune&quot; asks for it, Escape takes it back.</source>
        <translation>Die Eingabetaste oder „Einstellen“ fordert sie an, Escape nimmt sie zurück.</translation>
    </message>
    <message>
        <source>It is asked for once the steps rest.</source>
        <translation>Sie wird angefordert, sobald die Schritte ruhen.</translation>
    </message>
    <message>
        <source>The server has not answered yet.</source>
        <translation>Der Server hat noch nicht geantwortet.</translation>
    </message>
    <message>
        <source>%1. &quot;Tune&quot; asks once more.</source>
        <translation>%1. „Einstellen“ fordert sie noch einmal an.</translation>
    </message>
    <message>
        <source>&amp;Frequency at %1:</source>
        <translation>&amp;Frequenz bei %1:</translation>
    </message>
    <message>
        <source>Frequency at %1</source>
        <translation>Frequenz bei %1</translation>
    </message>
    <message>
        <source>%1 is asked for and not answered yet.</source>
        <translation>%1 ist angefordert und noch nicht beantwortet.</translation>
    </message>
</context>
<context>
    <name>TuneMark</name>
    <message>
        <source>Locked</source>
        <translation>Gesperrt</translation>
    </message>
    <message>
        <source>No frequency</source>
        <translation>Keine Frequenz</translation>
    </message>
    <message>
        <source>Out of range</source>
        <translation>Außerhalb des Bereichs</translation>
    </message>
    <message>
        <source>Not sent</source>
        <translation>Nicht gesendet</translation>
    </message>
    <message>
        <source>Not sent yet</source>
        <translation>Noch nicht gesendet</translation>
    </message>
    <message>
        <source>Asked for</source>
        <translation>Angefordert</translation>
    </message>
    <message>
        <source>Refused</source>
        <translation>Abgelehnt</translation>
    </message>
    <message>
        <source>Taken away</source>
        <translation>Entzogen</translation>
    </message>
    <message>
        <source>Tuned</source>
        <translation>Eingestellt</translation>
    </message>
</context>
<context>
    <name>UndoBar</name>
    <message>
        <source>&amp;Undo</source>
        <translation>Rü&amp;ckgängig</translation>
    </message>
</context>
<context>
    <name>UnseenLoss</name>
    <message>
        <source>LOST mastership, %1</source>
        <translation>Masterschaft VERLOREN, %1</translation>
    </message>
    <message>
        <source>LOST mastership</source>
        <translation>Masterschaft VERLOREN</translation>
    </message>
    <message>
        <source>LOST %1</source>
        <translation>%1 VERLOREN</translation>
    </message>
</context>
<context>
    <name>UnsupervisedBar</name>
    <message>
        <source>Ac&amp;knowledge</source>
        <translation>&amp;Quittieren</translation>
    </message>
    <message>
        <source>Reco&amp;nnect</source>
        <translation>Neu &amp;verbinden</translation>
    </message>
    <message>
        <source>Reconnect the input modules</source>
        <translation>Die Eingangsmodule neu verbinden</translation>
    </message>
    <message>
        <source>Takes this bar away in this window until another frequency is lost.</source>
        <translation>Nimmt diese Zeile in diesem Fenster weg, bis eine weitere Frequenz verloren geht.</translation>
    </message>
    <message>
        <source>NOT SUPERVISED: %1. A keyed transmitter is not seen there.</source>
        <translation>NICHT ÜBERWACHT: %1. Ein getasteter Sender wird dort nicht gesehen.</translation>
    </message>
</context>
</TS>
