<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Annotations</name>
    <message>
        <source>cannot be read: not a file</source>
        <translation>kann nicht gelesen werden: keine Datei</translation>
    </message>
    <message>
        <source>cannot be read: %1</source>
        <translation>kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>cannot be read: larger than %1 bytes</source>
        <translation>kann nicht gelesen werden: größer als %1 Bytes</translation>
    </message>
    <message>
        <source>malformed JSON: %1</source>
        <translation>fehlerhaftes JSON: %1</translation>
    </message>
    <message>
        <source>the key &quot;%1&quot; is there twice</source>
        <translation>der Schlüssel „%1“ ist doppelt vorhanden</translation>
    </message>
    <message>
        <source>unknown message type</source>
        <translation>unbekannter Nachrichtentyp</translation>
    </message>
    <message>
        <source>not an object</source>
        <translation>kein Objekt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not an object</source>
        <translation>„%1“ ist kein Objekt</translation>
    </message>
    <message>
        <source>unknown key &quot;%1&quot;</source>
        <translation>unbekannter Schlüssel „%1“</translation>
    </message>
    <message>
        <source>no message type has that field</source>
        <translation>kein Nachrichtentyp hat dieses Feld</translation>
    </message>
    <message>
        <source>unknown field</source>
        <translation>unbekanntes Feld</translation>
    </message>
    <message>
        <source>the role &quot;%1&quot; is neither &quot;primary&quot; nor &quot;secondary&quot;</source>
        <translation>die Rolle „%1“ ist weder „primary“ noch „secondary“</translation>
    </message>
    <message>
        <source>&quot;confidential&quot; is neither true nor false</source>
        <translation>„confidential“ ist weder true noch false</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not an array</source>
        <translation>„%1“ ist kein Array</translation>
    </message>
    <message>
        <source>a virtual field is not an object</source>
        <translation>ein virtuelles Feld ist kein Objekt</translation>
    </message>
    <message>
        <source>a virtual field without a name</source>
        <translation>ein virtuelles Feld ohne Namen</translation>
    </message>
    <message>
        <source>&quot;decimals&quot; is not a number from 0 to %1</source>
        <translation>„decimals“ ist keine Zahl von 0 bis %1</translation>
    </message>
    <message>
        <source>there already is a field of that name</source>
        <translation>es gibt bereits ein Feld dieses Namens</translation>
    </message>
    <message>
        <source>a virtual field without an expression</source>
        <translation>ein virtuelles Feld ohne Ausdruck</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a text</source>
        <translation>„%1“ ist kein Text</translation>
    </message>
    <message>
        <source>the expression cannot be understood: %1</source>
        <translation>der Ausdruck ist nicht verständlich: %1</translation>
    </message>
    <message>
        <source>the expression names &quot;%1&quot;, which is no field</source>
        <translation>der Ausdruck nennt „%1“, was kein Feld ist</translation>
    </message>
    <message>
        <source>the expression names &quot;%1&quot;, which has several values: name one as in &quot;%1_0&quot;</source>
        <translation>der Ausdruck nennt „%1“, das mehrere Werte hat: einen davon wie in „%1_0“ nennen</translation>
    </message>
    <message>
        <source>the expression names &quot;%1&quot;, which is no sub-message</source>
        <translation>der Ausdruck nennt „%1“, was keine Unternachricht ist</translation>
    </message>
    <message>
        <source>the expression names &quot;%1&quot;, which is no number</source>
        <translation>der Ausdruck nennt „%1“, was keine Zahl ist</translation>
    </message>
    <message>
        <source> (character %1)</source>
        <translation> (Zeichen %1)</translation>
    </message>
</context>
<context>
    <name>ByteInput</name>
    <message>
        <source>standard input</source>
        <translation>Standardeingabe</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>no answer within %1 s</source>
        <translation>keine Antwort innerhalb von %1 s</translation>
    </message>
    <message>
        <source>the port is in use by another program</source>
        <translation>der Port wird von einem anderen Programm benutzt</translation>
    </message>
    <message>
        <source>it has no other places to go to</source>
        <translation>darin kann nicht gesprungen werden</translation>
    </message>
    <message>
        <source>there is no such serial port</source>
        <translation>diese serielle Schnittstelle gibt es nicht</translation>
    </message>
    <message>
        <source>another program uses it</source>
        <translation>ein anderes Programm benutzt sie</translation>
    </message>
    <message>
        <source>permission denied; the group &quot;%1&quot; may open it</source>
        <translation>keine Berechtigung; die Gruppe „%1“ darf sie öffnen</translation>
    </message>
    <message>
        <source>this is no serial port</source>
        <translation>das ist keine serielle Schnittstelle</translation>
    </message>
    <message>
        <source>the device is gone</source>
        <translation>das Gerät ist nicht mehr da</translation>
    </message>
</context>
<context>
    <name>Container</name>
    <message>
        <source>a schema and a type must be named to read messages of Protocol Buffers</source>
        <translation>um Protocol-Buffers-Nachrichten zu lesen, müssen ein Schema und ein Typ genannt werden</translation>
    </message>
    <message>
        <source>the schema has several types; one of them must be named</source>
        <translation>das Schema hat mehrere Typen; einer davon muss genannt werden</translation>
    </message>
    <message>
        <source>messages of Protocol Buffers with lengths before them, whose type must be named</source>
        <translation>Protocol-Buffers-Nachrichten mit Längen davor, deren Typ genannt werden muss</translation>
    </message>
    <message>
        <source>MAVLink frames</source>
        <translation>MAVLink-Rahmen</translation>
    </message>
    <message>
        <source>MCAP recordings</source>
        <translation>MCAP-Aufzeichnungen</translation>
    </message>
    <message>
        <source>the input is empty</source>
        <translation>die Eingabe ist leer</translation>
    </message>
    <message>
        <source>not recognised: it begins with %1; what can be read: %2</source>
        <translation>nicht erkannt: es beginnt mit %1; gelesen werden kann: %2</translation>
    </message>
    <message>
        <source>MAVLink frames with times before them</source>
        <translation>MAVLink-Rahmen mit Zeiten davor</translation>
    </message>
    <message>
        <source>an MCAP recording says itself of what types its messages are; none can be named</source>
        <translation>eine MCAP-Aufzeichnung sagt selbst, von welchen Typen ihre Nachrichten sind; es kann keiner genannt werden</translation>
    </message>
    <message>
        <source>messages of a broker with their topics</source>
        <translation>Nachrichten eines Vermittlers mit ihren Themen</translation>
    </message>
</context>
<context>
    <name>CorvelEvent</name>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>CRC error</source>
        <translation>CRC-Fehler</translation>
    </message>
    <message>
        <source>Unknown message</source>
        <translation>Unbekannte Nachricht</translation>
    </message>
    <message>
        <source>Truncated message</source>
        <translation>Abgeschnittene Nachricht</translation>
    </message>
    <message>
        <source>Resynchronisation</source>
        <translation>Neusynchronisierung</translation>
    </message>
    <message>
        <source>Unsupported message</source>
        <translation>Nicht unterstützte Nachricht</translation>
    </message>
    <message>
        <source>Clock jump</source>
        <translation>Zeitsprung</translation>
    </message>
    <message>
        <source>Definition problem</source>
        <translation>Fehler in einer Definition</translation>
    </message>
    <message>
        <source>Other</source>
        <translation>Sonstiges</translation>
    </message>
</context>
<context>
    <name>Definitions</name>
    <message>
        <source>cannot be read: not a file</source>
        <translation>kann nicht gelesen werden: keine Datei</translation>
    </message>
    <message>
        <source>cannot be read: %1</source>
        <translation>kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>these are no definitions that can be read: %1</source>
        <translation>das sind keine Definitionen, die gelesen werden können: %1</translation>
    </message>
    <message>
        <source>FILTER=TYPE is expected</source>
        <translation>FILTER=TYP wird erwartet</translation>
    </message>
    <message>
        <source>there is no type &quot;%1&quot;</source>
        <translation>einen Typ „%1“ gibt es nicht</translation>
    </message>
</context>
<context>
    <name>Encoding</name>
    <message>
        <source>MAVLink dialect</source>
        <translation>MAVLink-Dialekt</translation>
    </message>
    <message>
        <source>Protocol Buffers schema</source>
        <translation>Schema von Protocol Buffers</translation>
    </message>
    <message>
        <source>JSON schema</source>
        <translation>JSON-Schema</translation>
    </message>
    <message>
        <source>ROS 2 message definition</source>
        <translation>Nachrichtendefinition von ROS 2</translation>
    </message>
    <message>
        <source>ROS 1 message definition</source>
        <translation>Nachrichtendefinition von ROS 1</translation>
    </message>
    <message>
        <source>no file of definitions has a type &quot;%1&quot;</source>
        <translation>keine Definitionsdatei hat einen Typ „%1“</translation>
    </message>
    <message>
        <source>Sparkplug births</source>
        <translation>Sparkplug-Geburten</translation>
    </message>
</context>
<context>
    <name>Envelopes</name>
    <message>
        <source>(other topics)</source>
        <translation>(andere Themen)</translation>
    </message>
    <message>
        <source>cleared</source>
        <translation>gelöscht</translation>
    </message>
    <message>
        <source>%1 (%2, not decodable)</source>
        <translation>%1 (%2, nicht lesbar)</translation>
    </message>
    <message>
        <source>there are more than %1 topics: the %2 oldest are forgotten</source>
        <translation>es gibt mehr als %1 Themen: die %2 ältesten werden vergessen</translation>
    </message>
    <message>
        <source>unknown content</source>
        <translation>unbekannter Inhalt</translation>
    </message>
    <message>
        <source>nothing says what it is; it begins with %1</source>
        <translation>nichts sagt, was es ist; es beginnt mit %1</translation>
    </message>
    <message>
        <source>its schema, %1, did not come</source>
        <translation>das Schema dazu, %1, kam nicht</translation>
    </message>
    <message>
        <source>nothing says of what type it is</source>
        <translation>nichts sagt, von welchem Typ es ist</translation>
    </message>
    <message>
        <source>the schema %1 cannot be used: %2</source>
        <translation>das Schema %1 kann nicht verwendet werden: %2</translation>
    </message>
    <message>
        <source>there are too many nodes and devices</source>
        <translation>es gibt zu viele Knoten und Geräte</translation>
    </message>
    <message>
        <source>it is no payload of Sparkplug B</source>
        <translation>es ist kein Inhalt von Sparkplug B</translation>
    </message>
    <message>
        <source>it is a command</source>
        <translation>es ist ein Befehl</translation>
    </message>
    <message>
        <source>no birth yet</source>
        <translation>noch keine Geburt</translation>
    </message>
    <message>
        <source>the device %1 has ended</source>
        <translation>das Gerät %1 hat aufgehört</translation>
    </message>
    <message>
        <source>its connection has ended</source>
        <translation>seine Verbindung ist zu Ende</translation>
    </message>
    <message>
        <source>it is compressed by &quot;%1&quot;; what can be read is GZIP and DEFLATE</source>
        <translation>mit &quot;%1&quot; komprimiert; gelesen werden können GZIP und DEFLATE</translation>
    </message>
    <message>
        <source>decompressed it has more than %1 MiB</source>
        <translation>entpackt hat es mehr als %1 MiB</translation>
    </message>
    <message>
        <source>it cannot be decompressed</source>
        <translation>es lässt sich nicht entpacken</translation>
    </message>
