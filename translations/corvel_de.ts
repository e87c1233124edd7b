<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Annotations</name>
    <message>
        <source>cannot be read: not a file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot be read: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot be read: larger than %1 bytes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>malformed JSON: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the key &quot;%1&quot; is there twice</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unknown message type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not an object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not an object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unknown key &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no message type has that field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unknown field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the role &quot;%1&quot; is neither &quot;primary&quot; nor &quot;secondary&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;confidential&quot; is neither true nor false</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not an array</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a virtual field is not an object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a virtual field without a name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;decimals&quot; is not a number from 0 to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there already is a field of that name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a virtual field without an expression</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;=&quot; in the expression: a comparison is written &quot;==&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the expression cannot be understood: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the expression has several results</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the expression names &quot;%1&quot;, which is no field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the expression names &quot;%1&quot;, which has several values: name one as in &quot;%1_0&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the expression names &quot;%1&quot;, which is no sub-message</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the expression names &quot;%1&quot;, which is no number</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ByteInput</name>
    <message>
        <source>standard input</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no answer within %1 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the port is in use by another program</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it has no other places to go to</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ConnectDialog</name>
    <message>
        <source>Definitions (*.xml *.proto *.desc *.pb *.bin);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Port:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UDP: listen for datagrams</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TCP: connect to a server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>WebSocket: a Foxglove server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A recording or a device file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Standard input</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Kind of source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Where the messages come from</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Port</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The number of the port</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recordings (*.tlog *.mavlink *.mcap *.osi *.bin);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Kind:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bro&amp;wse...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>those in use, or those that the source brings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File of definitions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A MAVLink dialect (.xml), or a Protocol Buffers schema (.proto or a descriptor set)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>folders of imported files, divided by &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Folders of imports</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Where a .proto file&apos;s imports are looked for; its own folder always is</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Message type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The one type of all messages, for sources that do not say what they send</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>told by the source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>variable length (varint) before each message</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>32-bit length before each message</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>one message a datagram</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Framing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How messages lie in the stream</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Load Definitions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Definitions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;File:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Imports:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Message &amp;type:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>F&amp;raming:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What is wrong</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Co&amp;nnect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Address to listen on:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Host:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Address:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a file.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>EventLogTableWidget</name>
    <message>
        <source>Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Message</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>N/A</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FieldInfo</name>
    <message>
        <source>not available</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(1 byte)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(%1 bytes)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FieldValueLabel</name>
    <message>
        <source>N/A</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> [...]</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FindBar</name>
    <message>
        <source>Type, field or value, or a path such as */ATTITUDE/roll</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find in the message tree</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Matches</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Find:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Find...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find &amp;Next</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find &amp;Previous</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Previous match</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Previous match (Shift+F3)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Next match</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Next match (F3)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close the find bar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close and show everything (Esc)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not a path yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 match</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 matches</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FormPanel</name>
    <message>
        <source>Select message types in the list to see them here as forms.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Message forms</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FoxgloveInput</name>
    <message>
        <source>cancelled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it does not speak the Foxglove protocol: no greeting within %1 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no answer within %1 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it does not speak the Foxglove protocol</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>InputAddress</name>
    <message>
        <source>no input is named</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: &quot;%2&quot; is no port; ports are 1 to 65535</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: &quot;%2&quot; is no address to listen on; it is written in numbers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: no host is named</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the bracket of the IPv6 address is not closed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no IPv6 address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>an IPv6 address stands in brackets</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not expected behind the host</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: this is no address; ws://HOST:PORT is one</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Corvel Monitor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The definitions could not be loaded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The annotations have faults; the rest of them is used.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 – Corvel Monitor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing is open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tick a message type in the list to see its fields here, or add all of them from the tool bar.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Waiting for messages from %1 ...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open a recording or connect to a vehicle from the File menu, or drop a recording here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Message tree</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Message types</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Watches</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Message Types</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Forms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Message statistics</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Events</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last problem</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Open Recording...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Simulated Vehicle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Load &amp;Definitions...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save &amp;Events as CSV...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Clear Events</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Add All Types</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+Shift+A</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Remove All Types</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add &amp;New Types Automatically</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Collapse All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Expand All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Virtual Fields</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Primary Fields Only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Con&amp;fidential Data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show fields that are marked as confidential</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Tree</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Columns</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tree</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All senders</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sender shown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Whose messages the tree, the forms and the values show</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Events</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comma-separated values (*.csv);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No recordings yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Load Definitions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MAVLink dialects (*.xml);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 sources</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 sources – Corvel Monitor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 messages   %2 /s   %3 kB/s   %4 not displayed   %5 checksum failures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pause &amp;Views</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>F8</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Let the views stand still while what arrives is counted and recorded (F8)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The views are paused. What arrives is counted and recorded all the same; press %1 to catch up.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Double-click an event, or press Return, to go to its time in the recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Playback</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No recording that is open has this time.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Paused views</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sources</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Plot</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Message types appear here as they are received.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connect to a device, or drop a recording on the window.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How often and how regularly messages come is told here once some were received.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing happened yet: losses, checksum failures and changes of sources appear here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Co&amp;nnect...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+K</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Record...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+R</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>S&amp;top Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>C&amp;lose Source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+W</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save S&amp;tatistics as CSV...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Recordings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recordings (*.tlog *.mavlink *.mcap *.bin *.raw);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Statistics</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MAVLink recordings (*.tlog)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MCAP recordings (*.mcap)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The definitions are used from here on, also for what is open.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MavlinkDialect</name>
    <message>
        <source>%1 to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>at least %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>at most %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 more errors</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no message definitions: the outermost element is &lt;%1&gt; instead of &lt;mavlink&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>malformed XML: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>an enum without a name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>an enum entry without a name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: the value &quot;%2&quot; is not a number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a message without a name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: the id &quot;%2&quot; is not a number from 0 to %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a field without a name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: the array length of &quot;%2&quot; is not a number from 1 to %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: unknown type &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot be read: not a file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot be read: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot be read: larger than %1 bytes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>files include each other: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the included file &quot;%1&quot; %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>more than %1 files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>more than %1 bytes in all files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the entry %1 of %2 is already defined at %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: the id %2 is already that of %3 at %4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: the name is already taken at %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: the field %2 is there twice</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: the payload is longer than %2 bytes with the field %3</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>McapIndex</name>
    <message>
        <source>%1: this is no MCAP file</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MessageStatisticsWidget</name>
    <message>
        <source>Message</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Count</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current rate/interval</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Gaps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CRC Errors</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MessageTreeWidget</name>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Raw value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Custom 1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Custom 2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Custom 3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Custom 4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Custom 5</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Custom 6</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Custom 7</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Custom 8</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Custom 9</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Custom 10</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Column type %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Duplicate column</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Attempt to add to a MessageTreeWidget a column that is already present: %1. Duplicate column was not added.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Raw Value</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MessageTreeWidgetItem</name>
    <message>
        <source>No message type set</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Message</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No message</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hidden data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Due to confidentiality, the data in this message has been (partly) hidden.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MessageTypeModel</name>
    <message>
        <source>Unknown %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 /s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The loaded definitions do not know this type; its messages are counted only.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sender</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Count</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rate</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MessageWidget</name>
    <message>
        <source>No message type set</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PathExpression</name>
    <message>
        <source>character %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>this part has one level only; a separator in a name is written \/</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no bracket was opened; one in a name is written \]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>only an index can stand here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nothing can stand here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the name before the # is missing; this character in a name is written \#</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the character behind the \ is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>only / * # [ ] and \ can stand behind a \, or 0 alone for an empty name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the wildcard stands alone; a star in a name is written \*</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a number from 1 must follow the #; this character in a name is written \#</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>only fields have an index; a bracket in a name is written \[</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the ] is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>an index is a number or *</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nothing can stand behind an index</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the path has too many levels</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PathExpressionComboBox</name>
    <message>
        <source>Null path expression set!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Null options source path expression set!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No options</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PathExpressionLabel</name>
    <message>
        <source>No path expression set!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PathExpressionLineEdit</name>
    <message>
        <source>No path expression set!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PathExpressionListWidget</name>
    <message>
        <source>Null options source path expression set!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No options</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PinnedTypes</name>
    <message>
        <source>pinned</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PlaybackBar</name>
    <message>
        <source>Playback</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Play or Pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+Space</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Step One Message</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop &amp;Reading</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End reading here; what was read stays</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 x</source>
        <comment>speed of playback</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>As fast as possible</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Speed of playback</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How fast the recording is played</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Place in the recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Where the recording is; counts and statistics begin anew where you go</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Part of the recording that was read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time in the recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go to time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time to go to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A time to go to: 14:05:30 (UTC), +1:30 since the start, or 2015-07-05 14:05:30</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Go to Time...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+G</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pause the recording (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Play the recording (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the next message and stop there (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 UTC</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 UTC   %2 / %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no time; a time is written as 14:05:30, +1:30 or 2015-07-05 14:05:30.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PlotPanel</name>
    <message>
        <source>Plot</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag a number from the message tree here, or choose Plot in its context menu (Ctrl+G).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Let the picture stay; what comes is kept (Space)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time that is shown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How much time is shown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show less time (turn the wheel; Shift and drag shows a rectangle)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show more time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show all the time that is kept, and pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove the chosen series (Del)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove all series</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Picture...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save the plot as a PNG picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Values...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save the values as CSV</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Plotted fields</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No more than %1 series can be plotted at a time.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PNG pictures (*.png);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comma-separated values (*.csv);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PlotView</name>
    <message>
        <source>without unit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 UTC</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PreferencesDialog</name>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Display</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> Hz</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Updates:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How often the views show what is new. Every message is counted and recorded at any rate.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>exact</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Decimals:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Digits behind the point of floating-point numbers. Raw values are always exact.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>As the system</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Light</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dark</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Colours:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The colours of all windows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Highlight values that change</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Messages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>never</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> intervals</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Grey types after:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How many of its intervals without a message make a type count as silent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Annotation file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Annotations:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A file that adds roles, confidentiality and computed fields to the definitions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show con&amp;fidential data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fields that their owner marked as confidential can then be read by anybody who sees this screen, also in pictures, copies and plots. The program forgets this choice when it ends.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Annotations</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Annotations (*.json);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ProtobufFormat</name>
    <message>
        <source>the schema has no message type &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no schema is loaded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no schema has a message type &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no such folder to import from</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>an import path has another file of that name: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot be understood</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not decoded: longer than %1 bytes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot be parsed to its end</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the required field &quot;%1&quot; is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the schema is longer than %1 bytes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the schema is empty</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the schema is no serialized FileDescriptorSet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>and more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>byte %1: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 at byte %2: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a group does not end</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the number of a field breaks off; the rest is not decoded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no number of a field; the rest is not decoded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a number breaks off; the rest is not decoded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a length breaks off; the rest is not decoded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>claims %1 bytes where %2 are left; the rest is not decoded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nested too deeply; it is not decoded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the end of a group that did not begin; the rest is not decoded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>an unknown kind of value; the rest is not decoded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nested too deeply; the rest is not decoded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not valid UTF-8; wrong bytes are shown as question marks</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Gaps start</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Missing epochs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Duration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Message statistics for the messages
in the %1 format.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (unknown)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number of times the %1
message has been received.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Most recent regular rate/interval at which the %1
message has been received.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Detected gaps in regular data segments with valid time, if any.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rates/Intervals</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The rates/intervals in which this message has been received,
together with the corresponding count.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>N/A</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (%2 epochs)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The number of times this message 
has been received without a valid time tag.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown interval/rate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number of times this message has been received 
with a valid time tag but for which the interval 
could not be determined: 
there was no previous message with valid time, 
and the following messages did not 
come in at a regular rate.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number of times the messages was received
with the same time stamp as previous.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number of times the message was received at %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Gaps, with time and duration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Gaps (incomplete list)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Gaps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Column %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No field set</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No values for optional field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 %2s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Optional submessage not present</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No value for optional field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>string</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ReceptionMonitor</name>
    <message>
        <source>bytes skipped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the time of messages goes back by %1 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the time of messages goes back</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the time of messages leaps by %1 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the time of messages leaps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: receiving</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: ended</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: failed: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unknown message %1, sender %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Recorder</name>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording to %1 ended: %2. What is in the file can be read.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RecordingFile</name>
    <message>
        <source>the disk is too slow for what arrives</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RecordingOpener</name>
    <message>
        <source>the input is empty</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no lengths of messages found that lead from one to the next</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>these look like messages of Protocol Buffers with lengths between them; a schema and a type must be named to read them</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no MAVLink frames found, and it is no MCAP recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a schema and a type must be named to read messages of Protocol Buffers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the schema has several types; one of them must be named</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RowToolTips</name>
    <message>
        <source>Path:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sender:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Silent:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>message type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>computed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>optional</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>confidential</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unit:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Range:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Raw value:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SettingsFile</name>
    <message>
        <source>The settings were damaged. They were put aside as %1, and the program starts with its defaults.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The settings in %1 cannot be read.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SilenceWatch</name>
    <message>
        <source>%1 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no message for %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no message for %1, since %2 UTC</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SourceFactory</name>
    <message>
        <source>The definitions could not be loaded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>simulated vehicle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>standard input</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The schema could not be loaded.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SourceModel</name>
    <message>
        <source>%1 (%2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, recorded %2 in %3</source>
        <comment>state, size, duration</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 /s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>State</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rate</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SourcePanel</name>
    <message>
        <source>&amp;Reconnect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recor&amp;d...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>C&amp;lose</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sources</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Co&amp;nnect...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open another source: UDP, TCP, a file, with its definitions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open the chosen source anew, now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close the chosen source, and forget what it received</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop Recor&amp;ding</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Finish the recording in %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write down what arrives, byte for byte</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SourceSession</name>
    <message>
        <source>%1 is being read; a recording of it needs another name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: recording to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: recorded to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: the end of %2 could not be written</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The end of %1 could not be written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: other definitions (%2); what came before was counted without them</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: jumped to %2; counts and statistics begin there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: read again from the beginning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>opening</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>receiving</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ended</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>failed: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ended, again in %1 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>again in %1 s: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 @ %2</source>
        <comment>sender and source</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: the system dropped %2 datagrams, which came faster than they could be taken</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StreamSource</name>
    <message>
        <source>%1 at byte %2: %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> (%1 times since byte %2)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TreeActions</name>
    <message>
        <source>&amp;Copy Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy &amp;Raw Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+Shift+C</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy &amp;Path</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+Alt+C</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy as &amp;JSON</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+J</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Watch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+Shift+W</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>P&amp;lot</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+G</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pi&amp;n</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unpi&amp;n %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pi&amp;n %1 to the Top</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is nothing to copy yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copied: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Only numbers can be plotted.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TreeTools</name>
    <message>
        <source>%1 names no field that can be plotted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Settings...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+,</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Watch</name>
    <message>
        <source>&amp;Rename...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Re&amp;move</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Watch %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No loaded definition has this field.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>More than one field has this name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rename Watch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Name of %1:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WatchBar</name>
    <message>
        <source> s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>never</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time-out of watches</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How long a pinned value stays when no message brings a new one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time-&amp;out:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WatchEditor</name>
    <message>
        <source>&amp;Pin</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Message type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Watch:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Path expression</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A path such as */ATTITUDE/roll; Return takes it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep this value in sight below</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a field</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n field(s)</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
</context>
</TS>
