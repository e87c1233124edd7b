<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>AddressForm</name>
    <message>
        <source>none found; another can be typed</source>
        <translation>keine gefunden; andere können eingegeben werden</translation>
    </message>
    <message>
        <source>Kind of source</source>
        <translation>Art der Quelle</translation>
    </message>
    <message>
        <source>Where the messages come from</source>
        <translation>Woher die Nachrichten kommen</translation>
    </message>
    <message>
        <source>&amp;Kind:</source>
        <translation>&amp;Art:</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>&amp;Durchsuchen ...</translation>
    </message>
    <message>
        <source>Choose a file</source>
        <translation>Datei wählen</translation>
    </message>
    <message>
        <source>Open Recording</source>
        <translation>Aufzeichnung öffnen</translation>
    </message>
    <message>
        <source>R&amp;efresh</source>
        <translation>Neu &amp;suchen</translation>
    </message>
    <message>
        <source>Look again what is there to choose from</source>
        <translation>Noch einmal suchen, was zur Wahl steht</translation>
    </message>
</context>
<context>
    <name>BitsStrip</name>
    <message>
        <source>Bits</source>
        <translation>Bits</translation>
    </message>
    <message>
        <source>Bit %1</source>
        <translation>Bit %1</translation>
    </message>
</context>
<context>
    <name>BytesPanel</name>
    <message>
        <source>Bytes</source>
        <translation>Bytes</translation>
    </message>
    <message>
        <source>Show &amp;Bytes</source>
        <translation>&amp;Bytes zeigen</translation>
    </message>
    <message>
        <source>Ctrl+B</source>
        <translation>Ctrl+B</translation>
    </message>
    <message>
        <source>Hidden data: messages of this type have confidential fields.</source>
        <translation>Verborgene Daten: Nachrichten dieses Typs haben vertrauliche Felder.</translation>
    </message>
    <message>
        <source>Choose a row in the tree, or a message under Messages, to see its bytes.</source>
        <translation>Wählen Sie eine Zeile im Baum oder eine Nachricht unter Nachrichten, um ihre Bytes zu sehen.</translation>
    </message>
    <message>
        <source>The message has no bytes.</source>
        <translation>Die Nachricht hat keine Bytes.</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Bytes</translation>
    </message>
    <message>
        <source>chosen under Messages</source>
        <translation>unter Nachrichten gewählt</translation>
    </message>
    <message>
        <source>the newest</source>
        <translation>die neueste</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>bit %1 of byte %2</source>
        <translation>Bit %1 von Byte %2</translation>
    </message>
    <message>
        <source>bits %1 of byte %2</source>
        <translation>Bits %1 von Byte %2</translation>
    </message>
    <message>
        <source>byte %1</source>
        <translation>Byte %1</translation>
    </message>
    <message>
        <source>bytes %1</source>
        <translation>Bytes %1</translation>
    </message>
    <message>
        <source>Choose a field in the tree, or a byte.</source>
        <translation>Wählen Sie ein Feld im Baum oder ein Byte.</translation>
    </message>
    <message>
        <source>not in this message</source>
        <translation>nicht in dieser Nachricht</translation>
    </message>
    <message>
        <source>needs no bytes in this message: it has its usual value</source>
        <translation>braucht in dieser Nachricht keine Bytes: Es hat seinen üblichen Wert</translation>
    </message>
    <message>
        <source>computed, and in no bytes of its own</source>
        <translation>berechnet und in keinen eigenen Bytes</translation>
    </message>
    <message>
        <source>nobody can tell where it stands in these bytes</source>
        <translation>niemand kann sagen, wo es in diesen Bytes steht</translation>
    </message>
    <message>
        <source>none of a field</source>
        <translation>gehört zu keinem Feld</translation>
    </message>
</context>
<context>
    <name>ComparePanel</name>
    <message>
        <source>Only what differs</source>
        <translation>Nur was sich unterscheidet</translation>
    </message>
    <message>
        <source>Compared values</source>
        <translation>Verglichene Werte</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>C&amp;ompare</source>
        <translation>Ver&amp;gleichen</translation>
    </message>
    <message>
        <source>Ctrl+Shift+D</source>
        <translation>Ctrl+Shift+D</translation>
    </message>
    <message>
        <source>Shows the rows that are chosen beside one another, two or more</source>
        <translation>Zeigt die gewählten Zeilen nebeneinander, zwei oder mehr</translation>
    </message>
    <message>
        <source>The first %1 rows are compared.</source>
        <translation>Die ersten %1 Zeilen werden verglichen.</translation>
    </message>
    <message>
        <source>Field</source>
        <translation>Feld</translation>
    </message>
    <message>
        <source>Marked where the values differ</source>
        <translation>Angekreuzt, wo sich die Werte unterscheiden</translation>
    </message>
    <message>
        <source>Differs</source>
        <translation>Unterscheidet sich</translation>
    </message>
    <message>
        <source>[time]</source>
        <translation>[Zeit]</translation>
    </message>
    <message>
        <source>Nothing came of these yet.</source>
        <translation>Davon ist noch nichts gekommen.</translation>
    </message>
    <message>
        <source>%1 of %2 differ</source>
        <translation>%1 von %2 unterscheiden sich</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>differs</source>
        <translation>unterscheidet sich</translation>
    </message>
    <message>
        <source>Choose two or more rows of the message tree, and Compare in their context menu.</source>
        <translation>Zwei oder mehr Zeilen des Nachrichtenbaums wählen und in ihrem Kontextmenü „Vergleichen“.</translation>
    </message>
</context>
<context>
    <name>ComparedRow</name>
    <message>
        <source>%1 in all</source>
        <translation>insgesamt %1</translation>
    </message>
    <message>
        <source>Hidden data</source>
        <translation>Verborgene Daten</translation>
    </message>
</context>
<context>
    <name>ConfidentialAction</name>
    <message>
        <source>Con&amp;fidential Data</source>
        <translation>Vertraulic&amp;he Daten</translation>
    </message>
    <message>
        <source>Show fields that are marked as confidential</source>
        <translation>Felder zeigen, die als vertraulich gekennzeichnet sind</translation>
    </message>
</context>
<context>
    <name>ConnectDialog</name>
    <message>
        <source>Connect</source>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Bro&amp;wse...</source>
        <translation>Durch&amp;suchen ...</translation>
    </message>
    <message>
        <source>File of definitions</source>
        <translation>Definitionsdatei</translation>
    </message>
    <message>
        <source>folders of imported files, divided by &quot;%1&quot;</source>
        <translation>Ordner importierter Dateien, getrennt durch „%1“</translation>
    </message>
    <message>
        <source>Folders of imports</source>
        <translation>Import-Ordner</translation>
    </message>
    <message>
        <source>Message type</source>
        <translation>Nachrichtentyp</translation>
    </message>
    <message>
        <source>The one type of all messages, for sources that do not say what they send</source>
        <translation>Der eine Typ aller Nachrichten, für Quellen, die nicht angeben, was sie senden</translation>
    </message>
    <message>
        <source>told by the source</source>
        <translation>von der Quelle angegeben</translation>
    </message>
    <message>
        <source>variable length (varint) before each message</source>
        <translation>variable Länge (Varint) vor jeder Nachricht</translation>
    </message>
    <message>
        <source>32-bit length before each message</source>
        <translation>32-Bit-Länge vor jeder Nachricht</translation>
    </message>
    <message>
        <source>one message a datagram</source>
        <translation>eine Nachricht je Datagramm</translation>
    </message>
    <message>
        <source>Framing</source>
        <translation>Trennung der Nachrichten</translation>
    </message>
    <message>
        <source>How messages lie in the stream</source>
        <translation>Wie die Nachrichten im Datenstrom liegen</translation>
    </message>
    <message>
        <source>Load Definitions</source>
        <translation>Definitionen laden</translation>
    </message>
    <message>
        <source>Definitions</source>
        <translation>Definitionen</translation>
    </message>
    <message>
        <source>&amp;File:</source>
        <translation>Da&amp;tei:</translation>
    </message>
    <message>
        <source>&amp;Imports:</source>
        <translation>&amp;Importe:</translation>
    </message>
    <message>
        <source>Messa&amp;ge type:</source>
        <translation>&amp;Nachrichtentyp:</translation>
    </message>
    <message>
        <source>F&amp;raming:</source>
        <translation>T&amp;rennung:</translation>
    </message>
    <message>
        <source>What is wrong</source>
        <translation>Was nicht stimmt</translation>
    </message>
    <message>
        <source>C&amp;onnect</source>
        <translation>&amp;Verbinden</translation>
    </message>
    <message>
        <source>Choose a file.</source>
        <translation>Eine Datei wählen.</translation>
    </message>
    <message>
        <source>those in use, or the source&apos;s own</source>
        <translation>die geladenen oder die der Quelle</translation>
    </message>
    <message>
        <source>A MAVLink dialect (.xml), a Protocol Buffers schema (.proto or a descriptor set), a definition of ROS 2 or DDS (.msg, .idl), or a JSON schema (.schema.json)</source>
        <translation>Ein MAVLink-Dialekt (.xml), ein Protocol-Buffers-Schema (.proto oder ein Deskriptorsatz), eine Definition von ROS 2 oder DDS (.msg, .idl) oder ein JSON-Schema (.schema.json)</translation>
    </message>
    <message>
        <source>Where files that a schema imports are looked for; its own folder always is</source>
        <translation>Wo nach Dateien gesucht wird, die ein Schema importiert; in seinem eigenen Ordner immer</translation>
    </message>
    <message>
        <source>Recent connections</source>
        <translation>Letzte Verbindungen</translation>
    </message>
    <message>
        <source>Fill in what was used before</source>
        <translation>Eintragen, was früher benutzt wurde</translation>
    </message>
    <message>
        <source>what to call it; else its address</source>
        <translation>wie sie heißen soll; sonst ihre Adresse</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>What the list of sources and the names of senders call it, and the recent connections</source>
        <translation>Wie die Liste der Quellen, die Namen der Sender und die letzten Verbindungen sie nennen</translation>
    </message>
    <message>
        <source>Re&amp;cent:</source>
        <translation>&amp;Letzte:</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>N&amp;ame:</translation>
    </message>
    <message>
        <source>choose to fill in</source>
        <translation>zum Eintragen wählen</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>name, address</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Rate:</source>
        <translation>Rate:</translation>
    </message>