</context>
<context>
    <name>EventLog</name>
    <message>
        <source>The log is full with %1 entries: this event and all later ones are counted, but not entered until the log is cleared</source>
        <translation>Das Protokoll ist mit %1 Einträgen voll: dieses und alle weiteren Ereignisse werden gezählt, aber erst wieder eingetragen, wenn das Protokoll geleert wurde</translation>
    </message>
    <message>
        <source>%1, various</source>
        <translation>%1, verschiedene</translation>
    </message>
    <message>
        <source>%1 x %2</source>
        <translation>%1 x %2</translation>
    </message>
    <message>
        <source>,</source>
        <comment>between groups of three digits</comment>
        <translation>.</translation>
    </message>
    <message>
        <source> (%1 in all)</source>
        <translation> (insgesamt %1)</translation>
    </message>
</context>
<context>
    <name>EventLogTableWidget</name>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Meldung</translation>
    </message>
    <message>
        <source>N/A</source>
        <translation>k. A.</translation>
    </message>
</context>
<context>
    <name>FieldInfo</name>
    <message>
        <source>not available</source>
        <translation>nicht verfügbar</translation>
    </message>
    <message>
        <source>(1 byte)</source>
        <translation>(1 Byte)</translation>
    </message>
    <message>
        <source>(%1 bytes)</source>
        <translation>(%1 Bytes)</translation>
    </message>
</context>
<context>
    <name>FieldValueLabel</name>
    <message>
        <source>N/A</source>
        <translation>k. A.</translation>
    </message>
    <message>
        <source> [...]</source>
        <translation> [...]</translation>
    </message>
</context>
<context>
    <name>FolderInput</name>
    <message>
        <source>cancelled</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>%1 is empty</source>
        <translation>%1 ist leer</translation>
    </message>
    <message>
        <source>%1 is damaged (%2); what comes before is read</source>
        <translation>%1 ist beschädigt (%2); gelesen wird, was davor kommt</translation>
    </message>
    <message>
        <source>%1 cannot be decompressed into %2: %3</source>
        <translation>%1 kann nicht nach %2 entpackt werden: %3</translation>
    </message>
    <message>
        <source>%1 breaks off; what there is is read</source>
        <translation>%1 bricht ab; gelesen wird, was da ist</translation>
    </message>
    <message>
        <source>%1 became shorter</source>
        <translation>%1 ist kürzer geworden</translation>
    </message>
</context>
<context>
    <name>Formula</name>
    <message>
        <source>&quot;%1&quot; cannot stand here</source>
        <translation>„%1“ kann hier nicht stehen</translation>
    </message>
    <message>
        <source>a comparison is written &quot;==&quot;</source>
        <translation>ein Vergleich wird „==“ geschrieben</translation>
    </message>
    <message>
        <source>there is no function &quot;%1&quot;</source>
        <translation>es gibt keine Funktion „%1“</translation>
    </message>
    <message>
        <source>it has several results</source>
        <translation>er hat mehrere Ergebnisse</translation>
    </message>
    <message>
        <source>something is missing at the end</source>
        <translation>am Ende fehlt etwas</translation>
    </message>
    <message>
        <source>a parenthesis is missing</source>
        <translation>eine Klammer fehlt</translation>
    </message>
    <message>
        <source>a function has too many arguments</source>
        <translation>eine Funktion hat zu viele Argumente</translation>
    </message>
    <message>
        <source>a function has too few arguments</source>
        <translation>eine Funktion hat zu wenige Argumente</translation>
    </message>
    <message>
        <source>a &quot;?&quot; has no &quot;:&quot;</source>
        <translation>zu einem „?“ fehlt der „:“</translation>
    </message>
</context>
<context>
    <name>FoxgloveInput</name>
    <message>
        <source>cancelled</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>it does not speak the Foxglove protocol: no greeting within %1 s</source>
        <translation>spricht das Foxglove-Protokoll nicht: keine Begrüßung innerhalb von %1 s</translation>
    </message>
    <message>
        <source>no answer within %1 s</source>
        <translation>keine Antwort innerhalb von %1 s</translation>
    </message>
    <message>
        <source>it does not speak the Foxglove protocol</source>
        <translation>spricht das Foxglove-Protokoll nicht</translation>
    </message>
</context>
<context>
    <name>InputAddress</name>
    <message>
        <source>no input is named</source>
        <translation>keine Eingabe genannt</translation>
    </message>
    <message>
        <source>the bracket of the IPv6 address is not closed</source>
        <translation>die Klammer der IPv6-Adresse ist nicht geschlossen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no IPv6 address</source>
        <translation>„%1“ ist keine IPv6-Adresse</translation>
    </message>
    <message>
        <source>an IPv6 address stands in brackets</source>
        <translation>eine IPv6-Adresse steht in Klammern</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not expected behind the host</source>
        <translation>„%1“ ist hinter dem Host nicht zulässig</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no parameter; NAME=VALUE is one</source>
        <translation>„%1“ ist kein Parameter; ein Parameter ist etwa NAME=WERT</translation>
    </message>
    <message>
        <source>there is no parameter &quot;%1&quot;; there is: %2</source>
        <translation>den Parameter „%1“ gibt es nicht; es gibt: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is told twice</source>
        <translation>„%1“ ist doppelt angegeben</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no port; ports are 1 to 65535</source>
        <translation>„%1“ ist kein Port; Ports gehen von 1 bis 65535</translation>
    </message>
    <message>
        <source>this is no address; ws://HOST:PORT is one</source>
        <translation>keine Adresse; eine Adresse ist etwa ws://HOST:PORT</translation>
    </message>
    <message>
        <source>no host is named</source>
        <translation>kein Host angegeben</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no address to listen on; it is written in numbers</source>
        <translation>„%1“ ist keine Empfangsadresse; sie wird in Zahlen geschrieben</translation>
    </message>
    <message>
        <source>no serial port is named</source>
        <translation>keine serielle Schnittstelle angegeben</translation>
    </message>
    <message>
        <source>baud is &quot;%1&quot;; it is a number such as 57600</source>
        <translation>baud ist „%1“; es muss eine Zahl wie 57600 sein</translation>
    </message>
    <message>
        <source>format is &quot;%1&quot;; it has data bits, parity (N, E, O, M or S) and stop bits, such as 8N1</source>
        <translation>format ist „%1“; es besteht aus Datenbits, Parität (N, E, O, M oder S) und Stoppbits, etwa 8N1</translation>
    </message>
    <message>
        <source>flow is &quot;%1&quot;; it is none, hardware or software</source>
        <translation>flow ist „%1“; möglich sind none, hardware und software</translation>
    </message>
    <message>
        <source>a password stands in no address, which is shown and logged; a file, the environment or the dialog has it</source>
        <translation>in einer Adresse steht kein Passwort, denn sie wird gezeigt und protokolliert; eine Datei, die Umgebung oder der Dialog hat es</translation>
    </message>
    <message>
        <source>there are more than %1 filters</source>
        <translation>es sind mehr als %1 Filter</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a subscription that is shared: it would take messages from others</source>
        <translation>„%1“ ist ein geteiltes Abonnement: es nähme anderen Nachrichten weg</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no filter of topics; &quot;fleet/+/state&quot; and &quot;fleet/#&quot; are some</source>
        <translation>„%1“ ist kein Filter für Themen; „fleet/+/state“ und „fleet/#“ sind welche</translation>
    </message>
    <message>
        <source>a certificate (cert) and its key (key) belong together</source>
        <translation>ein Zertifikat (cert) und sein Schlüssel (key) gehören zusammen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no server; HOST:PORT is one</source>
        <translation>„%1“ ist kein Server; HOST:PORT ist einer</translation>
    </message>
    <message>
        <source>there are more than %1 servers</source>
        <translation>es sind mehr als %1 Server</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no subject; &quot;fleet.*.state&quot; and &quot;fleet.&gt;&quot; are some</source>
        <translation>„%1“ ist kein Subject; „fleet.*.state“ und „fleet.&gt;“ sind welche</translation>
    </message>
    <message>
        <source>tls is &quot;%1&quot;; it is auto or on</source>
        <translation>tls ist „%1“; es ist auto oder on</translation>
    </message>
    <message>
        <source>no subject is named; &quot;&gt;&quot; stands for all</source>
        <translation>kein Subject ist genannt; „&gt;“ steht für alle</translation>
    </message>
    <message>
        <source>there are more than %1 subjects</source>
        <translation>es sind mehr als %1 Subjects</translation>
    </message>
    <message>
        <source>no stream is named; jetstream://HOST/STREAM names one</source>
        <translation>kein Stream ist genannt; jetstream://HOST/STREAM nennt einen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no name of a stream</source>
        <translation>„%1“ ist kein Name eines Streams</translation>
    </message>
    <message>
        <source>end is &quot;%1&quot;; it is follow or stop</source>
        <translation>end ist „%1“; es ist follow oder stop</translation>
    </message>
</context>
<context>
    <name>InputKind</name>
    <message>
        <source>Fil&amp;e:</source>
        <translation>Dat&amp;ei:</translation>
    </message>
    <message>
        <source>The path of the file</source>
        <translation>Der Pfad der Datei</translation>
    </message>
    <message>
        <source>Standard input</source>
        <translation>Standardeingabe</translation>
    </message>
    <message>
        <source>&amp;Address:</source>
        <translation>A&amp;dresse:</translation>
    </message>
    <message>
        <source>The address of the server; wss:// is encrypted</source>
        <translation>Die Adresse des Servers; wss:// ist verschlüsselt</translation>
    </message>
    <message>
        <source>WebSocket: a Foxglove server</source>
        <translation>WebSocket: ein Foxglove-Server</translation>
    </message>
    <message>
        <source>&amp;Host:</source>
        <translation>&amp;Host:</translation>
    </message>
    <message>
        <source>Name or address of the server</source>
        <translation>Name oder Adresse des Servers</translation>
    </message>
    <message>
        <source>&amp;Port:</source>
        <translation>&amp;Port:</translation>
    </message>
    <message>
        <source>The number of the port</source>
        <translation>Die Nummer des Ports</translation>
    </message>
    <message>
        <source>TCP: connect to a server</source>
        <translation>TCP: mit einem Server verbinden</translation>
    </message>
    <message>
        <source>&amp;Address to listen on:</source>
        <translation>Empfangsa&amp;dresse:</translation>
    </message>
    <message>
        <source>An address of this computer; 0.0.0.0 is all of them</source>
        <translation>Eine Adresse dieses Rechners; 0.0.0.0 sind alle</translation>
    </message>
    <message>
        <source>UDP: listen for datagrams</source>
        <translation>UDP: Datagramme empfangen</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>hardware (RTS/CTS)</source>
        <translation>Hardware (RTS/CTS)</translation>
    </message>
    <message>
        <source>software (XON/XOFF)</source>
        <translation>Software (XON/XOFF)</translation>
    </message>
    <message>
        <source>The serial port, such as /dev/ttyUSB0</source>
        <translation>Die serielle Schnittstelle, etwa /dev/ttyUSB0</translation>
    </message>
    <message>
        <source>&amp;Baud rate:</source>
        <translation>&amp;Baudrate:</translation>
    </message>
    <message>
        <source>Bits a second</source>
        <translation>Bits pro Sekunde</translation>
    </message>
    <message>
        <source>Data for&amp;mat:</source>
        <translation>Daten&amp;format:</translation>
    </message>
    <message>
        <source>Data bits, parity (none, even, odd, mark, space) and stop bits</source>
        <translation>Datenbits, Parität (None = keine, Even = gerade, Odd = ungerade, Mark, Space) und Stoppbits</translation>
    </message>
    <message>
        <source>F&amp;low control:</source>
        <translation>F&amp;lusssteuerung:</translation>
    </message>
    <message>
        <source>How this computer asks the device to wait</source>
        <translation>Wie dieser Rechner das Gerät warten lässt</translation>
    </message>
    <message>
        <source>Serial port</source>
        <translation>Serielle Schnittstelle</translation>
    </message>
    <message>
        <source>A recording, a folder of one, or a device file</source>
        <translation>Eine Aufzeichnung, der Ordner einer solchen oder eine Gerätedatei</translation>
    </message>
    <message>
        <source>&amp;Topics:</source>
        <translation>&amp;Themen:</translation>
    </message>
    <message>
        <source>Filters with commas between them: &quot;+&quot; stands for one level, &quot;#&quot; for the rest</source>
        <translation>Filter mit Kommas dazwischen: „+“ steht für eine Ebene, „#“ für den Rest</translation>
    </message>
    <message>
        <source>&amp;User:</source>
        <translation>Ben&amp;utzer:</translation>
    </message>
    <message>
        <source>Pass&amp;word:</source>
        <translation>Pass&amp;wort:</translation>
    </message>
    <message>
        <source>It is not kept; empty takes it from the file, or from the environment variable CORVEL_MQTT_PASSWORD</source>
        <translation>Es wird nicht aufbewahrt; leer wird es aus der Datei genommen oder aus der Umgebungsvariable CORVEL_MQTT_PASSWORD</translation>
    </message>
    <message>
        <source>Password f&amp;ile:</source>
        <translation>Passwortdate&amp;i:</translation>
    </message>
    <message>
        <source>A file whose first line is the password</source>
        <translation>Eine Datei, deren erste Zeile das Passwort ist</translation>
    </message>
    <message>
        <source>T&amp;rusted:</source>
        <translation>Ve&amp;rtraut:</translation>
    </message>
    <message>
        <source>A file of certificates that are trusted; empty for those of the system</source>
        <translation>Eine Datei mit Zertifikaten, denen vertraut wird; leer für die des Systems</translation>
    </message>
    <message>
        <source>&amp;Certificate:</source>
        <translation>&amp;Zertifikat:</translation>
    </message>
    <message>
        <source>A file with one&apos;s own certificate, if the server asks for it</source>
        <translation>Eine Datei mit dem eigenen Zertifikat, wenn der Server danach fragt</translation>
    </message>
    <message>
        <source>K&amp;ey:</source>
        <translation>Sc&amp;hlüssel:</translation>
    </message>
    <message>
        <source>The file of the certificate&apos;s key, without a password</source>
        <translation>Die Datei mit dem Schlüssel des Zertifikats, ohne Passwort</translation>
    </message>
    <message>
        <source>MQTT: topics of a broker</source>
        <translation>MQTT: Themen eines Vermittlers</translation>
    </message>
    <message>
        <source>MQTT, encrypted: topics of a broker</source>
        <translation>MQTT, verschlüsselt: Themen eines Vermittlers</translation>
    </message>
    <message>
        <source>if the server wants it</source>
        <translation>wenn der Server es will</translation>
    </message>
    <message>
        <source>always</source>
        <translation>immer</translation>
    </message>
    <message>
        <source>go on with what comes</source>
        <translation>mit dem weiter, was kommt</translation>
    </message>
    <message>
        <source>stop</source>
        <translation>anhalten</translation>
    </message>
    <message>
        <source>Other &amp;servers:</source>
        <translation>Andere &amp;Server:</translation>
    </message>
    <message>
        <source>HOST:PORT of others of a cluster, with commas between them, for when the first is away; those that a server tells of need not be named</source>
        <translation>HOST:PORT von anderen eines Clusters, mit Kommas dazwischen, falls der erste fehlt; die, von denen ein Server erzählt, müssen nicht genannt werden</translation>
    </message>
    <message>
        <source>The user&apos;s, or without a user a token. It is not kept; empty takes it from the file, or from the environment variable CORVEL_NATS_PASSWORD</source>
        <translation>Das des Benutzers, oder ohne Benutzer ein Token. Es wird nicht aufbewahrt; leer kommt es aus der Datei oder der Umgebungsvariablen CORVEL_NATS_PASSWORD</translation>
    </message>
    <message>
        <source>Cre&amp;dentials:</source>
        <translation>Zugangs&amp;daten:</translation>
    </message>
    <message>
        <source>A file of credentials, with a user&apos;s token and key</source>
        <translation>Eine Datei mit Zugangsdaten: Token und Schlüssel eines Benutzers</translation>
    </message>
    <message>
        <source>Encr&amp;ypted:</source>
        <translation>&amp;Verschlüsselt:</translation>
    </message>
    <message>
        <source>Whether the connection is encrypted</source>
        <translation>Ob die Verbindung verschlüsselt ist</translation>
    </message>
    <message>
        <source>Sub&amp;jects:</source>
        <translation>Sub&amp;jects:</translation>
    </message>
    <message>
        <source>Subjects with commas between them: &quot;*&quot; stands for one level, &quot;&gt;&quot; for the rest</source>
        <translation>Subjects mit Kommas dazwischen: „*“ steht für eine Ebene, „&gt;“ für den Rest</translation>
    </message>
    <message>
        <source>The name of a stream; behind a slash there can be a subject: &quot;*&quot; stands for one level, &quot;&gt;&quot; for the rest</source>
        <translation>Der Name eines Streams; hinter einem Schrägstrich kann ein Subject stehen: „*“ steht für eine Ebene, „&gt;“ für den Rest</translation>
    </message>
    <message>
        <source>What becomes of it when everything was read that is stored</source>
        <translation>Was geschieht, wenn alles gelesen ist, was gespeichert ist</translation>
    </message>
    <message>
        <source>NATS: subjects of a server</source>
        <translation>NATS: Subjects eines Servers</translation>
    </message>
    <message>
        <source>NATS JetStream: a stored stream</source>
        <translation>NATS JetStream: ein gespeicherter Stream</translation>
    </message>
    <message>
        <source>Strea&amp;m:</source>
        <translation>Strea&amp;m:</translation>
    </message>
    <message>
        <source>&amp;At the end:</source>
        <translation>&amp;Am Ende:</translation>
    </message>
</context>
<context>
    <name>JsonCheck</name>
    <message>
        <source>%1 bytes follow the end; they are not decoded</source>
        <translation>nach dem Ende folgen %1 Bytes; sie werden nicht dekodiert</translation>
    </message>
    <message>
        <source>there is nothing</source>
        <translation>da ist nichts</translation>
    </message>
    <message>
        <source>it ends before what is open was closed</source>
        <translation>endet, bevor geschlossen ist, was offen ist</translation>
    </message>
    <message>
        <source>a comma or the end of what is open was expected; the rest is not decoded</source>
        <translation>ein Komma oder das Ende dessen, was offen ist, wurde erwartet; der Rest wird nicht dekodiert</translation>
    </message>
    <message>
        <source>the name of a member was expected; the rest is not decoded</source>
        <translation>der Name eines Elements wurde erwartet; der Rest wird nicht dekodiert</translation>
    </message>
    <message>
        <source>a name without a value; the rest is not decoded</source>
        <translation>ein Name ohne Wert; der Rest wird nicht dekodiert</translation>
    </message>
    <message>
        <source>the name is there more than once; the last value is shown</source>
        <translation>der Name kommt mehrmals vor; gezeigt wird der letzte Wert</translation>
    </message>
    <message>
        <source>nested more than %1 deep; it is shown as it came</source>
        <translation>mehr als %1 tief verschachtelt; wird gezeigt, wie es kam</translation>
    </message>
    <message>
        <source>a value was expected; the rest is not decoded</source>
        <translation>ein Wert wurde erwartet; der Rest wird nicht dekodiert</translation>
    </message>
    <message>
        <source>no value of JSON, shown as it is</source>
        <translation>kein Wert von JSON, gezeigt, wie er ist</translation>
    </message>
    <message>
        <source>a text does not end; it is not decoded</source>
        <translation>ein Text endet nicht; er wird nicht dekodiert</translation>
    </message>
    <message>
        <source>not valid UTF-8; wrong bytes are shown as question marks</source>
        <translation>kein gültiges UTF-8; falsche Bytes werden als Fragezeichen gezeigt</translation>
    </message>
    <message>
        <source>a control character without an escape</source>
        <translation>ein Steuerzeichen ohne Escape-Sequenz</translation>
    </message>
    <message>
        <source>byte %1: </source>
        <translation>Byte %1: </translation>
    </message>
    <message>
        <source>%1 at byte %2: </source>
        <translation>%1 bei Byte %2: </translation>
    </message>
    <message>
        <source>and more</source>
        <translation>und weitere</translation>
    </message>
    <message>
        <source>half of a surrogate pair, shown as U+FFFD: %1</source>
        <translation>Hälfte eines Surrogatpaars, gezeigt als U+FFFD: %1</translation>
    </message>
    <message>
        <source>no escape of JSON, shown as it is: \%1</source>
        <translation>keine Escape-Sequenz von JSON, gezeigt, wie sie ist: \%1</translation>
    </message>
    <message>
        <source>but %1 is an array</source>
        <translation>aber %1 ist ein Feld von Werten</translation>
    </message>
    <message>
        <source>an array</source>
        <translation>ein Feld von Werten</translation>
    </message>
    <message>
        <source>an object</source>
        <translation>ein Objekt</translation>
    </message>
    <message>
        <source>but %1 is %2</source>
        <translation>aber %1 ist %2</translation>
    </message>
    <message>
        <source>it is there again</source>
        <translation>es steht noch einmal da</translation>
    </message>
</context>
<context>
    <name>JsonDocument</name>
    <message>
        <source>not decoded: longer than %1 bytes</source>
        <translation>nicht dekodiert: länger als %1 Bytes</translation>
    </message>
    <message>
        <source>cannot be read to its end</source>
        <translation>kann nicht bis zum Ende gelesen werden</translation>
    </message>
</context>
<context>
    <name>JsonMessage</name>
    <message>
        <source>between the values</source>
        <translation>zwischen den Werten</translation>
    </message>
    <message>
        <source>name of a member</source>
        <translation>Name eines Elements</translation>
    </message>
</context>
<context>
    <name>JsonSchema</name>
    <message>
        <source>there are more than %1 types</source>
        <translation>es gibt mehr als %1 Typen</translation>
    </message>
    <message>
        <source>the schema is longer than %1 bytes</source>
        <translation>das Schema ist länger als %1 Bytes</translation>
    </message>
    <message>
        <source>the schema is no JSON: %1</source>
        <translation>das Schema ist kein JSON: %1</translation>
    </message>
    <message>
        <source>the schema is neither an object nor true</source>
        <translation>das Schema ist weder ein Objekt noch true</translation>
    </message>
    <message>
        <source>the schema is too large: more than %1 parts</source>
        <translation>das Schema ist zu groß: mehr als %1 Teile</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>at least %1</source>
        <translation>mindestens %1</translation>
    </message>
    <message>
        <source>at most %1</source>
        <translation>höchstens %1</translation>
    </message>