</context>
<context>
    <name>CsvFile</name>
    <message>
        <source>Comma-separated values (*.csv);;All files (*)</source>
        <translation>Kommagetrennte Werte (*.csv);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Saved: %1</source>
        <translation>Gespeichert: %1</translation>
    </message>
</context>
<context>
    <name>Demonstration</name>
    <message>
        <source>simulated vehicle</source>
        <translation>simuliertes Fahrzeug</translation>
    </message>
    <message>
        <source>&amp;Simulated Vehicle</source>
        <translation>&amp;Simuliertes Fahrzeug</translation>
    </message>
    <message>
        <source>simulated robot</source>
        <translation>simulierter Roboter</translation>
    </message>
    <message>
        <source>S&amp;imulated Robot</source>
        <translation>S&amp;imulierter Roboter</translation>
    </message>
    <message>
        <source>simulated fleet</source>
        <translation>simulierte Flotte</translation>
    </message>
    <message>
        <source>Si&amp;mulated Fleet</source>
        <translation>Si&amp;mulierte Flotte</translation>
    </message>
</context>
<context>
    <name>Desk</name>
    <message>
        <source>No recording that is open has this time.</source>
        <translation>Keine geöffnete Aufzeichnung enthält diese Zeit.</translation>
    </message>
</context>
<context>
    <name>DockLayout</name>
    <message>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
</context>
<context>
    <name>EventCauses</name>
    <message>
        <source>Hidden data</source>
        <translation>Verborgene Daten</translation>
    </message>
    <message>
        <source>The list is full with %1 rows: all others are counted here; last: %2</source>
        <translation>Die Liste ist mit %1 Zeilen voll: Alle anderen zählen hier; zuletzt: %2</translation>
    </message>
    <message>
        <source>more than %1 different ones, all others; last: %2</source>
        <translation>mehr als %1 verschiedene, alle anderen; zuletzt: %2</translation>
    </message>
</context>
<context>
    <name>EventModel</name>
    <message>
        <source>%1 @ %2</source>
        <comment>sender and source</comment>
        <translation>%1 @ %2</translation>
    </message>
    <message>
        <source>The last one: %1</source>
        <translation>Zuletzt: %1</translation>
    </message>
    <message>
        <source>%1 UTC</source>
        <translation>%1 UTC</translation>
    </message>
    <message>
        <source>Severity</source>
        <translation>Schwere</translation>
    </message>
    <message>
        <source>How bad it is; of what vehicles say, as they say</source>
        <translation>Wie schlimm es ist; bei Texten von Fahrzeugen, wie diese es sagen</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>How often it happened</source>
        <translation>Wie oft es geschah</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>Ereignis</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>Whose message is concerned, or where it comes from</source>
        <translation>Um wessen Nachricht es geht, oder woher es kommt</translation>
    </message>
    <message>
        <source>First</source>
        <translation>Zuerst</translation>
    </message>
    <message>
        <source>By the time of the messages (UTC), as in a recording</source>
        <translation>Nach der Zeit der Nachrichten (UTC), wie in einer Aufzeichnung</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>Zuletzt</translation>
    </message>
    <message>
        <source>First Seen</source>
        <translation>Zuerst gesehen</translation>
    </message>
    <message>
        <source>By the clock of this computer</source>
        <translation>Nach der Uhr dieses Rechners</translation>
    </message>
    <message>
        <source>Last Seen</source>
        <translation>Zuletzt gesehen</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>What such events are called, or the message type that brings them</source>
        <translation>Wie solche Ereignisse heißen, oder der Nachrichtentyp, der sie bringt</translation>
    </message>
</context>
<context>
    <name>EventPanel</name>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
    <message>
        <source>Nothing happened yet: losses, checksum failures and changes of sources appear here.</source>
        <translation>Noch ist nichts geschehen: Verluste, Prüfsummenfehler und Änderungen der Quellen erscheinen hier.</translation>
    </message>
    <message>
        <source>Save &amp;Events as CSV...</source>
        <translation>&amp;Ereignisse als CSV speichern ...</translation>
    </message>
    <message>
        <source>&amp;Clear Events</source>
        <translation>Ereignisse lös&amp;chen</translation>
    </message>
    <message>
        <source>Save Events</source>
        <translation>Ereignisse speichern</translation>
    </message>
    <message>
        <source>Whole Recording</source>
        <translation>Ganze Aufzeichnung</translation>
    </message>
    <message>
        <source>Played</source>
        <translation>Abgespielt</translation>
    </message>
    <message>
        <source>What there is in all of the recording that is chosen</source>
        <translation>Was es in der ganzen gewählten Aufzeichnung gibt</translation>
    </message>
    <message>
        <source>What happened so far, in all sources</source>
        <translation>Was bisher geschah, in allen Quellen</translation>
    </message>
    <message>
        <source>What the events are about</source>
        <translation>Wovon die Ereignisse handeln</translation>
    </message>
    <message>
        <source>Event or source</source>
        <translation>Ereignis oder Quelle</translation>
    </message>
    <message>
        <source>Show only these events</source>
        <translation>Nur diese Ereignisse zeigen</translation>
    </message>
    <message>
        <source>Everything</source>
        <translation>Alles</translation>
    </message>
    <message>
        <source>Warnings and Errors</source>
        <translation>Warnungen und Fehler</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>How bad events must be to be shown</source>
        <translation>Wie schlimm Ereignisse sein müssen, um gezeigt zu werden</translation>
    </message>
    <message>
        <source>Double-click an event, or press Return, to go to its first time in the recording</source>
        <translation>Doppelklick auf ein Ereignis oder die Eingabetaste führt zu seiner ersten Zeit in der Aufzeichnung</translation>
    </message>
    <message>
        <source>In the Order They Came</source>
        <translation>In der Reihenfolge des Auftretens</translation>
    </message>
    <message>
        <source>%1 hidden</source>
        <comment>events</comment>
        <translation>%1 ausgeblendet</translation>
    </message>
    <message>
        <source>Looking through the recording: %1 %</source>
        <translation>Die Aufzeichnung wird durchgesehen: %1 %</translation>
    </message>
    <message>
        <source>No event is like that.</source>
        <translation>So ist kein Ereignis.</translation>
    </message>
    <message>
        <source>&amp;Go to This Time</source>
        <translation>&amp;Zu dieser Zeit gehen</translation>
    </message>
    <message>
        <source>&amp;Go to the First</source>
        <translation>Zum &amp;ersten gehen</translation>
    </message>
    <message>
        <source>Go to the La&amp;st</source>
        <translation>Zum &amp;letzten gehen</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Load &amp;Definitions...</source>
        <translation>&amp;Definitionen laden ...</translation>
    </message>
    <message>
        <source>Clea&amp;r Events</source>
        <translation>E&amp;reignisse leeren</translation>
    </message>
    <message>
        <source>Co&amp;lumns</source>
        <translation>&amp;Spalten</translation>
    </message>
    <message>
        <source>No event is in this recording; gaps and losses are in the statistics.</source>
        <translation>In dieser Aufzeichnung ist kein Ereignis; Lücken und Verluste stehen in der Statistik.</translation>
    </message>
</context>
<context>
    <name>ExpressionLine</name>
    <message>
        <source>E&amp;xpression:</source>
        <translation>Ausdruc&amp;k:</translation>
    </message>
    <message>
        <source>Expression</source>
        <translation>Ausdruck</translation>
    </message>
    <message>
        <source>&amp;Draw</source>
        <translation>&amp;Zeichnen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Lines by their letters, and fields by their paths: a - b, sqrt(a^2 + b^2), deg(&quot;corvel/ATTITUDE/roll&quot;)</source>
        <translation>Reihen mit ihren Buchstaben, Felder mit ihren Pfaden: a - b, sqrt(a^2 + b^2), deg(&quot;corvel/ATTITUDE/roll&quot;)</translation>
    </message>
    <message>
        <source>Return draws it.</source>
        <translation>Die Eingabetaste zeichnet sie.</translation>
    </message>
    <message>
        <source>character %1: %2</source>
        <translation>Zeichen %1: %2</translation>
    </message>
</context>
<context>
    <name>FieldSummary</name>
    <message>
        <source>Hidden data</source>
        <translation>Verborgene Daten</translation>
    </message>
</context>
<context>
    <name>FieldValueLabel</name>
    <message>
        <source>N/A</source>
        <translation>k. A.</translation>
    </message>
</context>
<context>
    <name>FileFilters</name>
    <message>
        <source>All files</source>
        <translation>Alle Dateien</translation>
    </message>
    <message>
        <source>Recordings</source>
        <translation>Aufzeichnungen</translation>
    </message>
    <message>
        <source>Definitions</source>
        <translation>Definitionen</translation>
    </message>