</context>
<context>
    <name>MavlinkDialect</name>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>at least %1</source>
        <translation>mindestens %1</translation>
    </message>
    <message>
        <source>at most %1</source>
        <translation>höchstens %1</translation>
    </message>
    <message>
        <source>%1 more errors</source>
        <translation>%1 weitere Fehler</translation>
    </message>
    <message>
        <source>no message definitions: the outermost element is &lt;%1&gt; instead of &lt;mavlink&gt;</source>
        <translation>keine Nachrichtendefinitionen: das äußerste Element ist &lt;%1&gt; statt &lt;mavlink&gt;</translation>
    </message>
    <message>
        <source>malformed XML: %1</source>
        <translation>fehlerhaftes XML: %1</translation>
    </message>
    <message>
        <source>an enum without a name</source>
        <translation>eine Aufzählung ohne Namen</translation>
    </message>
    <message>
        <source>an enum entry without a name</source>
        <translation>ein Aufzählungseintrag ohne Namen</translation>
    </message>
    <message>
        <source>%1: the value &quot;%2&quot; is not a number</source>
        <translation>%1: der Wert „%2“ ist keine Zahl</translation>
    </message>
    <message>
        <source>a message without a name</source>
        <translation>eine Nachricht ohne Namen</translation>
    </message>
    <message>
        <source>%1: the id &quot;%2&quot; is not a number from 0 to %3</source>
        <translation>%1: die Kennung „%2“ ist keine Zahl von 0 bis %3</translation>
    </message>
    <message>
        <source>a field without a name</source>
        <translation>ein Feld ohne Namen</translation>
    </message>
    <message>
        <source>%1: the array length of &quot;%2&quot; is not a number from 1 to %3</source>
        <translation>%1: die Array-Länge von „%2“ ist keine Zahl von 1 bis %3</translation>
    </message>
    <message>
        <source>%1: unknown type &quot;%2&quot;</source>
        <translation>%1: unbekannter Typ „%2“</translation>
    </message>
    <message>
        <source>cannot be read: not a file</source>
        <translation>kann nicht gelesen werden: keine Datei</translation>
    </message>
    <message>
        <source>cannot be read: %1</source>
        <translation>kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>cannot be read: larger than %1 bytes</source>
        <translation>kann nicht gelesen werden: größer als %1 Bytes</translation>
    </message>
    <message>
        <source>files include each other: %1</source>
        <translation>Dateien binden einander ein: %1</translation>
    </message>
    <message>
        <source>the included file &quot;%1&quot; %2</source>
        <translation>die eingebundene Datei „%1“ %2</translation>
    </message>
    <message>
        <source>more than %1 files</source>
        <translation>mehr als %1 Dateien</translation>
    </message>
    <message>
        <source>more than %1 bytes in all files</source>
        <translation>mehr als %1 Bytes in allen Dateien</translation>
    </message>
    <message>
        <source>the entry %1 of %2 is already defined at %3</source>
        <translation>der Eintrag %1 von %2 ist bereits in %3 definiert</translation>
    </message>
    <message>
        <source>%1: the id %2 is already that of %3 at %4</source>
        <translation>%1: die Kennung %2 gehört bereits %3 in %4</translation>
    </message>
    <message>
        <source>%1: the name is already taken at %2</source>
        <translation>%1: der Name ist bereits in %2 vergeben</translation>
    </message>
    <message>
        <source>%1: the field %2 is there twice</source>
        <translation>%1: das Feld %2 ist doppelt vorhanden</translation>
    </message>
    <message>
        <source>%1: the payload is longer than %2 bytes with the field %3</source>
        <translation>%1: die Nutzlast ist mit dem Feld %3 länger als %2 Bytes</translation>
    </message>
</context>
<context>
    <name>MavlinkFrame</name>
    <message>
        <source>start of a frame</source>
        <translation>Anfang eines Rahmens</translation>
    </message>
    <message>
        <source>length of the payload</source>
        <translation>Länge der Nutzdaten</translation>
    </message>
    <message>
        <source>flags that a receiver must know</source>
        <translation>Merkmale, die ein Empfänger kennen muss</translation>
    </message>
    <message>
        <source>flags</source>
        <translation>Merkmale</translation>
    </message>
    <message>
        <source>sequence number</source>
        <translation>laufende Nummer</translation>
    </message>
    <message>
        <source>system that sent it</source>
        <translation>sendendes System</translation>
    </message>
    <message>
        <source>component that sent it</source>
        <translation>sendende Komponente</translation>
    </message>
    <message>
        <source>number of the message type</source>
        <translation>Nummer des Nachrichtentyps</translation>
    </message>
    <message>
        <source>payload without a field</source>
        <translation>Nutzdaten ohne Feld</translation>
    </message>
    <message>
        <source>checksum</source>
        <translation>Prüfsumme</translation>
    </message>
    <message>
        <source>signature</source>
        <translation>Signatur</translation>
    </message>
</context>
<context>
    <name>McapIndex</name>
    <message>
        <source>%1: this is no MCAP file</source>
        <translation>%1: keine MCAP-Datei</translation>
    </message>
    <message>
        <source>%1: cancelled</source>
        <translation>%1: abgebrochen</translation>
    </message>
</context>
<context>
    <name>McapStream</name>
    <message>
        <source>a schema&apos;s lengths do not fit its record</source>
        <translation>die Längen eines Schemas passen nicht zu seinem Datensatz</translation>
    </message>
    <message>
        <source>a schema has the number 0, which means none</source>
        <translation>ein Schema hat die Nummer 0, die für keines steht</translation>
    </message>
    <message>
        <source>schema %1 is one too many: 64 MiB of schemas and channels are known</source>
        <translation>Schema %1 ist eines zu viel: 64 MiB an Schemata und Kanälen sind bekannt</translation>
    </message>
    <message>
        <source>a channel&apos;s lengths do not fit its record</source>
        <translation>die Längen eines Kanals passen nicht zu seinem Datensatz</translation>
    </message>
    <message>
        <source>channel %1 is one too many: 64 MiB of schemas and channels are known</source>
        <translation>Kanal %1 ist einer zu viel: 64 MiB an Schemata und Kanälen sind bekannt</translation>
    </message>
    <message>
        <source>no encoding</source>
        <translation>keine Kodierung</translation>
    </message>
    <message>
        <source> without a schema</source>
        <translation> ohne Schema</translation>
    </message>
    <message>
        <source>the channel has no schema</source>
        <translation>der Kanal hat kein Schema</translation>
    </message>
    <message>
        <source>the channel&apos;s schema %1 was not announced</source>
        <translation>das Schema %1 des Kanals wurde nicht angekündigt</translation>
    </message>
    <message>
        <source>the schema %1 is %2 and the messages are %3</source>
        <translation>das Schema %1 ist %2, und die Nachrichten sind %3</translation>
    </message>
    <message>
        <source>the schema %1 cannot be used: %2</source>
        <translation>das Schema %1 ist nicht brauchbar: %2</translation>
    </message>
    <message>
        <source>%1 (%2, not decodable)</source>
        <translation>%1 (%2, nicht dekodierbar)</translation>
    </message>
    <message>
        <source>channel %1</source>
        <translation>Kanal %1</translation>
    </message>
    <message>
        <source>not announced</source>
        <translation>nicht angekündigt</translation>
    </message>
    <message>
        <source>a chunk whose lengths contradict each other</source>
        <translation>ein Block, dessen Längen einander widersprechen</translation>
    </message>
    <message>
        <source>a chunk of %1 bytes</source>
        <translation>ein Block von %1 Bytes</translation>
    </message>
    <message>
        <source>a chunk with the compression &quot;%1&quot;</source>
        <translation>ein Block mit der Kompression „%1“</translation>
    </message>
    <message>
        <source>a chunk that holds %1 bytes was passed over, %2 MiB are read</source>
        <translation>ein Block mit %1 Bytes wurde übergangen, gelesen werden bis zu %2 MiB</translation>
    </message>
    <message>
        <source>a chunk that does not decompress was dropped (%1)</source>
        <translation>ein Block, der sich nicht entpacken lässt, wurde verworfen (%1)</translation>
    </message>
    <message>
        <source>a chunk that says it holds %1 bytes and holds %2 was dropped</source>
        <translation>ein Block, der %1 Bytes enthalten soll und %2 enthält, wurde verworfen</translation>
    </message>
    <message>
        <source>a chunk, which was dropped,</source>
        <translation>ein Block, der verworfen wurde,</translation>
    </message>
    <message>
        <source>a record in a chunk has %1 bytes where %2 are left; what follows it was dropped</source>
        <translation>ein Datensatz in einem Block hat %1 Bytes, wo noch %2 übrig sind; was darauf folgt, wurde verworfen</translation>
    </message>
    <message>
        <source>a chunk, or a second without chunks, is earlier than the one before the last, and there is no index</source>
        <translation>ein Block, oder eine Sekunde ohne Blöcke, ist früher als der vorletzte, und es gibt keinen Index</translation>
    </message>
    <message>
        <source>chunks overlap by more than %1 MiB</source>
        <translation>Blöcke überlappen einander um mehr als %1 MiB</translation>
    </message>
    <message>
        <source>%1 messages of %2 had to wait until it was announced</source>
        <translation>%1 Nachrichten von %2 mussten warten, bis der Kanal angekündigt war</translation>
    </message>
    <message>
        <source>messages of channel %1, which was not announced</source>
        <translation>Nachrichten des Kanals %1, der nicht angekündigt wurde</translation>
    </message>
    <message>
        <source> in what could be read</source>
        <translation> in dem, was gelesen werden konnte</translation>
    </message>
    <message>
        <source>%1 MiB</source>
        <translation>%1 MiB</translation>
    </message>
    <message>
        <source>a schema</source>
        <translation>ein Schema</translation>
    </message>
    <message>
        <source>a channel</source>
        <translation>ein Kanal</translation>
    </message>
    <message>
        <source>a message</source>
        <translation>eine Nachricht</translation>
    </message>
    <message>
        <source>a chunk</source>
        <translation>ein Block</translation>
    </message>
    <message>
        <source>an attachment</source>
        <translation>ein Anhang</translation>
    </message>
    <message>
        <source>a record 0x%1</source>
        <translation>ein Datensatz 0x%1</translation>
    </message>
    <message>
        <source>an MCAP file begins otherwise</source>
        <translation>eine MCAP-Datei beginnt anders</translation>
    </message>
    <message>
        <source>no record has the number 0</source>
        <translation>kein Datensatz hat die Nummer 0</translation>
    </message>
    <message>
        <source>%1 of %2 bytes</source>
        <translation>%1 von %2 Bytes</translation>
    </message>
    <message>
        <source>the data of the file</source>
        <translation>der Inhalt der Datei</translation>
    </message>
    <message>
        <source>the summary</source>
        <translation>die Zusammenfassung</translation>
    </message>
    <message>
        <source>%1 should have the CRC %2 and has %3</source>
        <translation>%1 sollte die CRC %2 haben und hat %3</translation>
    </message>
    <message>
        <source>%1 was passed over, %2 are read</source>
        <translation>%1 wurde übergangen, gelesen werden bis zu %2</translation>
    </message>
    <message>
        <source>an MCAP file ends otherwise</source>
        <translation>eine MCAP-Datei endet anders</translation>
    </message>
    <message>
        <source>they follow the end of the recording</source>
        <translation>sie folgen auf das Ende der Aufzeichnung</translation>
    </message>
    <message>
        <source>inside a chunk, of which %1 messages can be read</source>
        <translation>in einem Block, von dem %1 Nachrichten lesbar sind</translation>
    </message>
    <message>
        <source>inside %1</source>
        <translation>hier: %1</translation>
    </message>
    <message>
        <source>the last 8 bytes are missing</source>
        <translation>die letzten 8 Bytes fehlen</translation>
    </message>
    <message>
        <source>the recording has no end mark, it was not finished</source>
        <translation>die Aufzeichnung hat keine Endmarke, sie wurde nicht abgeschlossen</translation>
    </message>