</context>
<context>
    <name>FileMenu</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Open Recording...</source>
        <translation>&amp;Aufzeichnung öffnen ...</translation>
    </message>
    <message>
        <source>Co&amp;nnect...</source>
        <translation>&amp;Verbinden ...</translation>
    </message>
    <message>
        <source>Ctrl+K</source>
        <translation>Ctrl+K</translation>
    </message>
    <message>
        <source>&amp;Record...</source>
        <translation>Auf&amp;zeichnen ...</translation>
    </message>
    <message>
        <source>Ctrl+R</source>
        <translation>Ctrl+R</translation>
    </message>
    <message>
        <source>S&amp;top Recording</source>
        <translation>Aufzeichnung sto&amp;ppen</translation>
    </message>
    <message>
        <source>C&amp;lose Source</source>
        <translation>&amp;Quelle schließen</translation>
    </message>
    <message>
        <source>Ctrl+W</source>
        <translation>Ctrl+W</translation>
    </message>
    <message>
        <source>Load &amp;Definitions...</source>
        <translation>Definitionen &amp;laden ...</translation>
    </message>
    <message>
        <source>Open Recordings</source>
        <translation>Aufzeichnungen öffnen</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Aufzeichnen</translation>
    </message>
    <message>
        <source>Load Definitions</source>
        <translation>Definitionen laden</translation>
    </message>
    <message>
        <source>The definitions are used from here on, also for what is open.</source>
        <translation>Die Definitionen gelten von hier an, auch für das, was geöffnet ist.</translation>
    </message>
    <message>
        <source>Open &amp;Folder...</source>
        <translation>&amp;Ordner öffnen...</translation>
    </message>
    <message>
        <source>Open the Folder of a Recording</source>
        <translation>Ordner einer Aufzeichnung öffnen</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Open recordings (%1)</source>
        <translation>Aufzeichnungen öffnen (%1)</translation>
    </message>
    <message>
        <source>Listen to a device: UDP, TCP, a serial port, a broker (%1)</source>
        <translation>Einem Gerät zuhören: UDP, TCP, serielle Schnittstelle, Broker (%1)</translation>
    </message>
    <message>
        <source>Finish the recording in %1</source>
        <translation>Die Aufzeichnung in %1 abschließen</translation>
    </message>
    <message>
        <source>Write down what the chosen source brings, byte for byte</source>
        <translation>Mitschreiben, was die gewählte Quelle bringt, Byte für Byte</translation>
    </message>
    <message>
        <source>A file of definitions says what it means; choose it here.</source>
        <translation>Was das bedeutet, sagt eine Datei mit Definitionen; wählen Sie sie hier.</translation>
    </message>
    <message>
        <source>Nothing yet</source>
        <translation>Noch nichts</translation>
    </message>
    <message>
        <source>O&amp;pen Recent</source>
        <translation>Z&amp;uletzt geöffnet</translation>
    </message>
</context>
<context>
    <name>FindBar</name>
    <message>
        <source>Type, field or value, or a path such as */ATTITUDE/roll</source>
        <translation>Typ, Feld oder Wert oder ein Pfad wie */ATTITUDE/roll</translation>
    </message>
    <message>
        <source>Find in the message tree</source>
        <translation>Im Nachrichtenbaum suchen</translation>
    </message>
    <message>
        <source>Matches</source>
        <translation>Treffer</translation>
    </message>
    <message>
        <source>&amp;Find...</source>
        <translation>&amp;Suchen ...</translation>
    </message>
    <message>
        <source>Find &amp;Next</source>
        <translation>Nächster &amp;Treffer</translation>
    </message>
    <message>
        <source>Previous match</source>
        <translation>Vorheriger Treffer</translation>
    </message>
    <message>
        <source>Previous match (Shift+F3)</source>
        <translation>Vorheriger Treffer (Umschalt+F3)</translation>
    </message>
    <message>
        <source>Next match</source>
        <translation>Nächster Treffer</translation>
    </message>
    <message>
        <source>Next match (F3)</source>
        <translation>Nächster Treffer (F3)</translation>
    </message>
    <message>
        <source>Close the find bar</source>
        <translation>Suchleiste schließen</translation>
    </message>
    <message>
        <source>Close and show everything (Esc)</source>
        <translation>Schließen und alles zeigen (Esc)</translation>
    </message>
    <message>
        <source>Not a path yet</source>
        <translation>Noch kein Pfad</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Nichts gefunden</translation>
    </message>
    <message>
        <source>1 match</source>
        <translation>1 Treffer</translation>
    </message>
    <message>
        <source>%1 matches</source>
        <translation>%1 Treffer</translation>
    </message>
    <message>
        <source>Looking ...</source>
        <translation>Sucht ...</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Show only what matches a text (%1)</source>
        <translation>Nur zeigen, was zu einem Text passt (%1)</translation>
    </message>
    <message>
        <source>Fi&amp;nd:</source>
        <translation>Suche&amp;n:</translation>
    </message>
    <message>
        <source>Find Pre&amp;vious</source>
        <translation>Vorheri&amp;ger Treffer</translation>
    </message>
</context>
<context>
    <name>FormPanel</name>
    <message>
        <source>Select message types in the list to see them here as forms.</source>
        <translation>Nachrichtentypen in der Liste auswählen, um sie hier als Formulare zu sehen.</translation>
    </message>
    <message>
        <source>Message forms</source>
        <translation>Nachrichtenformulare</translation>
    </message>
    <message>
        <source>Hidden data</source>
        <translation>Verborgene Daten</translation>
    </message>
</context>
<context>
    <name>LayoutMenu</name>
    <message>
        <source>&amp;Layouts</source>
        <translation>An&amp;ordnungen</translation>
    </message>
    <message>
        <source>&amp;Reset</source>
        <translation>&amp;Zurücksetzen</translation>
    </message>
    <message>
        <source>&amp;Save As...</source>
        <translation>&amp;Speichern unter ...</translation>
    </message>
    <message>
        <source>Re&amp;move</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>Save Layout</source>
        <translation>Anordnung speichern</translation>
    </message>
    <message>
        <source>&amp;Name; one that exists is replaced:</source>
        <translation>&amp;Name; eine vorhandene wird ersetzt:</translation>
    </message>
</context>
<context>
    <name>LineActions</name>
    <message>
        <source>Move to the Plot Above</source>
        <translation>In das Diagramm darüber</translation>
    </message>
    <message>
        <source>Move to a Plot Below</source>
        <translation>In ein Diagramm darunter</translation>
    </message>
    <message>
        <source>Derivative</source>
        <translation>Ableitung</translation>
    </message>
    <message>
        <source>Moving Average</source>
        <translation>Gleitender Mittelwert</translation>
    </message>
    <message>
        <source>Degrees or Radians</source>
        <translation>Grad oder Radiant</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Difference</source>
        <translation>Differenz</translation>
    </message>
    <message>
        <source>Expression...</source>
        <translation>Ausdruck...</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Corvel Monitor</source>
        <translation>Corvel Monitor</translation>
    </message>
    <message>
        <source>%1 – Corvel Monitor</source>
        <translation>%1 – Corvel Monitor</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Tree</source>
        <translation>Ba&amp;um</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>Pause &amp;Views</source>
        <translation>Ansichten an&amp;halten</translation>
    </message>
    <message>
        <source>F8</source>
        <translation>F8</translation>
    </message>
    <message>
        <source>Let the views stand still while what arrives is counted and recorded (F8)</source>
        <translation>Ansichten stillstehen lassen, während weiter gezählt und aufgezeichnet wird, was ankommt (F8)</translation>
    </message>
    <message>
        <source>&amp;Playback</source>
        <translation>&amp;Wiedergabe</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About Corvel Monitor</source>
        <translation>&amp;Über Corvel Monitor</translation>
    </message>
    <message>
        <source>About &amp;Qt</source>
        <translation>Über &amp;Qt</translation>
    </message>
    <message>
        <source>About Corvel Monitor</source>
        <translation>Über Corvel Monitor</translation>
    </message>
    <message>
        <source>Corvel Monitor %1

Shows what a device says: every field of every message type, live; how regularly messages arrive; what went missing, what went wrong, and when.</source>
        <translation>Corvel Monitor %1

Zeigt, was ein Gerät sagt: jedes Feld jedes Nachrichtentyps, live; wie regelmäßig Nachrichten kommen; was fehlte, was schiefging und wann.</translation>
    </message>
    <message>
        <source>&amp;Settings...</source>
        <translation>&amp;Einstellungen ...</translation>
    </message>
    <message>
        <source>Ctrl+,</source>
        <translation>Ctrl+,</translation>
    </message>
    <message>
        <source>Free software under the licence %1.</source>
        <translation>Freie Software unter der Lizenz %1.</translation>
    </message>
    <message>
        <source>Free software: its own source is under the licence %1; as a whole, with the library that draws the plot, it is under %2.</source>
        <translation>Freie Software: Der eigene Quelltext steht unter der Lizenz %1, das Ganze mit der Bibliothek, die den Verlauf zeichnet, unter %2.</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Tool Bar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>There is nothing open to record.</source>
        <translation>Es ist nichts offen, was aufgezeichnet werden könnte.</translation>
    </message>
</context>
<context>
    <name>MessageHistory</name>
    <message>
        <source>Reading %1: %2 %</source>
        <translation>%1 wird gelesen: %2 %</translation>
    </message>