</context>
<context>
    <name>MessageStatisticsWidget</name>
    <message>
        <source>Message</source>
        <translation>Nachricht</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>Current rate/interval</source>
        <translation>Aktuelle Rate/Intervall</translation>
    </message>
    <message>
        <source>Gaps</source>
        <translation>Lücken</translation>
    </message>
    <message>
        <source>CRC Errors</source>
        <translation>CRC-Fehler</translation>
    </message>
</context>
<context>
    <name>MessageTreeWidget</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Raw value</source>
        <translation>Rohwert</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Custom 1</source>
        <translation>Eigene 1</translation>
    </message>
    <message>
        <source>Custom 2</source>
        <translation>Eigene 2</translation>
    </message>
    <message>
        <source>Custom 3</source>
        <translation>Eigene 3</translation>
    </message>
    <message>
        <source>Custom 4</source>
        <translation>Eigene 4</translation>
    </message>
    <message>
        <source>Custom 5</source>
        <translation>Eigene 5</translation>
    </message>
    <message>
        <source>Custom 6</source>
        <translation>Eigene 6</translation>
    </message>
    <message>
        <source>Custom 7</source>
        <translation>Eigene 7</translation>
    </message>
    <message>
        <source>Custom 8</source>
        <translation>Eigene 8</translation>
    </message>
    <message>
        <source>Custom 9</source>
        <translation>Eigene 9</translation>
    </message>
    <message>
        <source>Custom 10</source>
        <translation>Eigene 10</translation>
    </message>
    <message>
        <source>Column type %1</source>
        <translation>Spaltentyp %1</translation>
    </message>
    <message>
        <source>Duplicate column</source>
        <translation>Doppelte Spalte</translation>
    </message>
    <message>
        <source>Attempt to add to a MessageTreeWidget a column that is already present: %1. Duplicate column was not added.</source>
        <translation>Einem MessageTreeWidget sollte eine Spalte hinzugefügt werden, die bereits vorhanden ist: %1. Die doppelte Spalte wurde nicht hinzugefügt.</translation>
    </message>
    <message>
        <source>&amp;Type</source>
        <translation>&amp;Typ</translation>
    </message>
    <message>
        <source>&amp;Raw Value</source>
        <translation>&amp;Rohwert</translation>
    </message>
</context>
<context>
    <name>MessageTreeWidgetItem</name>
    <message>
        <source>No message type set</source>
        <translation>Kein Nachrichtentyp gesetzt</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Nachricht</translation>
    </message>
    <message>
        <source>No message</source>
        <translation>Keine Nachricht</translation>
    </message>
    <message>
        <source>Hidden data</source>
        <translation>Verborgene Daten</translation>
    </message>
    <message>
        <source>Due to confidentiality, the data in this message has been (partly) hidden.</source>
        <translation>Aus Gründen der Vertraulichkeit wurden die Daten dieser Nachricht (teilweise) verborgen.</translation>
    </message>
</context>
<context>
    <name>MessageWidget</name>
    <message>
        <source>No message type set</source>
        <translation>Kein Nachrichtentyp gesetzt</translation>
    </message>
</context>
<context>
    <name>MqttCheck</name>
    <message>
        <source>%1 (packet %2)</source>
        <translation>%1 (Paket %2)</translation>
    </message>
    <message>
        <source>the server sent a %1 for the second time</source>
        <translation>der Server hat zum zweiten Mal ein %1 geschickt</translation>
    </message>
    <message>
        <source>the server sent a %1, which only clients send</source>
        <translation>der Server hat ein %1 geschickt, das nur Clients schicken</translation>
    </message>
    <message>
        <source>the server sent a %1 with the flags %2</source>
        <translation>der Server hat ein %1 mit den Flags %2 geschickt</translation>
    </message>
    <message>
        <source>the server sent a %1 whose length has more than four bytes</source>
        <translation>der Server hat ein %1 geschickt, dessen Länge mehr als vier Bytes hat</translation>
    </message>
    <message>
        <source>the server sent a %1 of %2 bytes</source>
        <translation>der Server hat ein %1 von %2 Bytes geschickt</translation>
    </message>
    <message>
        <source>the server sent a %1 whose topic is longer than the packet</source>
        <translation>der Server hat ein %1 geschickt, dessen Thema länger als das Paket ist</translation>
    </message>
    <message>
        <source>the server sent a %1 without a topic</source>
        <translation>der Server hat ein %1 ohne Thema geschickt</translation>
    </message>
    <message>
        <source>the server sent a %1 that ends before its number</source>
        <translation>der Server hat ein %1 geschickt, das vor seiner Nummer endet</translation>
    </message>
    <message>
        <source>the server sent a %1 that is too short</source>
        <translation>der Server hat ein %1 geschickt, das zu kurz ist</translation>
    </message>
    <message>
        <source>the server sent a %1 with something in it</source>
        <translation>der Server hat ein %1 geschickt, in dem etwas steht</translation>
    </message>
    <message>
        <source>the server sent a %1 with something behind its properties</source>
        <translation>der Server hat ein %1 geschickt, bei dem hinter den Properties noch etwas steht</translation>
    </message>
    <message>
        <source>the server sent a %1 whose properties are longer than the packet</source>
        <translation>der Server hat ein %1 geschickt, dessen Properties länger als das Paket sind</translation>
    </message>
    <message>
        <source>the server sent a %1 with the unknown property %2</source>
        <translation>der Server hat ein %1 mit der unbekannten Property %2 geschickt</translation>
    </message>
    <message>
        <source>the server sent a %1 whose property %2 is longer than all of them</source>
        <translation>der Server hat ein %1 geschickt, dessen Property %2 länger als alle zusammen ist</translation>
    </message>
</context>
<context>
    <name>MqttInput</name>
    <message>
        <source>it speaks no such version of MQTT</source>
        <translation>er spricht keine solche Version von MQTT</translation>
    </message>
    <message>
        <source>it does not take the name of this program</source>
        <translation>er nimmt den Namen dieses Programms nicht an</translation>
    </message>
    <message>
        <source>user or password is wrong</source>
        <translation>Benutzer oder Passwort ist falsch</translation>
    </message>
    <message>
        <source>not authorised</source>
        <translation>nicht berechtigt</translation>
    </message>
    <message>
        <source>the server is unavailable</source>
        <translation>der Server ist nicht verfügbar</translation>
    </message>
    <message>
        <source>the server is busy</source>
        <translation>der Server ist beschäftigt</translation>
    </message>
    <message>
        <source>this user or address is banned</source>
        <translation>dieser Benutzer oder diese Adresse ist gesperrt</translation>
    </message>
    <message>
        <source>the server shuts down</source>
        <translation>der Server fährt herunter</translation>
    </message>
    <message>
        <source>another program has connected under the same name</source>
        <translation>ein anderes Programm hat sich unter demselben Namen verbunden</translation>
    </message>
    <message>
        <source>it does not take such a filter</source>
        <translation>er nimmt keinen solchen Filter an</translation>
    </message>
    <message>
        <source>a quota is used up</source>
        <translation>ein Kontingent ist verbraucht</translation>
    </message>
    <message>
        <source>another server is to be used</source>
        <translation>ein anderer Server soll verwendet werden</translation>
    </message>
    <message>
        <source>the server has moved</source>
        <translation>der Server ist umgezogen</translation>
    </message>
    <message>
        <source>too many connections in a short time</source>
        <translation>zu viele Verbindungen in kurzer Zeit</translation>
    </message>
    <message>
        <source>reason 0x%1</source>
        <translation>Grund 0x%1</translation>
    </message>
    <message>
        <source>no encrypted connection comes about: %1</source>
        <translation>es kommt keine verschlüsselte Verbindung zustande: %1</translation>
    </message>
    <message>
        <source>what comes is no MQTT</source>
        <translation>was kommt, ist kein MQTT</translation>
    </message>
    <message>
        <source>the server has closed the connection</source>
        <translation>der Server hat die Verbindung geschlossen</translation>
    </message>
    <message>
        <source>no answer within %1 s</source>
        <translation>keine Antwort innerhalb von %1 s</translation>
    </message>
    <message>
        <source>the server refuses the connection: %1</source>
        <translation>der Server lehnt die Verbindung ab: %1</translation>
    </message>
    <message>
        <source>the server ends the connection: %1</source>
        <translation>der Server beendet die Verbindung: %1</translation>
    </message>
    <message>
        <source>the server refuses %1: %2</source>
        <translation>der Server lehnt %1 ab: %2</translation>
    </message>
    <message>
        <source>a message of %1 bytes of %2 is too large</source>
        <translation>eine Nachricht von %1 Bytes von %2 ist zu groß</translation>
    </message>
    <message>
        <source>%1 messages came faster than they were read, and were dropped</source>
        <translation>%1 Nachrichten kamen schneller, als sie gelesen wurden, und wurden verworfen</translation>
    </message>
    <message>
        <source>it does not take such a topic</source>
        <translation>er nimmt kein solches Thema an</translation>
    </message>
    <message>
        <source>the message is too large</source>
        <translation>die Nachricht ist zu groß</translation>
    </message>
    <message>
        <source>it keeps no messages</source>
        <translation>er hebt keine Nachrichten auf</translation>
    </message>
    <message>
        <source>%1 is no certificate or key that can be used</source>
        <translation>%1 ist kein Zertifikat oder Schlüssel, mit dem etwas anzufangen ist</translation>
    </message>