</context>
<context>
    <name>MessageList</name>
    <message>
        <source>Not noted: nobody could see the list.</source>
        <translation>Nicht notiert: Die Liste war nicht zu sehen.</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Interval</source>
        <translation>Abstand</translation>
    </message>
    <message>
        <source>Sender</source>
        <translation>Sender</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Bytes</translation>
    </message>
    <message>
        <source>Values</source>
        <translation>Werte</translation>
    </message>
    <message>
        <source>Time since the one before of the same type and sender</source>
        <translation>Zeit seit der vorigen desselben Typs und Senders</translation>
    </message>
    <message>
        <source>What the sender numbered it</source>
        <translation>Vom Sender gegebene Nummer</translation>
    </message>
</context>
<context>
    <name>MessageTypeModel</name>
    <message>
        <source>Unknown %1</source>
        <translation>Unbekannt: %1</translation>
    </message>
    <message>
        <source>The loaded definitions do not know this type; its messages are counted only.</source>
        <translation>Die geladenen Definitionen kennen diesen Typ nicht; seine Nachrichten werden nur gezählt.</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Sender</source>
        <translation>Sender</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Rate</translation>
    </message>
    <message>
        <source>Without a name</source>
        <translation>Ohne Namen</translation>
    </message>
    <message>
        <source>Sender and Type</source>
        <translation>Sender und Typ</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>every %1</source>
        <translation>alle %1</translation>
    </message>
    <message>
        <source>now</source>
        <translation>jetzt</translation>
    </message>
    <message>
        <source>%1 ago</source>
        <translation>vor %1</translation>
    </message>
    <message>
        <source>Unknown types</source>
        <translation>Unbekannte Typen</translation>
    </message>
    <message>
        <source>Identifiers that no definition knows: types whose definitions are not loaded, and damaged frames</source>
        <translation>Kennungen, die keine Definition kennt: Typen, deren Definitionen nicht geladen sind, und beschädigte Rahmen</translation>
    </message>
    <message>
        <source>The rate that the messages keep, as the statistics have it</source>
        <translation>Die Rate, die die Nachrichten einhalten, wie die Statistik sie nennt</translation>
    </message>
    <message>
        <source>Range</source>
        <translation>Bereich</translation>
    </message>
    <message>
        <source>The slowest and the fastest rate there was, without the rarest twentieth</source>
        <translation>Die langsamste und die schnellste Rate, die vorkam, ohne das seltenste Zwanzigstel</translation>
    </message>
    <message>
        <source>Gaps</source>
        <translation>Lücken</translation>
    </message>
    <message>
        <source>Times in which messages did not come although they were due</source>
        <translation>Zeiten, in denen fällige Nachrichten nicht kamen</translation>
    </message>
    <message>
        <source>Lost</source>
        <translation>Verloren</translation>
    </message>
    <message>
        <source>Numbers that the sender skipped, of all of its types together</source>
        <translation>Nummern, die der Absender übersprang, über alle seine Typen</translation>
    </message>
    <message>
        <source>Age</source>
        <translation>Alter</translation>
    </message>
    <message>
        <source>Since when nothing came, in the recording&apos;s own time where it is one</source>
        <translation>Seit wann nichts kam, bei einer Aufzeichnung in deren eigener Zeit</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Bytes</translation>
    </message>
</context>
<context>
    <name>MessagesPanel</name>
    <message>
        <source>&amp;Newest</source>
        <translation>&amp;Neueste</translation>
    </message>
    <message>
        <source>Lets the list go on to the newest message</source>
        <translation>Lässt die Liste bis zur neuesten Nachricht weiterlaufen</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Nachrichten</translation>
    </message>
    <message>
        <source>&amp;Go to Its Time</source>
        <translation>Zu ihrer Zeit sprin&amp;gen</translation>
    </message>
    <message>
        <source>Copy as &amp;JSON</source>
        <translation>Als &amp;JSON kopieren</translation>
    </message>
    <message>
        <source>Ctrl+J</source>
        <translation>Ctrl+J</translation>
    </message>
    <message>
        <source>Ctrl+Shift+C</source>
        <translation>Ctrl+Shift+C</translation>
    </message>
    <message>
        <source>Choose types under Message Types: their messages are listed here, one by one.</source>
        <translation>Wählen Sie unter Nachrichtentypen Typen aus: Ihre Nachrichten stehen dann hier, eine nach der anderen.</translation>
    </message>
    <message>
        <source>Nothing came of these types yet.</source>
        <translation>Von diesen Typen kam noch nichts.</translation>
    </message>
    <message>
        <source>No more than the last %1 MB are kept</source>
        <translation>Nur die letzten %1 MB werden behalten</translation>
    </message>
    <message>
        <source>The last %1</source>
        <translation>Die letzten %1</translation>
    </message>
    <message>
        <source>Copied: %1</source>
        <translation>Kopiert: %1</translation>
    </message>
    <message>
        <source>Not copied: some of it is hidden.</source>
        <translation>Nicht kopiert: Ein Teil davon ist verborgen.</translation>
    </message>
    <message>
        <source>Newer: %1 and more</source>
        <translation>Neuere: %1 und mehr</translation>
    </message>
    <message>
        <source>Newer: %1</source>
        <translation>Neuere: %1</translation>
    </message>
    <message>
        <source>Show &amp;Bytes</source>
        <translation>&amp;Bytes zeigen</translation>
    </message>
    <message>
        <source>Ctrl+B</source>
        <translation>Ctrl+B</translation>
    </message>
    <message>
        <source>&amp;Copy Bytes</source>
        <translation>Bytes &amp;kopieren</translation>
    </message>
    <message>
        <source>Looking for messages in the recording...</source>
        <translation>Nachrichten werden in der Aufzeichnung gesucht ...</translation>
    </message>
</context>
<context>
    <name>Opener</name>
    <message>
        <source>The annotations have faults; the rest of them is used.</source>
        <translation>Die Anmerkungen enthalten Fehler; der Rest davon wird verwendet.</translation>
    </message>
    <message>
        <source>The definitions could not be loaded.</source>
        <translation>Die Definitionen konnten nicht geladen werden.</translation>
    </message>
</context>
<context>
    <name>Panel</name>
    <message>
        <source>Message Tree</source>
        <translation>Nachrichtenbaum</translation>
    </message>
    <message>
        <source>Watches</source>
        <translation>Beobachtungen</translation>
    </message>
    <message>
        <source>Sources</source>
        <translation>Quellen</translation>
    </message>
    <message>
        <source>Message Types</source>
        <translation>Nachrichtentypen</translation>
    </message>
    <message>
        <source>Forms</source>
        <translation>Formulare</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Statistik</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
    <message>
        <source>Plot</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Nachrichten</translation>
    </message>
    <message>
        <source>Comparison</source>
        <translation>Vergleich</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Bytes</translation>
    </message>
</context>
<context>
    <name>PauseBanner</name>
    <message>
        <source>The views are paused. What arrives is counted and recorded all the same.</source>
        <translation>Die Ansichten sind angehalten. Was ankommt, wird trotzdem gezählt und aufgezeichnet.</translation>
    </message>
    <message>
        <source>Resume (%1)</source>
        <translation>Fortsetzen (%1)</translation>
    </message>
</context>
<context>
    <name>PinnedTypes</name>
    <message>
        <source>pinned</source>
        <translation>angeheftet</translation>
    </message>
</context>
<context>
    <name>PlaybackBar</name>
    <message>
        <source>&amp;Play or Pause</source>
        <translation>&amp;Abspielen oder anhalten</translation>
    </message>
    <message>
        <source>Ctrl+Space</source>
        <translation>Ctrl+Space</translation>
    </message>
    <message>
        <source>&amp;Step One Message</source>
        <translation>&amp;Eine Nachricht weiter</translation>
    </message>
    <message>
        <source>Ctrl+.</source>
        <translation>Ctrl+.</translation>
    </message>
    <message>
        <source>Stop &amp;Reading</source>
        <translation>&amp;Lesen beenden</translation>
    </message>
    <message>
        <source>End reading here; what was read stays</source>
        <translation>Das Lesen hier beenden; was gelesen wurde, bleibt</translation>
    </message>
    <message>
        <source>%1 x</source>
        <comment>speed of playback</comment>
        <translation>%1 x</translation>
    </message>
    <message>
        <source>As fast as possible</source>
        <translation>So schnell wie möglich</translation>
    </message>
    <message>
        <source>Speed of playback</source>
        <translation>Geschwindigkeit der Wiedergabe</translation>
    </message>
    <message>
        <source>How fast the recording is played</source>
        <translation>Wie schnell die Aufzeichnung abgespielt wird</translation>
    </message>
    <message>
        <source>Place in the recording</source>
        <translation>Stelle in der Aufzeichnung</translation>
    </message>
    <message>
        <source>Where the recording is; counts and statistics begin anew where you go</source>
        <translation>Wo die Aufzeichnung steht; nach einem Sprung beginnen Zählung und Statistik neu</translation>
    </message>
    <message>
        <source>Part of the recording that was read</source>
        <translation>Gelesener Teil der Aufzeichnung</translation>
    </message>
    <message>
        <source>Time in the recording</source>
        <translation>Zeit in der Aufzeichnung</translation>
    </message>
    <message>
        <source>Go to time</source>
        <translation>Zu Zeit springen</translation>
    </message>
    <message>
        <source>Time to go to</source>
        <translation>Zeit, zu der gesprungen wird</translation>
    </message>
    <message>
        <source>A time to go to: 14:05:30 (UTC), +1:30 since the start, or 2015-07-05 14:05:30</source>
        <translation>Eine Zeit als Ziel: 14:05:30 (UTC), +1:30 seit dem Beginn oder 2015-07-05 14:05:30</translation>
    </message>
    <message>
        <source>&amp;Go to Time...</source>
        <translation>Zu Zeit s&amp;pringen ...</translation>
    </message>
    <message>
        <source>Ctrl+G</source>
        <translation>Ctrl+G</translation>
    </message>
    <message>
        <source>Pause the recording (%1)</source>
        <translation>Aufzeichnung anhalten (%1)</translation>
    </message>
    <message>
        <source>Play the recording (%1)</source>
        <translation>Aufzeichnung abspielen (%1)</translation>
    </message>
    <message>
        <source>Show the next message and stop there (%1)</source>
        <translation>Die nächste Nachricht zeigen und dort anhalten (%1)</translation>
    </message>
    <message>
        <source>%1 UTC</source>
        <translation>%1 UTC</translation>
    </message>
    <message>
        <source>%1 UTC   %2 / %3</source>
        <translation>%1 UTC   %2 / %3</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no time; a time is written as 14:05:30, +1:30 or 2015-07-05 14:05:30.</source>
        <translation>„%1“ ist keine Zeit; eine Zeit wird 14:05:30, +1:30 oder 2015-07-05 14:05:30 geschrieben.</translation>
    </message>
    <message>
        <source>Step &amp;Back</source>
        <translation>Schritt &amp;zurück</translation>
    </message>
    <message>
        <source>Ctrl+Shift+.</source>
        <translation>Ctrl+Shift+.</translation>
    </message>
    <message>
        <source>&amp;Loop</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Play from the beginning again when the end is reached</source>
        <translation>Am Ende wieder von vorn abspielen</translation>
    </message>
    <message>
        <source>Go back to the message before, and stop there (%1)</source>
        <translation>Zur Nachricht davor zurückgehen und dort anhalten (%1)</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>severity, text</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 from %2: %3</source>
        <comment>severity, sender, text</comment>
        <translation>%1 von %2: %3</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not in this recording, which goes from %2 to %3 UTC.</source>
        <translation>„%1“ liegt nicht in dieser Aufzeichnung, die von %2 bis %3 UTC reicht.</translation>
    </message>
</context>
<context>
    <name>PlotBar</name>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Let the picture stay; what comes is kept (Space)</source>
        <translation>Das Bild stehen lassen; was kommt, wird behalten (Leertaste)</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alles</translation>
    </message>
    <message>
        <source>Time that is shown</source>
        <translation>Gezeigte Zeit</translation>
    </message>
    <message>
        <source>How much time is shown</source>
        <translation>Wie viel Zeit gezeigt wird</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Show less time (turn the wheel; Shift and drag shows a rectangle)</source>
        <translation>Weniger Zeit zeigen (Mausrad drehen; Umschalt und Ziehen zeigt ein Rechteck)</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Show more time</source>
        <translation>Mehr Zeit zeigen</translation>
    </message>
    <message>
        <source>Show All</source>
        <translation>Alles zeigen</translation>
    </message>
    <message>
        <source>Show all the time that is kept, and pause</source>
        <translation>Die gesamte behaltene Zeit zeigen und anhalten</translation>
    </message>
    <message>
        <source>Since Start</source>
        <translation>Ab Beginn</translation>
    </message>
    <message>
        <source>Draw recordings over one another, by the time since their start</source>
        <translation>Aufzeichnungen übereinander zeichnen, nach der Zeit seit ihrem Beginn</translation>
    </message>
    <message>
        <source>Remove All</source>
        <translation>Alle entfernen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Remove the chosen series (Del)</source>
        <translation>Die gewählte Reihe entfernen (Entf)</translation>
    </message>
    <message>
        <source>Save Picture...</source>
        <translation>Bild speichern ...</translation>
    </message>
    <message>
        <source>Save Values...</source>
        <translation>Werte speichern ...</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Save the plot as a picture, or its values</source>
        <translation>Den Verlauf als Bild speichern oder seine Werte</translation>
    </message>
</context>
<context>
    <name>PlotExpression</name>
    <message>
        <source>no field that is known is called %1</source>
        <translation>kein bekanntes Feld heißt %1</translation>
    </message>
    <message>
        <source>%1 is confidential</source>
        <translation>%1 ist vertraulich</translation>
    </message>
    <message>
        <source>there is no line &quot;%1&quot;</source>
        <translation>es gibt keine Reihe „%1“</translation>
    </message>
    <message>
        <source>it names no line and no field</source>
        <translation>er nennt keine Reihe und kein Feld</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is made of an expression that is drawn as something else</source>
        <translation>„%1“ ist aus einem Ausdruck, der als etwas anderes gezeichnet wird</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no path in quotation marks</source>
        <translation>„%1“ ist kein Pfad in Anführungszeichen</translation>
    </message>
    <message>
        <source>the quotation mark is not closed</source>
        <translation>das Anführungszeichen ist nicht geschlossen</translation>
    </message>
</context>
<context>
    <name>PlotFunction</name>
    <message>
        <source>, derivative</source>
        <translation>, Ableitung</translation>
    </message>
    <message>
        <source>, average of %1 s</source>
        <translation>, Mittelwert von %1 s</translation>
    </message>
</context>
<context>
    <name>PlotLegend</name>
    <message>
        <source>Field</source>
        <translation>Feld</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Plotted fields</source>
        <translation>Felder im Verlauf</translation>
    </message>
</context>
<context>
    <name>PlotPanel</name>
    <message>
        <source>No more than %1 series can be plotted at a time.</source>
        <translation>Mehr als %1 Reihen können nicht gleichzeitig gezeigt werden.</translation>
    </message>
    <message>
        <source>Save Picture</source>
        <translation>Bild speichern</translation>
    </message>
    <message>
        <source>PNG pictures (*.png);;All files (*)</source>
        <translation>PNG-Bilder (*.png);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Save Values</source>
        <translation>Werte speichern</translation>
    </message>
    <message>
        <source>P&amp;lot</source>
        <translation>Im &amp;Verlauf zeigen</translation>
    </message>
    <message>
        <source>Ctrl+L</source>
        <translation>Ctrl+L</translation>
    </message>
    <message>
        <source>Only numbers can be plotted.</source>
        <translation>Nur Zahlen können im Verlauf gezeigt werden.</translation>
    </message>
</context>
<context>
    <name>PlotStack</name>
    <message>
        <source>Plot</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Plot %1</source>
        <translation>Verlauf %1</translation>
    </message>
</context>
<context>
    <name>PlotView</name>
    <message>
        <source>without unit</source>
        <translation>ohne Einheit</translation>
    </message>
    <message>
        <source>%1 UTC</source>
        <translation>%1 UTC</translation>
    </message>
    <message>
        <source>since the start</source>
        <translation>seit dem Beginn</translation>
    </message>
</context>
<context>
    <name>PlotWishes</name>
    <message>
        <source>character %1: %2</source>
        <translation>Zeichen %1: %2</translation>
    </message>
    <message>
        <source>Expected is the path of a field, such as */ATTITUDE/roll, or an expression of paths in quotation marks, such as sqrt(&quot;*/A/x&quot;^2 + &quot;*/A/y&quot;^2).</source>
        <translation>Erwartet wird der Pfad eines Feldes wie */ATTITUDE/roll oder ein Ausdruck aus Pfaden in Anführungszeichen wie sqrt(&quot;*/A/x&quot;^2 + &quot;*/A/y&quot;^2).</translation>
    </message>
    <message>
        <source>no field is named; a path is a format, a type and a field</source>
        <translation>kein Feld ist genannt; ein Pfad besteht aus Format, Typ und Feld</translation>
    </message>
    <message>
        <source>Not there so far: %1</source>
        <translation>Bisher nicht da: %1</translation>
    </message>
    <message>
        <source>Drag a number from the message tree here, or choose Plot in its context menu (Ctrl+L).</source>
        <translation>Eine Zahl aus dem Nachrichtenbaum hierher ziehen oder in ihrem Kontextmenü „Im Verlauf zeigen“ wählen (Strg+L).</translation>
    </message>