</context>
<context>
    <name>NatsInput</name>
    <message>
        <source>the server&apos;s JetStream does not answer within %1 s, or this user may not ask for it</source>
        <translation>das JetStream des Servers antwortet nicht innerhalb von %1 s, oder dieser Benutzer darf nicht danach fragen</translation>
    </message>
    <message>
        <source>the stream is a work queue: what one reads is taken from the others</source>
        <translation>der Stream ist eine Arbeitswarteschlange: Was einer liest, fehlt den anderen</translation>
    </message>
    <message>
        <source>message %1 of the stream is too large</source>
        <translation>die Nachricht %1 des Streams ist zu groß</translation>
    </message>
    <message>
        <source>what comes is no greeting of a NATS server</source>
        <translation>was kommt, ist keine Begrüßung eines NATS-Servers</translation>
    </message>
    <message>
        <source>user, password or token is wrong</source>
        <translation>Benutzer, Passwort oder Token ist falsch</translation>
    </message>
    <message>
        <source>the server does not encrypt connections</source>
        <translation>der Server verschlüsselt keine Verbindungen</translation>
    </message>
    <message>
        <source>no encrypted connection comes about: %1</source>
        <translation>es kommt keine verschlüsselte Verbindung zustande: %1</translation>
    </message>
    <message>
        <source>the connection is lost; it is tried again for as long as it takes</source>
        <translation>die Verbindung ist verloren; sie wird wieder versucht, solange es dauert</translation>
    </message>
    <message>
        <source>connected again, to %1</source>
        <translation>wieder verbunden, mit %1</translation>
    </message>
    <message>
        <source>the server has ended the connection: %1</source>
        <translation>der Server hat die Verbindung beendet: %1</translation>
    </message>
    <message>
        <source>%1 messages came faster than they were read, and were dropped</source>
        <translation>%1 Nachrichten kamen schneller, als sie gelesen wurden, und wurden verworfen</translation>
    </message>
    <message>
        <source>a message of %1 is too large</source>
        <translation>eine Nachricht von %1 ist zu groß</translation>
    </message>
    <message>
        <source>the server has no JetStream, or none for this user</source>
        <translation>der Server hat kein JetStream, oder keines für diesen Benutzer</translation>
    </message>
    <message>
        <source>there is no stream of that name</source>
        <translation>es gibt keinen Stream dieses Namens</translation>
    </message>
    <message>
        <source>the server says: %1</source>
        <translation>der Server sagt: %1</translation>
    </message>
    <message>
        <source>the server has the session %1 no more</source>
        <translation>der Server hat die Sitzung %1 nicht mehr</translation>
    </message>
    <message>
        <source>the stream has a consumer %1 that is no session of this program; another name is needed</source>
        <translation>der Stream hat einen Consumer %1, der keine Sitzung dieses Programms ist; ein anderer Name ist nötig</translation>
    </message>
    <message>
        <source>the session %1 is of the subject &quot;%2&quot;; what is read of another one needs a session of another name</source>
        <translation>die Sitzung %1 gehört zum Subject &quot;%2&quot;; ein anderes braucht eine Sitzung mit anderem Namen</translation>
    </message>
    <message>
        <source>another program reads in the session %1</source>
        <translation>ein anderes Programm liest in der Sitzung %1</translation>
    </message>
</context>
<context>
    <name>Output</name>
    <message>
        <source>&quot;%1&quot; is no address of this computer; 0.0.0.0 stands for all</source>
        <translation>„%1“ ist keine Adresse dieses Rechners; 0.0.0.0 steht für alle</translation>
    </message>
    <message>
        <source>nothing can stand behind the port</source>
        <translation>hinter dem Port kann nichts stehen</translation>
    </message>
    <message>
        <source>%1 was refused: %2</source>
        <translation>%1 wurde abgewiesen: %2</translation>
    </message>
    <message>
        <source>there are too many clients</source>
        <translation>es sind zu viele Clients</translation>
    </message>
    <message>
        <source>it speaks no protocol of Foxglove</source>
        <translation>er spricht kein Protokoll von Foxglove</translation>
    </message>
    <message>
        <source>%1 is connected</source>
        <translation>%1 ist verbunden</translation>
    </message>
    <message>
        <source>%1 is gone</source>
        <translation>%1 ist weg</translation>
    </message>
    <message>
        <source>no host is named</source>
        <translation>es ist kein Rechner genannt</translation>
    </message>
    <message>
        <source>no prefix of the topics is named behind the host</source>
        <translation>hinter dem Rechner ist kein Präfix der Topics genannt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no prefix of topics</source>
        <translation>„%1“ ist kein Präfix von Topics</translation>
    </message>
    <message>
        <source>a certificate (cert) and its key (key) belong together</source>
        <translation>ein Zertifikat (cert) und sein Schlüssel (key) gehören zusammen</translation>
    </message>
    <message>
        <source>no answer within %1 s</source>
        <translation>keine Antwort innerhalb von %1 s</translation>
    </message>
    <message>
        <source>%1; trying again</source>
        <translation>%1; neuer Versuch</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no prefix of subjects; fleet and plant.hall are some</source>
        <translation>„%1“ ist kein Präfix von Subjects; fleet und plant.hall sind welche</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no name of a stream</source>
        <translation>„%1“ ist kein Name eines Streams</translation>
    </message>
    <message>
        <source>tls is &quot;%1&quot;; it is auto or on</source>
        <translation>tls ist „%1“; es ist auto oder on</translation>
    </message>
    <message>
        <source>; trying again</source>
        <translation>; neuer Versuch</translation>
    </message>
    <message>
        <source>nobody confirms what is published: a stream has to take it; trying again</source>
        <translation>niemand bestätigt, was veröffentlicht wird: ein Stream muss es annehmen; neuer Versuch</translation>
    </message>
    <message>
        <source>user, password or token is wrong</source>
        <translation>Benutzer, Kennwort oder Token ist falsch</translation>
    </message>
    <message>
        <source>the connection is lost%1; trying again</source>
        <translation>die Verbindung ist verloren%1; neuer Versuch</translation>
    </message>
    <message>
        <source>no stream of JetStream takes what is published</source>
        <translation>kein Stream von JetStream nimmt an, was veröffentlicht wird</translation>
    </message>
    <message>
        <source>stream %1: %2</source>
        <translation>Stream %1: %2</translation>
    </message>
    <message>
        <source>the message is too large for the server</source>
        <translation>die Nachricht ist zu groß für den Server</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no parameter; NAME=VALUE is one</source>
        <translation>„%1“ ist kein Parameter; NAME=WERT ist einer</translation>
    </message>
    <message>
        <source>there is no parameter &quot;%1&quot;; there is: %2</source>
        <translation>es gibt keinen Parameter „%1“; es gibt: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is told twice</source>
        <translation>„%1“ ist zweimal angegeben</translation>
    </message>
    <message>
        <source>a password does not stand in an address, where others see it</source>
        <translation>ein Kennwort steht nicht in einer Adresse, wo andere es sehen</translation>
    </message>
    <message>
        <source>there are no users</source>
        <translation>es gibt keine Benutzer</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no host with a port; an IPv6 address stands in brackets, ports are 1 to 65535</source>
        <translation>„%1“ ist kein Rechner mit Port; eine IPv6-Adresse steht in Klammern, Ports gehen von 1 bis 65535</translation>
    </message>
    <message>
        <source>%1 is no output; there is: %2</source>
        <translation>%1 ist keine Ausgabe; es gibt: %2</translation>
    </message>
</context>
<context>
    <name>OutputKind</name>
    <message>
        <source>MCAP recordings</source>
        <translation>MCAP-Aufzeichnungen</translation>
    </message>
    <message>
        <source>MAVLink recordings</source>
        <translation>MAVLink-Aufzeichnungen</translation>
    </message>
    <message>
        <source>WebSocket: a server for Foxglove clients</source>
        <translation>WebSocket: ein Server für Foxglove-Programme</translation>
    </message>
    <message>
        <source>UDP: MAVLink frames as datagrams</source>
        <translation>UDP: MAVLink-Rahmen als Datagramme</translation>
    </message>
    <message>
        <source>MQTT: topics of a broker</source>
        <translation>MQTT: Themen eines Vermittlers</translation>
    </message>
    <message>
        <source>MQTT, encrypted: topics of a broker</source>
        <translation>MQTT, verschlüsselt: Themen eines Vermittlers</translation>
    </message>
    <message>
        <source>NATS: a stream of JetStream</source>
        <translation>NATS: ein Strom von JetStream</translation>
    </message>
</context>
<context>
    <name>PathExpression</name>
    <message>
        <source>character %1: %2</source>
        <translation>Zeichen %1: %2</translation>
    </message>
    <message>
        <source>this part has one level only; a separator in a name is written \/</source>
        <translation>dieser Teil hat nur eine Ebene; ein Trennzeichen in einem Namen wird \/ geschrieben</translation>
    </message>
    <message>
        <source>no bracket was opened; one in a name is written \]</source>
        <translation>keine Klammer wurde geöffnet; eine in einem Namen wird \] geschrieben</translation>
    </message>
    <message>
        <source>only an index can stand here</source>
        <translation>hier kann nur ein Index stehen</translation>
    </message>
    <message>
        <source>nothing can stand here</source>
        <translation>hier kann nichts stehen</translation>
    </message>
    <message>
        <source>the name before the # is missing; this character in a name is written \#</source>
        <translation>der Name vor dem # fehlt; dieses Zeichen in einem Namen wird \# geschrieben</translation>
    </message>
    <message>
        <source>the character behind the \ is missing</source>
        <translation>das Zeichen hinter dem \ fehlt</translation>
    </message>
    <message>
        <source>only / * # [ ] and \ can stand behind a \, or 0 alone for an empty name</source>
        <translation>nur / * # [ ] und \ können hinter einem \ stehen, oder allein 0 für einen leeren Namen</translation>
    </message>
    <message>
        <source>the wildcard stands alone; a star in a name is written \*</source>
        <translation>der Platzhalter steht allein; ein Stern in einem Namen wird \* geschrieben</translation>
    </message>
    <message>
        <source>a number from 1 must follow the #; this character in a name is written \#</source>
        <translation>auf das # muss eine Zahl ab 1 folgen; dieses Zeichen in einem Namen wird \# geschrieben</translation>
    </message>
    <message>
        <source>only fields have an index; a bracket in a name is written \[</source>
        <translation>nur Felder haben einen Index; eine Klammer in einem Namen wird \[ geschrieben</translation>
    </message>
    <message>
        <source>the ] is missing</source>
        <translation>das ] fehlt</translation>
    </message>
    <message>
        <source>an index is a number or *</source>
        <translation>ein Index ist eine Zahl oder *</translation>
    </message>
    <message>
        <source>nothing can stand behind an index</source>
        <translation>hinter einem Index kann nichts stehen</translation>
    </message>
    <message>
        <source>the path has too many levels</source>
        <translation>der Pfad hat zu viele Ebenen</translation>
    </message>
</context>
<context>
    <name>PathExpressionAssistant</name>
    <message>
        <source>No known message type or field is called so</source>
        <translation>Kein bekannter Nachrichtentyp und kein bekanntes Feld heißt so</translation>
    </message>
</context>
<context>
    <name>PathExpressionComboBox</name>
    <message>
        <source>Null path expression set!</source>
        <translation>Pfadausdruck ist null!</translation>
    </message>
    <message>
        <source>Null options source path expression set!</source>
        <translation>Pfadausdruck der Auswahlquelle ist null!</translation>
    </message>
    <message>
        <source>No options</source>
        <translation>Keine Auswahl</translation>
    </message>
</context>
<context>
    <name>PathExpressionLabel</name>
    <message>
        <source>No path expression set!</source>
        <translation>Kein Pfadausdruck gesetzt!</translation>
    </message>
</context>
<context>
    <name>PathExpressionLineEdit</name>
    <message>
        <source>No path expression set!</source>
        <translation>Kein Pfadausdruck gesetzt!</translation>
    </message>