</context>
<context>
    <name>PreferencesDialog</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Anzeige</translation>
    </message>
    <message>
        <source> Hz</source>
        <translation> Hz</translation>
    </message>
    <message>
        <source>&amp;Updates:</source>
        <translation>Akt&amp;ualisierung:</translation>
    </message>
    <message>
        <source>How often the views show what is new. Every message is counted and recorded at any rate.</source>
        <translation>Wie oft die Ansichten Neues zeigen. Jede Nachricht wird bei jeder Rate gezählt und aufgezeichnet.</translation>
    </message>
    <message>
        <source>exact</source>
        <translation>exakt</translation>
    </message>
    <message>
        <source>&amp;Decimals:</source>
        <translation>&amp;Nachkommastellen:</translation>
    </message>
    <message>
        <source>Digits behind the point of floating-point numbers. Raw values are always exact.</source>
        <translation>Stellen hinter dem Komma von Gleitkommazahlen. Rohwerte sind immer exakt.</translation>
    </message>
    <message>
        <source>As the system</source>
        <translation>Wie das System</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>&amp;Colours:</source>
        <translation>&amp;Farben:</translation>
    </message>
    <message>
        <source>The colours of all windows</source>
        <translation>Die Farben aller Fenster</translation>
    </message>
    <message>
        <source>&amp;Highlight values that change</source>
        <translation>Geänderte Werte &amp;hervorheben</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Nachrichten</translation>
    </message>
    <message>
        <source>never</source>
        <translation>nie</translation>
    </message>
    <message>
        <source> intervals</source>
        <translation> Intervallen</translation>
    </message>
    <message>
        <source>Gr&amp;ey types after:</source>
        <translation>Typen aus&amp;grauen nach:</translation>
    </message>
    <message>
        <source>How many of its intervals without a message make a type count as silent</source>
        <translation>Nach wie vielen seiner Intervalle ohne Nachricht ein Typ als verstummt gilt</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Annotation file</source>
        <translation>Anmerkungsdatei</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>&amp;Durchsuchen ...</translation>
    </message>
    <message>
        <source>&amp;Annotations:</source>
        <translation>&amp;Anmerkungen:</translation>
    </message>
    <message>
        <source>A file that adds roles, confidentiality and computed fields to the definitions</source>
        <translation>Eine Datei, die den Definitionen Rollen, Vertraulichkeit und berechnete Felder hinzufügt</translation>
    </message>
    <message>
        <source>Show con&amp;fidential data</source>
        <translation>&amp;Vertrauliche Daten zeigen</translation>
    </message>
    <message>
        <source>Fields that their owner marked as confidential can then be read by anybody who sees this screen, also in pictures, copies and plots. The program forgets this choice when it ends.</source>
        <translation>Felder, die ihr Eigentümer als vertraulich gekennzeichnet hat, kann dann jeder lesen, der diesen Bildschirm sieht, auch in Bildern, Kopien und Verläufen. Das Programm vergisst diese Wahl, wenn es endet.</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Annotations</source>
        <translation>Anmerkungen</translation>
    </message>
    <message>
        <source>Annotations (*.json);;All files (*)</source>
        <translation>Anmerkungen (*.json);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source> s</source>
        <translation> s</translation>
    </message>
    <message>
        <source>&amp;Watches time out after:</source>
        <translation>&amp;Beobachtete Werte verfallen nach:</translation>
    </message>
    <message>
        <source>How long a watch keeps its value when no message brings a new one</source>
        <translation>Wie lange ein beobachteter Wert stehen bleibt, wenn keine Nachricht einen neuen bringt</translation>
    </message>
    <message>
        <source>all</source>
        <translation>alle</translation>
    </message>
    <message>
        <source>Di&amp;gits:</source>
        <translation>&amp;Ziffern:</translation>
    </message>
    <message>
        <source>Significant digits of floating-point numbers in the tree, where Decimals says nothing. Copies and raw values have all of them.</source>
        <translation>Geltende Ziffern von Gleitkommazahlen im Baum, wo keine Nachkommastellen eingestellt sind. Kopien und Rohwerte haben alle.</translation>
    </message>
    <message>
        <source>&amp;Language:</source>
        <translation>&amp;Sprache:</translation>
    </message>
    <message>
        <source>The language of all texts, at once. What was logged stays in the language it was logged in.</source>
        <translation>Die Sprache aller Texte, sofort. Was protokolliert ist, bleibt in der Sprache, in der es protokolliert wurde.</translation>
    </message>
</context>
<context>
    <name>RateChoice</name>
    <message>
        <source>%1 messages/s</source>
        <translation>%1 Nachrichten/s</translation>
    </message>
    <message>
        <source>As fast as possible</source>
        <translation>So schnell wie möglich</translation>
    </message>
    <message>
        <source>Rate of playback</source>
        <translation>Rate der Wiedergabe</translation>
    </message>
    <message>
        <source>The recording has no times: how many of its messages are shown in a second</source>
        <translation>Die Aufzeichnung hat keine Zeiten: wie viele ihrer Nachrichten in einer Sekunde gezeigt werden</translation>
    </message>
    <message>
        <source>1 message/s</source>
        <translation>1 Nachricht/s</translation>
    </message>
</context>
<context>
    <name>RecordedLines</name>
    <message>
        <source>reading %1, %2 %</source>
        <translation>%1 wird gelesen, %2 %</translation>
    </message>
    <message>
        <source>too many values: only the extremes of some</source>
        <translation>zu viele Werte: von manchen nur die Extreme</translation>
    </message>
</context>
<context>
    <name>Recorder</name>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Recording to %1 ended: %2. What is in the file can be read.</source>
        <translation>Die Aufzeichnung in %1 endete: %2. Was in der Datei ist, kann gelesen werden.</translation>
    </message>
    <message>
        <source>other messages come now, which such a recording cannot keep</source>
        <translation>nun kommen andere Nachrichten, die eine solche Aufzeichnung nicht aufnehmen kann</translation>
    </message>
</context>
<context>
    <name>RecordingFile</name>
    <message>
        <source>the disk is too slow for what arrives</source>
        <translation>der Datenträger ist zu langsam für das, was ankommt</translation>
    </message>
</context>
<context>
    <name>RowToolTips</name>
    <message>
        <source>Path:</source>
        <translation>Pfad:</translation>
    </message>
    <message>
        <source>Time:</source>
        <translation>Zeit:</translation>
    </message>
    <message>
        <source>Sender:</source>
        <translation>Sender:</translation>
    </message>
    <message>
        <source>Number:</source>
        <translation>Nummer:</translation>
    </message>
    <message>
        <source>Silent:</source>
        <translation>Verstummt:</translation>
    </message>
    <message>
        <source>message type</source>
        <translation>Nachrichtentyp</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>computed</source>
        <translation>berechnet</translation>
    </message>
    <message>
        <source>optional</source>
        <translation>optional</translation>
    </message>
    <message>
        <source>confidential</source>
        <translation>vertraulich</translation>
    </message>
    <message>
        <source>Unit:</source>
        <translation>Einheit:</translation>
    </message>
    <message>
        <source>Range:</source>
        <translation>Bereich:</translation>
    </message>
    <message>
        <source>Raw value:</source>
        <translation>Rohwert:</translation>
    </message>
    <message>
        <source>Value:</source>
        <translation>Wert:</translation>
    </message>
</context>
<context>
    <name>SenderChoice</name>
    <message>
        <source>All senders</source>
        <translation>Alle Sender</translation>
    </message>
    <message>
        <source>Sender shown</source>
        <translation>Gezeigter Sender</translation>
    </message>
    <message>
        <source>Whose messages the tree, the forms and the values show</source>
        <translation>Wessen Nachrichten Baum, Formulare und Werte zeigen</translation>
    </message>
</context>
<context>
    <name>SenderRow</name>
    <message>
        <source>Without a name</source>
        <translation>Ohne Namen</translation>
    </message>
    <message>
        <source>Sender</source>
        <translation>Sender</translation>
    </message>
    <message>
        <source>1 type</source>
        <translation>1 Typ</translation>
    </message>
    <message>
        <source>%1 types</source>
        <translation>%1 Typen</translation>
    </message>
</context>
<context>
    <name>SettingsFile</name>
    <message>
        <source>The settings were damaged. They were put aside as %1, and the program starts with its defaults.</source>
        <translation>Die Einstellungen waren beschädigt. Sie wurden als %1 beiseitegelegt; das Programm startet mit seinen Vorgaben.</translation>
    </message>
    <message>
        <source>The settings in %1 cannot be read.</source>
        <translation>Die Einstellungen in %1 können nicht gelesen werden.</translation>
    </message>
</context>
<context>
    <name>Severity</name>
    <message>
        <source>Emergency</source>
        <translation>Notfall</translation>
    </message>
    <message>
        <source>Alert</source>
        <translation>Alarm</translation>
    </message>
    <message>
        <source>Critical</source>
        <translation>Kritisch</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Notice</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Fehlersuche</translation>
    </message>
</context>
<context>
    <name>SilenceWatch</name>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>no message for %1</source>
        <translation>seit %1 keine Nachricht</translation>
    </message>
    <message>
        <source>no message for %1, since %2 UTC</source>
        <translation>seit %1 keine Nachricht, zuletzt um %2 UTC</translation>
    </message>
    <message>
        <source>gone; the last message came %1 ago</source>
        <translation>beendet; die letzte Nachricht kam vor %1</translation>
    </message>
    <message>
        <source>as of %1 UTC; nothing since the jump</source>
        <translation>Stand von %1 UTC; seit dem Sprung nichts</translation>
    </message>
</context>
<context>
    <name>SimulationBanner</name>
    <message>
        <source>Simulation: none of this comes from a device.</source>
        <translation>Simulation: Nichts davon kommt von einem Gerät.</translation>
    </message>
    <message>
        <source>End Simulation</source>
        <translation>Simulation beenden</translation>
    </message>
    <message>
        <source>Close it, and go to the start page</source>
        <translation>Sie schließen, und zur Startseite</translation>
    </message>
</context>
<context>
    <name>SourceFactory</name>
    <message>
        <source>The definitions could not be loaded.</source>
        <translation>Die Definitionen konnten nicht geladen werden.</translation>
    </message>
    <message>
        <source>The schema could not be loaded.</source>
        <translation>Das Schema konnte nicht geladen werden.</translation>
    </message>
</context>
<context>
    <name>SourceModel</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>%1 /s</source>
        <translation>%1 /s</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Rate</translation>
    </message>
    <message>
        <source>%1 is being read; a recording needs another name.</source>
        <translation>%1 wird gerade gelesen; eine Aufzeichnung braucht einen anderen Namen.</translation>
    </message>
    <message>
        <source>%1 is being recorded already.</source>
        <translation>%1 wird bereits aufgezeichnet.</translation>
    </message>
    <message>
        <source>recording, %1 in %2</source>
        <comment>size, duration</comment>
        <translation>zeichnet auf, %1 in %2</translation>
    </message>
    <message>
        <source>recorded %1 in %2, %3</source>
        <comment>size, duration, state</comment>
        <translation>%1 in %2 aufgezeichnet, %3</translation>
    </message>
</context>
<context>
    <name>SourcePanel</name>
    <message>
        <source>&amp;Reconnect</source>
        <translation>Neu verb&amp;inden</translation>
    </message>
    <message>
        <source>C&amp;lose</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>Sources</source>
        <translation>Quellen</translation>
    </message>
    <message>
        <source>Open the chosen source anew, now</source>
        <translation>Die gewählte Quelle jetzt neu öffnen</translation>
    </message>
    <message>
        <source>Close the chosen source, and forget what it received</source>
        <translation>Die gewählte Quelle schließen und vergessen, was sie empfing</translation>
    </message>
    <message>
        <source>Open or connect something.</source>
        <translation>Öffnen oder verbinden Sie etwas.</translation>
    </message>
</context>
<context>
    <name>SourceSession</name>
    <message>
        <source>looking through it, %1 %</source>
        <translation>wird durchgesehen, %1 %</translation>
    </message>
    <message>
        <source>opening</source>
        <translation>wird geöffnet</translation>
    </message>
    <message>
        <source>receiving</source>
        <translation>empfängt</translation>
    </message>
    <message>
        <source>ended</source>
        <translation>beendet</translation>
    </message>
    <message>
        <source>failed: %1</source>
        <translation>fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>ended, again in %1 s</source>
        <translation>beendet, neuer Versuch in %1 s</translation>
    </message>
    <message>
        <source>again in %1 s: %2</source>
        <translation>neuer Versuch in %1 s: %2</translation>
    </message>
    <message>
        <source>%1 @ %2</source>
        <comment>sender and source</comment>
        <translation>%1 @ %2</translation>
    </message>
    <message>
        <source>The end of %1 could not be written: %2.</source>
        <translation>Das Ende von %1 konnte nicht geschrieben werden: %2.</translation>
    </message>
    <message>
        <source>listening</source>
        <translation>lauscht</translation>
    </message>
    <message>
        <source>connected</source>
        <translation>verbunden</translation>
    </message>
    <message>
        <source>silent since %1</source>
        <translation>still seit %1</translation>
    </message>
    <message>
        <source>playing</source>
        <translation>spielt</translation>
    </message>
    <message>
        <source>paused</source>
        <translation>angehalten</translation>
    </message>
    <message>
        <source>stopped</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>recording to %1</source>
        <translation>zeichnet in %1 auf</translation>
    </message>
    <message>
        <source>recorded to %1</source>
        <translation>in %1 aufgezeichnet</translation>
    </message>
    <message>
        <source>the end of %1 could not be written: %2</source>
        <translation>das Ende von %1 konnte nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>other definitions (%1); what came before was counted without them</source>
        <translation>andere Definitionen (%1); was vorher kam, wurde ohne sie gezählt</translation>
    </message>
    <message>
        <source>stepped back; counts and statistics begin there</source>
        <translation>einen Schritt zurück; Zählung und Statistik beginnen dort</translation>
    </message>
    <message>
        <source>jumped to %1; counts and statistics begin there</source>
        <translation>zu %1 gesprungen; Zählung und Statistik beginnen dort</translation>
    </message>
    <message>
        <source>jumped to another place; counts and statistics begin there</source>
        <translation>an eine andere Stelle gesprungen; Zählung und Statistik beginnen dort</translation>
    </message>
    <message>
        <source>read again from the beginning</source>
        <translation>noch einmal von vorn gelesen</translation>
    </message>
    <message>
        <source>a datagram was dropped by the system: they came faster than they could be taken</source>
        <translation>das System hat ein Datagramm verworfen: sie kamen schneller, als sie abgeholt werden konnten</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Try without a device</source>
        <translation>Ohne Gerät ausprobieren</translation>
    </message>
    <message>
        <source>Drop recordings, folders of recordings or definitions here</source>
        <translation>Aufzeichnungen, Ordner von Aufzeichnungen oder Definitionen hierher ziehen</translation>
    </message>
    <message>
        <source>Start page</source>
        <translation>Startseite</translation>
    </message>
    <message>
        <source>Recent recordings</source>
        <translation>Letzte Aufzeichnungen</translation>
    </message>
    <message>
        <source>Recent connections</source>
        <translation>Letzte Verbindungen</translation>
    </message>
    <message>
        <source>Recent</source>
        <translation>Zuletzt</translation>
    </message>
    <message>
        <source>What you open is found here again.</source>
        <translation>Was Sie öffnen, findet sich hier wieder.</translation>
    </message>
</context>
<context>
    <name>StatisticsFilter</name>
    <message>
        <source>How often and how regularly messages come is told here once some were received.</source>
        <translation>Wie oft und wie regelmäßig Nachrichten kommen, steht hier, sobald welche empfangen wurden.</translation>
    </message>
    <message>
        <source>No type and no sender is called so.</source>
        <translation>Kein Typ und kein Sender heißt so.</translation>
    </message>
</context>
<context>
    <name>StatisticsPanel</name>
    <message>
        <source>Message statistics</source>
        <translation>Nachrichtenstatistik</translation>
    </message>
    <message>
        <source>Save Statistics</source>
        <translation>Statistik speichern</translation>
    </message>
    <message>
        <source>Show &amp;Statistics</source>
        <translation>&amp;Statistik zeigen</translation>
    </message>
    <message>
        <source>Played</source>
        <translation>Abgespielt</translation>
    </message>
    <message>
        <source>What was played since the recording was opened, or since the last jump</source>
        <translation>Was seit dem Öffnen der Aufzeichnung oder dem letzten Sprung abgespielt wurde</translation>
    </message>
    <message>
        <source>What the statistics are about</source>
        <translation>Wovon die Statistik handelt</translation>
    </message>
    <message>
        <source>Message statistics of the whole recording</source>
        <translation>Statistik der Nachrichten der ganzen Aufzeichnung</translation>
    </message>
    <message>
        <source>Looking through the recording: %1 %</source>
        <translation>Die Aufzeichnung wird durchgesehen: %1 %</translation>
    </message>
    <message>
        <source>Whole Recording (%1 %)</source>
        <translation>Ganze Aufzeichnung (%1 %)</translation>
    </message>
    <message>
        <source>Whole Recording</source>
        <translation>Ganze Aufzeichnung</translation>
    </message>
    <message>
        <source>Save St&amp;atistics as CSV...</source>
        <translation>S&amp;tatistik als CSV speichern ...</translation>
    </message>
    <message>
        <source>Type or sender</source>
        <translation>Typ oder Sender</translation>
    </message>
    <message>
        <source>Show only the statistics of these types</source>
        <translation>Nur die Statistik dieser Typen zeigen</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>Last problem</source>
        <translation>Letztes Problem</translation>
    </message>
    <message>
        <source>%1 sources</source>
        <translation>%1 Quellen</translation>
    </message>
    <message>
        <source>Nothing is open</source>
        <translation>Nichts geöffnet</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 sources, %2 recorded</source>
        <translation>%1 Quellen, %2 mit Aufzeichnung</translation>
    </message>
    <message>
        <source>The views are brought up to date some times a second and show the newest message of each type. %1 were overtaken before that; all are counted.</source>
        <translation>Die Ansichten werden einige Male in der Sekunde aufgefrischt und zeigen die neueste Nachricht jedes Typs. %1 wurden davor überholt; gezählt sind alle.</translation>
    </message>
    <message>
        <source>&lt; 0.1 % lost</source>
        <translation>&lt; 0,1 % verloren</translation>
    </message>
    <message>
        <source>%1 % lost</source>
        <translation>%1 % verloren</translation>
    </message>
    <message>
        <source>%1 damaged</source>
        <translation>%1 beschädigt</translation>
    </message>
    <message>
        <source>Checksum failures: %1. Cut off: %2. None of them is shown as a message.</source>
        <translation>Prüfsummenfehler: %1. Abgeschnitten: %2. Nichts davon wird als Nachricht gezeigt.</translation>
    </message>
    <message>
        <source>1 message</source>
        <translation>1 Nachricht</translation>
    </message>
    <message>
        <source>%1 messages</source>
        <translation>%1 Nachrichten</translation>
    </message>
    <message>
        <source>%1   %2 /s   %3   %4/s</source>
        <comment>messages, their rate, bytes, their rate</comment>
        <translation>%1   %2 /s   %3   %4/s</translation>
    </message>
    <message>
        <source>Numbers that were skipped by those who number their messages: %1. It is a lower bound.</source>
        <translation>Nummern, die von denen übersprungen wurden, die ihre Nachrichten nummerieren: %1. Es ist eine untere Schranke.</translation>
    </message>
</context>
<context>
    <name>TimeLine</name>
    <message>
        <source>Time line of the recording</source>
        <translation>Zeitleiste der Aufzeichnung</translation>
    </message>
    <message>
        <source>How many messages come when, and where there are gaps, damage and events</source>
        <translation>Wie viele Nachrichten wann kommen, und wo es Lücken, Schäden und Ereignisse gibt</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>%1 UTC   %2</source>
        <translation>%1 UTC   %2</translation>
    </message>
    <message>
        <source>%1 messages/s</source>
        <translation>%1 Nachrichten/s</translation>
    </message>
    <message>
        <source>%1: %2 /s</source>
        <comment>type, rate</comment>
        <translation>%1: %2 /s</translation>
    </message>
    <message>
        <source>damaged: %1</source>
        <translation>beschädigt: %1</translation>
    </message>
    <message>
        <source>Looking through the recording: %1 %</source>
        <translation>Die Aufzeichnung wird durchgesehen: %1 %</translation>
    </message>
    <message>
        <source>gap of %1: %2 s</source>
        <translation>Lücke von %1: %2 s</translation>
    </message>