</context>
<context>
    <name>PathExpressionListWidget</name>
    <message>
        <source>Null options source path expression set!</source>
        <translation>Pfadausdruck der Auswahlquelle ist null!</translation>
    </message>
    <message>
        <source>No options</source>
        <translation>Keine Auswahl</translation>
    </message>
</context>
<context>
    <name>ProtobufFormat</name>
    <message>
        <source>the schema has no message type &quot;%1&quot;</source>
        <translation>das Schema hat keinen Nachrichtentyp „%1“</translation>
    </message>
    <message>
        <source>no schema is loaded</source>
        <translation>kein Schema ist geladen</translation>
    </message>
    <message>
        <source>no schema has a message type &quot;%1&quot;</source>
        <translation>kein Schema hat einen Nachrichtentyp „%1“</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation>es gibt keine solche Datei</translation>
    </message>
    <message>
        <source>there is no such folder to import from</source>
        <translation>es gibt keinen solchen Import-Ordner</translation>
    </message>
    <message>
        <source>an import path has another file of that name: %1</source>
        <translation>ein Importpfad hat eine andere Datei dieses Namens: %1</translation>
    </message>
    <message>
        <source>cannot be understood</source>
        <translation>ist nicht verständlich</translation>
    </message>
    <message>
        <source>not decoded: longer than %1 bytes</source>
        <translation>nicht dekodiert: länger als %1 Bytes</translation>
    </message>
    <message>
        <source>cannot be parsed to its end</source>
        <translation>kann nicht bis zum Ende gelesen werden</translation>
    </message>
    <message>
        <source>the required field &quot;%1&quot; is missing</source>
        <translation>das erforderliche Feld „%1“ fehlt</translation>
    </message>
    <message>
        <source>the schema is longer than %1 bytes</source>
        <translation>das Schema ist länger als %1 Bytes</translation>
    </message>
    <message>
        <source>the schema is empty</source>
        <translation>das Schema ist leer</translation>
    </message>
    <message>
        <source>the schema is no serialized FileDescriptorSet</source>
        <translation>das Schema ist kein serialisiertes FileDescriptorSet</translation>
    </message>
    <message>
        <source>and more</source>
        <translation>und weitere</translation>
    </message>
    <message>
        <source>byte %1: </source>
        <translation>Byte %1: </translation>
    </message>
    <message>
        <source>%1 at byte %2: </source>
        <translation>%1 bei Byte %2: </translation>
    </message>
    <message>
        <source>a group does not end</source>
        <translation>eine Gruppe endet nicht</translation>
    </message>
    <message>
        <source>the number of a field breaks off; the rest is not decoded</source>
        <translation>die Nummer eines Felds bricht ab; der Rest wird nicht dekodiert</translation>
    </message>
    <message>
        <source>no number of a field; the rest is not decoded</source>
        <translation>keine Feldnummer; der Rest wird nicht dekodiert</translation>
    </message>
    <message>
        <source>a number breaks off; the rest is not decoded</source>
        <translation>eine Zahl bricht ab; der Rest wird nicht dekodiert</translation>
    </message>
    <message>
        <source>a length breaks off; the rest is not decoded</source>
        <translation>eine Länge bricht ab; der Rest wird nicht dekodiert</translation>
    </message>
    <message>
        <source>claims %1 bytes where %2 are left; the rest is not decoded</source>
        <translation>gibt %1 Bytes an, wo noch %2 übrig sind; der Rest wird nicht dekodiert</translation>
    </message>
    <message>
        <source>nested too deeply; it is not decoded</source>
        <translation>zu tief verschachtelt; wird nicht dekodiert</translation>
    </message>
    <message>
        <source>the end of a group that did not begin; the rest is not decoded</source>
        <translation>das Ende einer Gruppe, die nicht begonnen hat; der Rest wird nicht dekodiert</translation>
    </message>
    <message>
        <source>an unknown kind of value; the rest is not decoded</source>
        <translation>eine unbekannte Art von Wert; der Rest wird nicht dekodiert</translation>
    </message>
    <message>
        <source>nested too deeply; the rest is not decoded</source>
        <translation>zu tief verschachtelt; der Rest wird nicht dekodiert</translation>
    </message>
    <message>
        <source>not valid UTF-8; wrong bytes are shown as question marks</source>
        <translation>kein gültiges UTF-8; falsche Bytes werden als Fragezeichen gezeigt</translation>
    </message>
    <message>
        <source>all schemas together are too large: %1 names</source>
        <translation>alle Schemata zusammen sind zu groß: %1 Namen</translation>
    </message>
    <message>
        <source>imports are nested more than %1 deep</source>
        <translation>Importe sind mehr als %1 tief geschachtelt</translation>
    </message>
    <message>
        <source>the schema is too large: %1 files, %2 names</source>
        <translation>das Schema ist zu groß: %1 Dateien, %2 Namen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has parts nested more than %2 types deep</source>
        <translation>Teile von &quot;%1&quot; sind mehr als %2 Typen tief geschachtelt</translation>
    </message>
    <message>
        <source>a number breaks off; the rest of the field is not decoded</source>
        <translation>eine Zahl bricht ab; der Rest des Felds wird nicht dekodiert</translation>
    </message>
    <message>
        <source>Times %1: %2</source>
        <translation>Mal %1: %2</translation>
    </message>
    <message>
        <source>, and %1 more</source>
        <translation>, und %1 weitere</translation>
    </message>
    <message>
        <source> (no value of the enum of %1)</source>
        <translation> (kein Wert der Aufzählung von %1)</translation>
    </message>
    <message>
        <source> (but %1 is %2)</source>
        <translation> (aber %1 ist %2)</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Gaps start</source>
        <translation>Beginn der Lücke</translation>
    </message>
    <message>
        <source>Missing epochs</source>
        <translation>Fehlende Epochen</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 ms</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>Message statistics for the messages
in the %1 format.</source>
        <translation>Nachrichtenstatistik der Nachrichten
im Format %1.</translation>
    </message>
    <message>
        <source>%1 (unknown)</source>
        <translation>%1 (unbekannt)</translation>
    </message>
    <message>
        <source>Number of times the %1
message has been received.</source>
        <translation>Wie oft die Nachricht %1
empfangen wurde.</translation>
    </message>
    <message>
        <source>Most recent regular rate/interval at which the %1
message has been received.</source>
        <translation>Letzte regelmäßige Rate bzw. letztes Intervall,
mit der oder dem die Nachricht %1 empfangen wurde.</translation>
    </message>
    <message>
        <source>Detected gaps in regular data segments with valid time, if any.</source>
        <translation>Erkannte Lücken in regelmäßigen Datenabschnitten mit gültiger Zeit, falls vorhanden.</translation>
    </message>
    <message>
        <source>Rates/Intervals</source>
        <translation>Raten/Intervalle</translation>
    </message>
    <message>
        <source>The rates/intervals in which this message has been received,
together with the corresponding count.</source>
        <translation>Die Raten bzw. Intervalle, in denen diese Nachricht empfangen wurde,
mit der jeweiligen Anzahl.</translation>
    </message>
    <message>
        <source>N/A</source>
        <translation>k. A.</translation>
    </message>
    <message>
        <source>%1 (%2 epochs)</source>
        <translation>%1 (%2 Epochen)</translation>
    </message>
    <message>
        <source>No time</source>
        <translation>Keine Zeit</translation>
    </message>
    <message>
        <source>The number of times this message 
has been received without a valid time tag.</source>
        <translation>Wie oft diese Nachricht
ohne gültige Zeitangabe empfangen wurde.</translation>
    </message>
    <message>
        <source>Unknown interval/rate</source>
        <translation>Intervall/Rate unbekannt</translation>
    </message>
    <message>
        <source>Number of times this message has been received 
with a valid time tag but for which the interval 
could not be determined: 
there was no previous message with valid time, 
and the following messages did not 
come in at a regular rate.</source>
        <translation>Wie oft diese Nachricht mit gültiger Zeitangabe
empfangen wurde, ohne dass sich das Intervall
bestimmen ließ: Es gab keine vorige Nachricht
mit gültiger Zeit, und die folgenden Nachrichten
kamen nicht mit regelmäßiger Rate.</translation>
    </message>
    <message>
        <source>Number of times the messages was received
with the same time stamp as previous.</source>
        <translation>Wie oft die Nachricht mit demselben
Zeitstempel wie die vorige empfangen wurde.</translation>
    </message>
    <message>
        <source>Number of times the message was received at %1.</source>
        <translation>Wie oft die Nachricht mit %1 empfangen wurde.</translation>
    </message>
    <message>
        <source>Gaps, with time and duration</source>
        <translation>Lücken mit Zeit und Dauer</translation>
    </message>
    <message>
        <source>Gaps (incomplete list)</source>
        <translation>Lücken (unvollständige Liste)</translation>
    </message>
    <message>
        <source>Gaps</source>
        <translation>Lücken</translation>
    </message>
    <message>
        <source>Column %1</source>
        <translation>Spalte %1</translation>
    </message>
    <message>
        <source>No field set</source>
        <translation>Kein Feld gesetzt</translation>
    </message>
    <message>
        <source>No values for optional field</source>
        <translation>Keine Werte für optionales Feld</translation>
    </message>
    <message>
        <source>Optional submessage not present</source>
        <translation>Optionale Unternachricht nicht vorhanden</translation>
    </message>
    <message>
        <source>No value for optional field</source>
        <translation>Kein Wert für optionales Feld</translation>
    </message>
    <message>
        <source>string</source>
        <translation>Zeichenkette</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 %2s</source>
        <translation>%1 %2s</translation>
    </message>
</context>
<context>
    <name>ReceptionMonitor</name>
    <message>
        <source>bytes skipped</source>
        <translation>Bytes übersprungen</translation>
    </message>
    <message>
        <source>the time of messages goes back by %1 s</source>
        <translation>die Zeit der Nachrichten geht um %1 s zurück</translation>
    </message>
    <message>
        <source>the time of messages goes back</source>
        <translation>die Zeit der Nachrichten geht zurück</translation>
    </message>
    <message>
        <source>the time of messages leaps by %1 s</source>
        <translation>die Zeit der Nachrichten springt um %1 s vor</translation>
    </message>
    <message>
        <source>the time of messages leaps</source>
        <translation>die Zeit der Nachrichten springt vor</translation>
    </message>
    <message>
        <source>unknown message %1, sender %2</source>
        <translation>unbekannte Nachricht %1, Sender %2</translation>
    </message>
    <message>
        <source>message %1</source>
        <translation>Nachricht %1</translation>
    </message>
    <message>
        <source>opened</source>
        <translation>geöffnet</translation>
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
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Unknown %1</source>
        <translation>Unbekannt %1</translation>
    </message>
</context>
<context>
    <name>RecordingFolder</name>
    <message>
        <source>%1 is missing, which %2 names</source>
        <translation>%1 fehlt, das in %2 steht</translation>
    </message>
    <message>
        <source>%1 is read last, for %2 does not name it</source>
        <translation>%1 wird zuletzt gelesen, denn es steht nicht in %2</translation>
    </message>
    <message>
        <source>there is no recording in this folder: no file *.mcap</source>
        <translation>in diesem Ordner ist keine Aufzeichnung: keine Datei *.mcap</translation>
    </message>
    <message>
        <source>it says nothing of a recording</source>
        <translation>darin steht nichts von einer Aufzeichnung</translation>
    </message>
    <message>
        <source>a recording in %1, which cannot be read</source>
        <translation>eine Aufzeichnung in %1, das nicht gelesen werden kann</translation>
    </message>
    <message>
        <source>it names no files</source>
        <translation>es nennt keine Dateien</translation>
    </message>