</context>
<context>
    <name>TreeActions</name>
    <message>
        <source>&amp;Copy Value</source>
        <translation>Wert &amp;kopieren</translation>
    </message>
    <message>
        <source>Copy &amp;Raw Value</source>
        <translation>&amp;Rohwert kopieren</translation>
    </message>
    <message>
        <source>Ctrl+Shift+C</source>
        <translation>Ctrl+Shift+C</translation>
    </message>
    <message>
        <source>Copy &amp;Path</source>
        <translation>&amp;Pfad kopieren</translation>
    </message>
    <message>
        <source>Ctrl+Alt+C</source>
        <translation>Ctrl+Alt+C</translation>
    </message>
    <message>
        <source>Copy as &amp;JSON</source>
        <translation>Als &amp;JSON kopieren</translation>
    </message>
    <message>
        <source>Ctrl+J</source>
        <translation>Ctrl+J</translation>
    </message>
    <message>
        <source>Pi&amp;n</source>
        <translation>A&amp;nheften</translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translation>Ctrl+D</translation>
    </message>
    <message>
        <source>Unpi&amp;n %1</source>
        <translation>%1 &amp;nicht mehr anheften</translation>
    </message>
    <message>
        <source>Pi&amp;n %1 to the Top</source>
        <translation>%1 oben a&amp;nheften</translation>
    </message>
    <message>
        <source>There is nothing to copy yet.</source>
        <translation>Es gibt noch nichts zu kopieren.</translation>
    </message>
    <message>
        <source>Copied: %1</source>
        <translation>Kopiert: %1</translation>
    </message>
</context>
<context>
    <name>TreeHint</name>
    <message>
        <source>Nothing matches what is searched for; Esc shows everything again.</source>
        <translation>Nichts entspricht der Suche; Esc zeigt wieder alles.</translation>
    </message>
    <message>
        <source>Open a recording (Ctrl+O), connect to a device (Ctrl+K), or drop a recording here.</source>
        <translation>Eine Aufzeichnung öffnen (Strg+O), mit einem Gerät verbinden (Strg+K) oder eine Aufzeichnung hier ablegen.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Waiting for messages from %1 ...</source>
        <translation>Warten auf Nachrichten von %1 ...</translation>
    </message>
    <message>
        <source>Looking through %1: %2 % are done. Close the source to cancel.</source>
        <translation>%1 wird durchgesehen: %2 % sind erledigt. Zum Abbrechen die Quelle schließen.</translation>
    </message>
    <message>
        <source>Tick a message type in the list to see its fields here, or add all of them (Ctrl+Shift+A).</source>
        <translation>Einen Nachrichtentyp in der Liste ankreuzen, um hier seine Felder zu sehen, oder alle hinzufügen (Strg+Umschalt+A).</translation>
    </message>
</context>
<context>
    <name>TreePanel</name>
    <message>
        <source>Message tree</source>
        <translation>Nachrichtenbaum</translation>
    </message>
    <message>
        <source>&amp;Add All Types</source>
        <translation>&amp;Alle Typen hinzufügen</translation>
    </message>
    <message>
        <source>Ctrl+Shift+A</source>
        <translation>Ctrl+Shift+A</translation>
    </message>
    <message>
        <source>&amp;Remove All Types</source>
        <translation>Alle Typen &amp;entfernen</translation>
    </message>
    <message>
        <source>&amp;Collapse All</source>
        <translation>Alles &amp;zuklappen</translation>
    </message>
    <message>
        <source>&amp;Expand All</source>
        <translation>Alles au&amp;fklappen</translation>
    </message>
    <message>
        <source>&amp;Virtual Fields</source>
        <translation>&amp;Virtuelle Felder</translation>
    </message>
    <message>
        <source>&amp;Primary Fields Only</source>
        <translation>Nur &amp;primäre Felder</translation>
    </message>
    <message>
        <source>&amp;Columns</source>
        <translation>&amp;Spalten</translation>
    </message>
    <message>
        <source>By &amp;Type</source>
        <translation>Nach &amp;Typ</translation>
    </message>
    <message>
        <source>A row for each type, with the newest message of whoever sent it</source>
        <translation>Eine Zeile je Typ, mit der neuesten Nachricht, von wem sie auch kam</translation>
    </message>
    <message>
        <source>By Type and S&amp;ender</source>
        <translation>Nach Typ und S&amp;ender</translation>
    </message>
    <message>
        <source>A row for each type of each sender</source>
        <translation>Eine Zeile je Typ und Sender</translation>
    </message>
    <message>
        <source>By &amp;Sender</source>
        <translation>Nach &amp;Sender</translation>
    </message>
    <message>
        <source>A row for each sender, with its types below</source>
        <translation>Eine Zeile je Sender, darunter seine Typen</translation>
    </message>
    <message>
        <source>&amp;Rows</source>
        <translation>&amp;Zeilen</translation>
    </message>
    <message>
        <source>Un&amp;pin</source>
        <translation>Nicht mehr &amp;anheften</translation>
    </message>
    <message>
        <source>&amp;Pin to the Top</source>
        <translation>Oben &amp;anheften</translation>
    </message>
    <message>
        <source>Hide &amp;Unset Fields</source>
        <translation>&amp;Leere Felder ausblenden</translation>
    </message>
    <message>
        <source>Add New T&amp;ypes Automatically</source>
        <translation>Neue T&amp;ypen automatisch hinzufügen</translation>
    </message>
</context>
<context>
    <name>TypePanel</name>
    <message>
        <source>Message types</source>
        <translation>Nachrichtentypen</translation>
    </message>
    <message>
        <source>Message types appear here as they are received.</source>
        <translation>Nachrichtentypen erscheinen hier, sobald sie empfangen werden.</translation>
    </message>
    <message>
        <source>Type or sender</source>
        <translation>Typ oder Sender</translation>
    </message>
    <message>
        <source>Show only these types</source>
        <translation>Nur diese Typen zeigen</translation>
    </message>
    <message>
        <source>By Sender</source>
        <translation>Nach Sender</translation>
    </message>
    <message>
        <source>A row for each sender, with its types below</source>
        <translation>Eine Zeile je Sender, darunter seine Typen</translation>
    </message>
    <message>
        <source>No type and no sender is called so.</source>
        <translation>Kein Typ und kein Sender heißt so.</translation>
    </message>
    <message>
        <source>&amp;Take out of the Tree</source>
        <translation>Aus dem &amp;Baum nehmen</translation>
    </message>
    <message>
        <source>&amp;Show in the Tree</source>
        <translation>Im &amp;Baum zeigen</translation>
    </message>
    <message>
        <source>Show &amp;Only This in the Tree</source>
        <translation>&amp;Nur dies im Baum zeigen</translation>
    </message>
    <message>
        <source>&amp;Copy Name</source>
        <translation>Namen &amp;kopieren</translation>
    </message>
    <message>
        <source>Co&amp;lumns</source>
        <translation>S&amp;palten</translation>
    </message>
    <message>
        <source>Load &amp;Definitions...</source>
        <translation>&amp;Definitionen laden ...</translation>
    </message>
</context>
<context>
    <name>ValueSaver</name>
    <message>
        <source>Saving %1</source>
        <translation>%1 wird gespeichert</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 kann nicht geschrieben werden: %2</translation>
    </message>
</context>
<context>
    <name>Watch</name>
    <message>
        <source>&amp;Rename...</source>
        <translation>&amp;Umbenennen ...</translation>
    </message>
    <message>
        <source>Re&amp;move</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>Watch %1</source>
        <translation>Beobachtung %1</translation>
    </message>
    <message>
        <source>No loaded definition has this field.</source>
        <translation>Keine geladene Definition hat dieses Feld.</translation>
    </message>
    <message>
        <source>More than one field has this name.</source>
        <translation>Mehr als ein Feld hat diesen Namen.</translation>
    </message>
    <message>
        <source>Rename Watch</source>
        <translation>Beobachtung umbenennen</translation>
    </message>
    <message>
        <source>&amp;Name of %1:</source>
        <translation>&amp;Name von %1:</translation>
    </message>
    <message>
        <source>Sender: %1</source>
        <translation>Sender: %1</translation>
    </message>
</context>
<context>
    <name>WatchBar</name>
    <message>
        <source>&amp;Watch</source>
        <translation>&amp;Beobachten</translation>
    </message>
    <message>
        <source>Ctrl+Shift+W</source>
        <translation>Ctrl+Shift+W</translation>
    </message>
    <message>
        <source>Watched values</source>
        <translation>Beobachtete Werte</translation>
    </message>
</context>
<context>
    <name>WatchEditor</name>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Message type</source>
        <translation>Nachrichtentyp</translation>
    </message>
    <message>
        <source>Field</source>
        <translation>Feld</translation>
    </message>
    <message>
        <source>Watch:</source>
        <translation>Beobachten:</translation>
    </message>
    <message>
        <source>Path expression</source>
        <translation>Pfadausdruck</translation>
    </message>
    <message>
        <source>A path such as */ATTITUDE/roll; Return takes it</source>
        <translation>Ein Pfad wie */ATTITUDE/roll; die Eingabetaste übernimmt ihn</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Keep this value in sight below</source>
        <translation>Diesen Wert unten im Blick behalten</translation>
    </message>
    <message>
        <source>Choose a field</source>
        <translation>Feld wählen</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>P&amp;in</source>
        <translation>Anhe&amp;ften</translation>
    </message>
    <message>
        <source>1 field</source>
        <translation>1 Feld</translation>
    </message>
    <message>
        <source>%1 fields</source>
        <translation>%1 Felder</translation>
    </message>
</context>
<context>
    <name>WatchedField</name>
    <message>
        <source>Hidden data</source>
        <translation>Verborgene Daten</translation>
    </message>
</context>
</TS>