</context>
<context>
    <name>RosMessage</name>
    <message>
        <source>and more</source>
        <translation>und weitere</translation>
    </message>
    <message>
        <source>byte %1: </source>
        <translation>Byte %1: </translation>
    </message>
    <message>
        <source>%1 at byte %2: </source>
        <translation>%1 bei Byte %2: </translation>
    </message>
    <message>
        <source>; the rest is not decoded</source>
        <translation>; der Rest wird nicht dekodiert</translation>
    </message>
    <message>
        <source>takes %1 bytes where %2 are left</source>
        <translation>braucht %1 Bytes, wo noch %2 übrig sind</translation>
    </message>
    <message>
        <source>%1 is no truth value</source>
        <translation>%1 ist kein Wahrheitswert</translation>
    </message>
    <message>
        <source>a text without a zero byte at its end</source>
        <translation>ein Text ohne Nullbyte am Ende</translation>
    </message>
    <message>
        <source>%1 characters where the schema allows %2</source>
        <translation>%1 Zeichen, wo das Schema %2 erlaubt</translation>
    </message>
    <message>
        <source>is said to go beyond the end</source>
        <translation>reicht angeblich über das Ende hinaus</translation>
    </message>
    <message>
        <source>%1 elements where the schema allows %2</source>
        <translation>%1 Elemente, wo das Schema %2 erlaubt</translation>
    </message>
    <message>
        <source>%1 elements where %2 bytes are left</source>
        <translation>%1 Elemente, wo noch %2 Bytes übrig sind</translation>
    </message>
    <message>
        <source>is said to be longer than its elements</source>
        <translation>ist angeblich länger als seine Elemente</translation>
    </message>
    <message>
        <source>%1 nanoseconds are no part of a second</source>
        <translation>%1 Nanosekunden sind kein Teil einer Sekunde</translation>
    </message>
    <message>
        <source>member %1 must be understood, and is not known</source>
        <translation>Feld %1 muss verstanden werden und ist nicht bekannt</translation>
    </message>
    <message>
        <source>its head makes no sense or breaks off</source>
        <translation>sein Kopf ergibt keinen Sinn oder bricht ab</translation>
    </message>
    <message>
        <source>its list of members breaks off</source>
        <translation>die Liste seiner Felder bricht ab</translation>
    </message>
    <message>
        <source>shorter than the 4 bytes that say how it is written</source>
        <translation>kürzer als die 4 Bytes, die sagen, wie sie geschrieben ist</translation>
    </message>
    <message>
        <source>written in a way that is not known: %1 %2</source>
        <translation>auf unbekannte Weise geschrieben: %1 %2</translation>
    </message>
    <message>
        <source>nobody can tell how its wide texts are written; they are shown as if in units of 16 bits</source>
        <translation>wie ihre breiten Texte geschrieben sind, ist nicht zu erkennen; sie werden wie in Einheiten zu 16 Bit gezeigt</translation>
    </message>
    <message>
        <source>%1 bytes are left over at its end</source>
        <translation>am Ende sind %1 Bytes übrig</translation>
    </message>
    <message>
        <source>, but %1 bytes where %2 are needed</source>
        <translation>, aber %1 Bytes, wo %2 nötig sind</translation>
    </message>
    <message>
        <source>%1, %2 bytes</source>
        <translation>%1, %2 Bytes</translation>
    </message>
    <message>
        <source>%1 points: %2</source>
        <translation>%1 Punkte: %2</translation>
    </message>
    <message>
        <source>how the message is written</source>
        <translation>wie die Nachricht geschrieben ist</translation>
    </message>
    <message>
        <source>padding, which aligns what follows</source>
        <translation>Füllbyte, damit das Folgende ausgerichtet ist</translation>
    </message>
    <message>
        <source>padding at the end</source>
        <translation>Füllbyte am Ende</translation>
    </message>
</context>
<context>
    <name>RosSchema</name>
    <message>
        <source>there is no definition of %1</source>
        <translation>es gibt keine Definition von %1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is expected here</source>
        <translation>hier wird „%1“ erwartet</translation>
    </message>
    <message>
        <source>a name is expected here</source>
        <translation>hier wird ein Name erwartet</translation>
    </message>
    <message>
        <source>these are more names than any system has</source>
        <translation>das sind mehr Namen, als irgendein System hat</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no definition that can be read</source>
        <translation>„%1“ ist keine Definition, die gelesen werden kann</translation>
    </message>
    <message>
        <source>nested too deeply</source>
        <translation>zu tief verschachtelt</translation>
    </message>
    <message>
        <source>%1 is defined twice</source>
        <translation>%1 ist zweimal definiert</translation>
    </message>
    <message>
        <source>what it is made from is no struct</source>
        <translation>wovon es abgeleitet ist, ist keine Struktur</translation>
    </message>
    <message>
        <source>the name %1 is there twice</source>
        <translation>den Namen %1 gibt es zweimal</translation>
    </message>
    <message>
        <source>a union cannot be told by that type</source>
        <translation>nach diesem Typ kann eine Union nicht unterschieden werden</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no value</source>
        <translation>„%1“ ist kein Wert</translation>
    </message>
    <message>
        <source>%1 is no flag</source>
        <translation>%1 ist kein Flag</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no value of the type %2</source>
        <translation>„%1“ ist kein Wert des Typs %2</translation>
    </message>
    <message>
        <source>the text does not end</source>
        <translation>der Text endet nicht</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no type</source>
        <translation>„%1“ ist kein Typ</translation>
    </message>
    <message>
        <source>a type is expected here</source>
        <translation>hier wird ein Typ erwartet</translation>
    </message>
    <message>
        <source>the type %1 is not defined</source>
        <translation>der Typ %1 ist nicht definiert</translation>
    </message>
    <message>
        <source>no message has as many elements</source>
        <translation>so viele Elemente hat keine Nachricht</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no size</source>
        <translation>„%1“ ist keine Größe</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no number</source>
        <translation>„%1“ ist keine Zahl</translation>
    </message>
    <message>
        <source>%1 is no constant</source>
        <translation>%1 ist keine Konstante</translation>
    </message>
    <message>
        <source>a text cannot be calculated with</source>
        <translation>mit einem Text kann nicht gerechnet werden</translation>
    </message>
    <message>
        <source>a value that cannot be calculated</source>
        <translation>ein Wert, der nicht berechnet werden kann</translation>
    </message>
    <message>
        <source>the schema is too large: %1 bytes</source>
        <translation>das Schema ist zu groß: %1 Bytes</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no name of a type</source>
        <translation>„%1“ ist kein Name eines Typs</translation>
    </message>
    <message>
        <source>a name is missing behind the type</source>
        <translation>hinter dem Typ fehlt ein Name</translation>
    </message>
    <message>
        <source>%1 cannot be a constant</source>
        <translation>%1 kann keine Konstante sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is too much</source>
        <translation>„%1“ ist zu viel</translation>
    </message>
    <message>
        <source>%1 is part of itself</source>
        <translation>%1 ist Teil von sich selbst</translation>
    </message>
    <message>
        <source>%1 is nested too deeply</source>
        <translation>%1 ist zu tief verschachtelt</translation>
    </message>
    <message>
        <source>%1 has parts nested too deeply</source>
        <translation>%1 hat zu tief verschachtelte Teile</translation>
    </message>
    <message>
        <source>line %1, column %2: %3</source>
        <translation>Zeile %1, Spalte %2: %3</translation>
    </message>
    <message>
        <source>Default: %1</source>
        <translation>Vorgabe: %1</translation>
    </message>
    <message>
        <source>there is no struct in it</source>
        <translation>es steht keine Struktur darin</translation>
    </message>
</context>
<context>
    <name>StreamProblem</name>
    <message>
        <source>nothing that follows can be read, because nothing else tells where a message begins</source>
        <translation>nichts, was folgt, kann gelesen werden, denn nichts sonst sagt, wo eine Nachricht beginnt</translation>
    </message>
    <message>
        <source>inside a message of %1 bytes</source>
        <translation>in einer Nachricht von %1 Bytes</translation>
    </message>
    <message>
        <source>a signature breaks off</source>
        <translation>eine Signatur bricht ab</translation>
    </message>
    <message>
        <source>%1 bytes of payload instead of %2</source>
        <translation>%1 Bytes Nutzdaten statt %2</translation>
    </message>
    <message>
        <source>incompatibility flags 0x%1</source>
        <translation>Inkompatibilitäts-Flags 0x%1</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 Byte</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Bytes</translation>
    </message>
    <message>
        <source>checksum failure</source>
        <translation>Prüfsummenfehler</translation>
    </message>
    <message>
        <source>length does not fit the message type</source>
        <translation>Länge passt nicht zum Nachrichtentyp</translation>
    </message>
    <message>
        <source>frame with an unsupported feature</source>
        <translation>Rahmen mit einer nicht unterstützten Eigenschaft</translation>
    </message>
    <message>
        <source>%1 skipped</source>
        <translation>%1 übersprungen</translation>
    </message>
    <message>
        <source>stream ends early</source>
        <translation>Datenstrom endet vorzeitig</translation>
    </message>
    <message>
        <source>stream ends inside a frame, after %1</source>
        <translation>Datenstrom endet in einem Rahmen, nach %1</translation>
    </message>
    <message>
        <source>reading failed</source>
        <translation>Lesen fehlgeschlagen</translation>
    </message>
    <message>
        <source>not decodable</source>
        <translation>nicht dekodierbar</translation>
    </message>
    <message>
        <source>messages are not in the order of their times</source>
        <translation>Nachrichten sind nicht in der Reihenfolge ihrer Zeiten</translation>
    </message>
    <message>
        <source>message of the server</source>
        <translation>Nachricht des Servers</translation>
    </message>
    <message>
        <source>annotation</source>
        <translation>Annotation</translation>
    </message>
    <message>
        <source>%1 is gone</source>
        <translation>%1 ist verschwunden</translation>
    </message>
    <message>
        <source>, id %1</source>
        <translation>, ID %1</translation>
    </message>
    <message>
        <source>, sender %1</source>
        <translation>, Sender %1</translation>
    </message>
</context>
<context>
    <name>StreamSource</name>
    <message>
        <source>%1 at byte %2: %3</source>
        <translation>%1 bei Byte %2: %3</translation>
    </message>
    <message>
        <source> (%1 times since byte %2)</source>
        <translation> (%1-mal seit Byte %2)</translation>
    </message>
</context>
<context>
    <name>TopicFilter</name>
    <message>
        <source>the filter of topics is empty</source>
        <translation>der Filter der Themen ist leer</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: a wildcard stands for whole levels</source>
        <translation>„%1“: ein Platzhalter steht für ganze Ebenen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands only at the end</source>
        <translation>„%1“ steht nur am Ende</translation>
    </message>
</context>
</TS>
