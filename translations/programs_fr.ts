<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR">
<context>
    <name>AddressForm</name>
    <message>
        <source>none found; another can be typed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Kind of source</source>
        <translation>Sorte de source</translation>
    </message>
    <message>
        <source>Where the messages come from</source>
        <translation>D’où viennent les messages</translation>
    </message>
    <message>
        <source>&amp;Kind:</source>
        <translation>&amp;Sorte&#xa0;:</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>&amp;Parcourir...</translation>
    </message>
    <message>
        <source>Choose a file</source>
        <translation>Choisir un fichier</translation>
    </message>
    <message>
        <source>Open Recording</source>
        <translation>Ouvrir un enregistrement</translation>
    </message>
    <message>
        <source>R&amp;efresh</source>
        <translation>&amp;Actualiser</translation>
    </message>
    <message>
        <source>Look again what is there to choose from</source>
        <translation type="unfinished"></translation>
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
        <translation>Octets</translation>
    </message>
    <message>
        <source>Show &amp;Bytes</source>
        <translation>Afficher les &amp;octets</translation>
    </message>
    <message>
        <source>Ctrl+B</source>
        <translation>Ctrl+B</translation>
    </message>
    <message>
        <source>Hidden data: messages of this type have confidential fields.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a row in the tree, or a message under Messages, to see its bytes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The message has no bytes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 octets</translation>
    </message>
    <message>
        <source>chosen under Messages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the newest</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>bit %1 of byte %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>bits %1 of byte %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>byte %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>bytes %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a field in the tree, or a byte.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not in this message</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>needs no bytes in this message: it has its usual value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>computed, and in no bytes of its own</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nobody can tell where it stands in these bytes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>none of a field</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ComparePanel</name>
    <message>
        <source>Only what differs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Compared values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>C&amp;ompare</source>
        <translation>C&amp;omparer</translation>
    </message>
    <message>
        <source>Ctrl+Shift+D</source>
        <translation>Ctrl+Shift+D</translation>
    </message>
    <message>
        <source>Shows the rows that are chosen beside one another, two or more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The first %1 rows are compared.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Field</source>
        <translation>Champ</translation>
    </message>
    <message>
        <source>Marked where the values differ</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Differs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>[time]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing came of these yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 differ</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Valeur</translation>
    </message>
    <message>
        <source>differs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose two or more rows of the message tree, and Compare in their context menu.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ComparedRow</name>
    <message>
        <source>%1 in all</source>
        <translation>%1 en tout</translation>
    </message>
    <message>
        <source>Hidden data</source>
        <translation>Données masquées</translation>
    </message>
</context>
<context>
    <name>ConfidentialAction</name>
    <message>
        <source>Con&amp;fidential Data</source>
        <translation>Données con&amp;fidentielles</translation>
    </message>
    <message>
        <source>Show fields that are marked as confidential</source>
        <translation>Afficher les champs marqués comme confidentiels</translation>
    </message>
</context>
<context>
    <name>ConnectDialog</name>
    <message>
        <source>Connect</source>
        <translation>Connexion</translation>
    </message>
    <message>
        <source>Bro&amp;wse...</source>
        <translation>P&amp;arcourir...</translation>
    </message>
    <message>
        <source>File of definitions</source>
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
        <source>Message type</source>
        <translation>Type de message</translation>
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
        <translation>Charger des définitions</translation>
    </message>
    <message>
        <source>Definitions</source>
        <translation>Définitions</translation>
    </message>
    <message>
        <source>&amp;File:</source>
        <translation>&amp;Fichier&#xa0;:</translation>
    </message>
    <message>
        <source>&amp;Imports:</source>
        <translation>&amp;Importations&#xa0;:</translation>
    </message>
    <message>
        <source>Messa&amp;ge type:</source>
        <translation>&amp;Type de message&#xa0;:</translation>
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
        <source>C&amp;onnect</source>
        <translation>Co&amp;nnecter</translation>
    </message>
    <message>
        <source>Choose a file.</source>
        <translation>Choisir un fichier.</translation>
    </message>
    <message>
        <source>those in use, or the source&apos;s own</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A MAVLink dialect (.xml), a Protocol Buffers schema (.proto or a descriptor set), a definition of ROS 2 or DDS (.msg, .idl), or a JSON schema (.schema.json)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Where files that a schema imports are looked for; its own folder always is</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recent connections</source>
        <translation>Connexions récentes</translation>
    </message>
    <message>
        <source>Fill in what was used before</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>what to call it; else its address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>What the list of sources and the names of senders call it, and the recent connections</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Re&amp;cent:</source>
        <translation>Ré&amp;centes&#xa0;:</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>N&amp;om&#xa0;:</translation>
    </message>
    <message>
        <source>choose to fill in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>name, address</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Rate:</source>
        <translation>Fréquence&#xa0;:</translation>
    </message>
</context>
<context>
    <name>CsvFile</name>
    <message>
        <source>Comma-separated values (*.csv);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 ne peut pas être écrit&#xa0;: %2</translation>
    </message>
    <message>
        <source>Saved: %1</source>
        <translation>Enregistré : %1</translation>
    </message>
</context>
<context>
    <name>Demonstration</name>
    <message>
        <source>simulated vehicle</source>
        <translation>véhicule simulé</translation>
    </message>
    <message>
        <source>&amp;Simulated Vehicle</source>
        <translation>&amp;Véhicule simulé</translation>
    </message>
    <message>
        <source>simulated robot</source>
        <translation>robot simulé</translation>
    </message>
    <message>
        <source>S&amp;imulated Robot</source>
        <translation>&amp;Robot simulé</translation>
    </message>
    <message>
        <source>simulated fleet</source>
        <translation>flotte simulée</translation>
    </message>
    <message>
        <source>Si&amp;mulated Fleet</source>
        <translation>F&amp;lotte simulée</translation>
    </message>
</context>
<context>
    <name>Desk</name>
    <message>
        <source>No recording that is open has this time.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DockLayout</name>
    <message>
        <source>More</source>
        <translation>Plus</translation>
    </message>
</context>
<context>
    <name>EventCauses</name>
    <message>
        <source>Hidden data</source>
        <translation>Données masquées</translation>
    </message>
    <message>
        <source>The list is full with %1 rows: all others are counted here; last: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>more than %1 different ones, all others; last: %2</source>
        <translation type="unfinished"></translation>
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
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 UTC</source>
        <translation>%1 UTC</translation>
    </message>
    <message>
        <source>Severity</source>
        <translation>Gravité</translation>
    </message>
    <message>
        <source>How bad it is; of what vehicles say, as they say</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Nombre</translation>
    </message>
    <message>
        <source>How often it happened</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Event</source>
        <translation>Événement</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>Whose message is concerned, or where it comes from</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>First</source>
        <translation>Premier</translation>
    </message>
    <message>
        <source>By the time of the messages (UTC), as in a recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last</source>
        <translation>Dernier</translation>
    </message>
    <message>
        <source>First Seen</source>
        <translation>Vu d’abord</translation>
    </message>
    <message>
        <source>By the clock of this computer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last Seen</source>
        <translation>Vu en dernier</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>What such events are called, or the message type that brings them</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>EventPanel</name>
    <message>
        <source>Events</source>
        <translation>Événements</translation>
    </message>
    <message>
        <source>Nothing happened yet: losses, checksum failures and changes of sources appear here.</source>
        <translation>Rien encore&#xa0;: les pertes, les sommes de contrôle erronées et les changements des sources apparaissent ici.</translation>
    </message>
    <message>
        <source>Save &amp;Events as CSV...</source>
        <translation>Enregistrer les é&amp;vénements en CSV...</translation>
    </message>
    <message>
        <source>&amp;Clear Events</source>
        <translation>&amp;Effacer les événements</translation>
    </message>
    <message>
        <source>Save Events</source>
        <translation>Enregistrer les événements</translation>
    </message>
    <message>
        <source>Whole Recording</source>
        <translation>Tout l’enregistrement</translation>
    </message>
    <message>
        <source>Played</source>
        <translation>Joué</translation>
    </message>
    <message>
        <source>What there is in all of the recording that is chosen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What happened so far, in all sources</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What the events are about</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Event or source</source>
        <translation>Événement ou source</translation>
    </message>
    <message>
        <source>Show only these events</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Everything</source>
        <translation>Tout</translation>
    </message>
    <message>
        <source>Warnings and Errors</source>
        <translation>Avertissements et erreurs</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>Erreurs</translation>
    </message>
    <message>
        <source>How bad events must be to be shown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Double-click an event, or press Return, to go to its first time in the recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In the Order They Came</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 hidden</source>
        <comment>events</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looking through the recording: %1 %</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No event is like that.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Go to This Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Go to the First</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go to the La&amp;st</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copier</translation>
    </message>
    <message>
        <source>Load &amp;Definitions...</source>
        <translation>Charger des &amp;définitions...</translation>
    </message>
    <message>
        <source>Clea&amp;r Events</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Co&amp;lumns</source>
        <translation>Co&amp;lonnes</translation>
    </message>
    <message>
        <source>No event is in this recording; gaps and losses are in the statistics.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExpressionLine</name>
    <message>
        <source>E&amp;xpression:</source>
        <translation>E&amp;xpression&#xa0;:</translation>
    </message>
    <message>
        <source>Expression</source>
        <translation>Expression</translation>
    </message>
    <message>
        <source>&amp;Draw</source>
        <translation>&amp;Tracer</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Lines by their letters, and fields by their paths: a - b, sqrt(a^2 + b^2), deg(&quot;corvel/ATTITUDE/roll&quot;)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Return draws it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>character %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FieldSummary</name>
    <message>
        <source>Hidden data</source>
        <translation>Données masquées</translation>
    </message>
</context>
<context>
    <name>FieldValueLabel</name>
    <message>
        <source>N/A</source>
        <translation>n. d.</translation>
    </message>
</context>
<context>
    <name>FileFilters</name>
    <message>
        <source>All files</source>
        <translation>Tous les fichiers</translation>
    </message>
    <message>
        <source>Recordings</source>
        <translation>Enregistrements</translation>
    </message>
    <message>
        <source>Definitions</source>
        <translation>Définitions</translation>
    </message>
</context>
<context>
    <name>FileMenu</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>&amp;Open Recording...</source>
        <translation>&amp;Ouvrir un enregistrement...</translation>
    </message>
    <message>
        <source>Co&amp;nnect...</source>
        <translation>Co&amp;nnecter...</translation>
    </message>
    <message>
        <source>Ctrl+K</source>
        <translation>Ctrl+K</translation>
    </message>
    <message>
        <source>&amp;Record...</source>
        <translation>En&amp;registrer...</translation>
    </message>
    <message>
        <source>Ctrl+R</source>
        <translation>Ctrl+R</translation>
    </message>
    <message>
        <source>S&amp;top Recording</source>
        <translation>Arrê&amp;ter l’enregistrement</translation>
    </message>
    <message>
        <source>C&amp;lose Source</source>
        <translation>&amp;Fermer la source</translation>
    </message>
    <message>
        <source>Ctrl+W</source>
        <translation>Ctrl+W</translation>
    </message>
    <message>
        <source>Load &amp;Definitions...</source>
        <translation>Charger des &amp;définitions...</translation>
    </message>
    <message>
        <source>Open Recordings</source>
        <translation>Ouvrir des enregistrements</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Enregistrer</translation>
    </message>
    <message>
        <source>Load Definitions</source>
        <translation>Charger des définitions</translation>
    </message>
    <message>
        <source>The definitions are used from here on, also for what is open.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open &amp;Folder...</source>
        <translation>Ouvrir un do&amp;ssier...</translation>
    </message>
    <message>
        <source>Open the Folder of a Recording</source>
        <translation>Ouvrir le dossier d’un enregistrement</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Connexion</translation>
    </message>
    <message>
        <source>Open recordings (%1)</source>
        <translation>Ouvrir des enregistrements (%1)</translation>
    </message>
    <message>
        <source>Listen to a device: UDP, TCP, a serial port, a broker (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Finish the recording in %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write down what the chosen source brings, byte for byte</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A file of definitions says what it means; choose it here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing yet</source>
        <translation>Rien encore</translation>
    </message>
    <message>
        <source>O&amp;pen Recent</source>
        <translation>Ouvrir un ré&amp;cent</translation>
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
        <source>&amp;Find...</source>
        <translation>&amp;Chercher...</translation>
    </message>
    <message>
        <source>Find &amp;Next</source>
        <translation>Chercher le &amp;suivant</translation>
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
        <translation>Rien trouvé</translation>
    </message>
    <message>
        <source>1 match</source>
        <translation>1 résultat</translation>
    </message>
    <message>
        <source>%1 matches</source>
        <translation>%1 résultats</translation>
    </message>
    <message>
        <source>Looking ...</source>
        <translation>Recherche ...</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Chercher</translation>
    </message>
    <message>
        <source>Show only what matches a text (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fi&amp;nd:</source>
        <translation>C&amp;hercher&#xa0;:</translation>
    </message>
    <message>
        <source>Find Pre&amp;vious</source>
        <translation>Chercher le pré&amp;cédent</translation>
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
    <message>
        <source>Hidden data</source>
        <translation>Données masquées</translation>
    </message>
</context>
<context>
    <name>LayoutMenu</name>
    <message>
        <source>&amp;Layouts</source>
        <translation>&amp;Dispositions</translation>
    </message>
    <message>
        <source>&amp;Reset</source>
        <translation>&amp;Réinitialiser</translation>
    </message>
    <message>
        <source>&amp;Save As...</source>
        <translation>&amp;Enregistrer sous...</translation>
    </message>
    <message>
        <source>Re&amp;move</source>
        <translation>Suppri&amp;mer</translation>
    </message>
    <message>
        <source>Save Layout</source>
        <translation>Enregistrer la disposition</translation>
    </message>
    <message>
        <source>&amp;Name; one that exists is replaced:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LineActions</name>
    <message>
        <source>Move to the Plot Above</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move to a Plot Below</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Derivative</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Moving Average</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Degrees or Radians</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>Difference</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Expression...</source>
        <translation type="unfinished"></translation>
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
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>&amp;Tree</source>
        <translation>&amp;Arbre</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Vues</translation>
    </message>
    <message>
        <source>Pause &amp;Views</source>
        <translation>Suspendre les &amp;vues</translation>
    </message>
    <message>
        <source>F8</source>
        <translation>F8</translation>
    </message>
    <message>
        <source>Let the views stand still while what arrives is counted and recorded (F8)</source>
        <translation>Figer les vues pendant que ce qui arrive est compté et enregistré (F8)</translation>
    </message>
    <message>
        <source>&amp;Playback</source>
        <translation>&amp;Lecture</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Édition</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>Aid&amp;e</translation>
    </message>
    <message>
        <source>&amp;About Corvel Monitor</source>
        <translation>À &amp;propos de Corvel Monitor</translation>
    </message>
    <message>
        <source>About &amp;Qt</source>
        <translation>À propos de &amp;Qt</translation>
    </message>
    <message>
        <source>About Corvel Monitor</source>
        <translation>À propos de Corvel Monitor</translation>
    </message>
    <message>
        <source>Corvel Monitor %1

Shows what a device says: every field of every message type, live; how regularly messages arrive; what went missing, what went wrong, and when.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Settings...</source>
        <translation>&amp;Paramètres...</translation>
    </message>
    <message>
        <source>Ctrl+,</source>
        <translation>Ctrl+,</translation>
    </message>
    <message>
        <source>Free software under the licence %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Free software: its own source is under the licence %1; as a whole, with the library that draws the plot, it is under %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Tool Bar</source>
        <translation>Barre d’outils</translation>
    </message>
    <message>
        <source>There is nothing open to record.</source>
        <translation>Rien n’est ouvert qui puisse être enregistré.</translation>
    </message>
</context>
<context>
    <name>MessageHistory</name>
    <message>
        <source>Reading %1: %2 %</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MessageList</name>
    <message>
        <source>Not noted: nobody could see the list.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Heure</translation>
    </message>
    <message>
        <source>Interval</source>
        <translation>Intervalle</translation>
    </message>
    <message>
        <source>Sender</source>
        <translation>Émetteur</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Numéro</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Octets</translation>
    </message>
    <message>
        <source>Values</source>
        <translation>Valeurs</translation>
    </message>
    <message>
        <source>Time since the one before of the same type and sender</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What the sender numbered it</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MessageTypeModel</name>
    <message>
        <source>Unknown %1</source>
        <translation>Inconnu %1</translation>
    </message>
    <message>
        <source>The loaded definitions do not know this type; its messages are counted only.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>Sender</source>
        <translation>Émetteur</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Nombre</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Fréquence</translation>
    </message>
    <message>
        <source>Without a name</source>
        <translation>Sans nom</translation>
    </message>
    <message>
        <source>Sender and Type</source>
        <translation>Émetteur et type</translation>
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
        <translation>toutes les %1</translation>
    </message>
    <message>
        <source>now</source>
        <translation>maintenant</translation>
    </message>
    <message>
        <source>%1 ago</source>
        <translation>il y a %1</translation>
    </message>
    <message>
        <source>Unknown types</source>
        <translation>Types inconnus</translation>
    </message>
    <message>
        <source>Identifiers that no definition knows: types whose definitions are not loaded, and damaged frames</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The rate that the messages keep, as the statistics have it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Range</source>
        <translation>Plage</translation>
    </message>
    <message>
        <source>The slowest and the fastest rate there was, without the rarest twentieth</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Gaps</source>
        <translation>Lacunes</translation>
    </message>
    <message>
        <source>Times in which messages did not come although they were due</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lost</source>
        <translation>Perdus</translation>
    </message>
    <message>
        <source>Numbers that the sender skipped, of all of its types together</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Age</source>
        <translation>Âge</translation>
    </message>
    <message>
        <source>Since when nothing came, in the recording&apos;s own time where it is one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Octets</translation>
    </message>
</context>
<context>
    <name>MessagesPanel</name>
    <message>
        <source>&amp;Newest</source>
        <translation>&amp;Dernier</translation>
    </message>
    <message>
        <source>Lets the list go on to the newest message</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>&amp;Go to Its Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy as &amp;JSON</source>
        <translation>Copier en &amp;JSON</translation>
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
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing came of these types yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No more than the last %1 MB are kept</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The last %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copied: %1</source>
        <translation>Copié&#xa0;: %1</translation>
    </message>
    <message>
        <source>Not copied: some of it is hidden.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Newer: %1 and more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Newer: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show &amp;Bytes</source>
        <translation>Afficher les &amp;octets</translation>
    </message>
    <message>
        <source>Ctrl+B</source>
        <translation>Ctrl+B</translation>
    </message>
    <message>
        <source>&amp;Copy Bytes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looking for messages in the recording...</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Opener</name>
    <message>
        <source>The annotations have faults; the rest of them is used.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The definitions could not be loaded.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Panel</name>
    <message>
        <source>Message Tree</source>
        <translation>Arbre des messages</translation>
    </message>
    <message>
        <source>Watches</source>
        <translation>Valeurs suivies</translation>
    </message>
    <message>
        <source>Sources</source>
        <translation>Sources</translation>
    </message>
    <message>
        <source>Message Types</source>
        <translation>Types de messages</translation>
    </message>
    <message>
        <source>Forms</source>
        <translation>Formulaires</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Statistiques</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Événements</translation>
    </message>
    <message>
        <source>Plot</source>
        <translation>Courbes</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Lecture</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>Comparison</source>
        <translation>Comparaison</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Octets</translation>
    </message>
</context>
<context>
    <name>PauseBanner</name>
    <message>
        <source>The views are paused. What arrives is counted and recorded all the same.</source>
        <translation>Les vues sont suspendues. Ce qui arrive est compté et enregistré malgré tout.</translation>
    </message>
    <message>
        <source>Resume (%1)</source>
        <translation>Reprendre (%1)</translation>
    </message>
</context>
<context>
    <name>PinnedTypes</name>
    <message>
        <source>pinned</source>
        <translation>épinglé</translation>
    </message>
</context>
<context>
    <name>PlaybackBar</name>
    <message>
        <source>&amp;Play or Pause</source>
        <translation>&amp;Lecture ou pause</translation>
    </message>
    <message>
        <source>Ctrl+Space</source>
        <translation>Ctrl+Space</translation>
    </message>
    <message>
        <source>&amp;Step One Message</source>
        <translation>Avancer d’un &amp;message</translation>
    </message>
    <message>
        <source>Ctrl+.</source>
        <translation>Ctrl+.</translation>
    </message>
    <message>
        <source>Stop &amp;Reading</source>
        <translation>A&amp;rrêter de lire</translation>
    </message>
    <message>
        <source>End reading here; what was read stays</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 x</source>
        <comment>speed of playback</comment>
        <translation>%1 x</translation>
    </message>
    <message>
        <source>As fast as possible</source>
        <translation>Aussi vite que possible</translation>
    </message>
    <message>
        <source>Speed of playback</source>
        <translation>Vitesse de lecture</translation>
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
        <translation>Aller à une heure</translation>
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
        <translation>&amp;Aller à une heure...</translation>
    </message>
    <message>
        <source>Ctrl+G</source>
        <translation>Ctrl+G</translation>
    </message>
    <message>
        <source>Pause the recording (%1)</source>
        <translation>Suspendre l’enregistrement (%1)</translation>
    </message>
    <message>
        <source>Play the recording (%1)</source>
        <translation>Lire l’enregistrement (%1)</translation>
    </message>
    <message>
        <source>Show the next message and stop there (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 UTC</source>
        <translation>%1 UTC</translation>
    </message>
    <message>
        <source>%1 UTC   %2 / %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no time; a time is written as 14:05:30, +1:30 or 2015-07-05 14:05:30.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step &amp;Back</source>
        <translation>&amp;Reculer d’un message</translation>
    </message>
    <message>
        <source>Ctrl+Shift+.</source>
        <translation>Ctrl+Shift+.</translation>
    </message>
    <message>
        <source>&amp;Loop</source>
        <translation>En &amp;boucle</translation>
    </message>
    <message>
        <source>Play from the beginning again when the end is reached</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go back to the message before, and stop there (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>severity, text</comment>
        <translation>%1&#xa0;: %2</translation>
    </message>
    <message>
        <source>%1 from %2: %3</source>
        <comment>severity, sender, text</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not in this recording, which goes from %2 to %3 UTC.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PlotBar</name>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Let the picture stay; what comes is kept (Space)</source>
        <translation type="unfinished"></translation>
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
        <translation>Tout</translation>
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
        <translation>Agrandir</translation>
    </message>
    <message>
        <source>Show less time (turn the wheel; Shift and drag shows a rectangle)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Réduire</translation>
    </message>
    <message>
        <source>Show more time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show All</source>
        <translation>Tout afficher</translation>
    </message>
    <message>
        <source>Show all the time that is kept, and pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Since Start</source>
        <translation>Depuis le début</translation>
    </message>
    <message>
        <source>Draw recordings over one another, by the time since their start</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove All</source>
        <translation>Tout supprimer</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>Remove the chosen series (Del)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Picture...</source>
        <translation>Enregistrer l’image...</translation>
    </message>
    <message>
        <source>Save Values...</source>
        <translation>Enregistrer les valeurs...</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Enregistrer</translation>
    </message>
    <message>
        <source>Save the plot as a picture, or its values</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PlotExpression</name>
    <message>
        <source>no field that is known is called %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is confidential</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no line &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it names no line and no field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is made of an expression that is drawn as something else</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no path in quotation marks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the quotation mark is not closed</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PlotFunction</name>
    <message>
        <source>, derivative</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>, average of %1 s</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PlotLegend</name>
    <message>
        <source>Field</source>
        <translation>Champ</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Valeur</translation>
    </message>
    <message>
        <source>Plotted fields</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PlotPanel</name>
    <message>
        <source>No more than %1 series can be plotted at a time.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Picture</source>
        <translation>Enregistrer l’image</translation>
    </message>
    <message>
        <source>PNG pictures (*.png);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Values</source>
        <translation>Enregistrer les valeurs</translation>
    </message>
    <message>
        <source>P&amp;lot</source>
        <translation>&amp;Tracer</translation>
    </message>
    <message>
        <source>Ctrl+L</source>
        <translation>Ctrl+L</translation>
    </message>
    <message>
        <source>Only numbers can be plotted.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PlotStack</name>
    <message>
        <source>Plot</source>
        <translation>Courbes</translation>
    </message>
    <message>
        <source>Plot %1</source>
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
        <translation>%1 UTC</translation>
    </message>
    <message>
        <source>since the start</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PlotWishes</name>
    <message>
        <source>character %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Expected is the path of a field, such as */ATTITUDE/roll, or an expression of paths in quotation marks, such as sqrt(&quot;*/A/x&quot;^2 + &quot;*/A/y&quot;^2).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no field is named; a path is a format, a type and a field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not there so far: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag a number from the message tree here, or choose Plot in its context menu (Ctrl+L).</source>
        <translation>Glisser ici un nombre de l’arbre des messages, ou choisir Tracer dans son menu contextuel (Ctrl+L).</translation>
    </message>
</context>
<context>
    <name>PreferencesDialog</name>
    <message>
        <source>Settings</source>
        <translation>Paramètres</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Affichage</translation>
    </message>
    <message>
        <source> Hz</source>
        <translation> Hz</translation>
    </message>
    <message>
        <source>&amp;Updates:</source>
        <translation>&amp;Mises à jour&#xa0;:</translation>
    </message>
    <message>
        <source>How often the views show what is new. Every message is counted and recorded at any rate.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>exact</source>
        <translation>exact</translation>
    </message>
    <message>
        <source>&amp;Decimals:</source>
        <translation>&amp;Décimales&#xa0;:</translation>
    </message>
    <message>
        <source>Digits behind the point of floating-point numbers. Raw values are always exact.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>As the system</source>
        <translation>Comme le système</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Clair</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Sombre</translation>
    </message>
    <message>
        <source>&amp;Colours:</source>
        <translation>&amp;Couleurs&#xa0;:</translation>
    </message>
    <message>
        <source>The colours of all windows</source>
        <translation>Les couleurs de toutes les fenêtres</translation>
    </message>
    <message>
        <source>&amp;Highlight values that change</source>
        <translation>&amp;Surligner les valeurs qui changent</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>never</source>
        <translation>jamais</translation>
    </message>
    <message>
        <source> intervals</source>
        <translation> intervalles</translation>
    </message>
    <message>
        <source>Gr&amp;ey types after:</source>
        <translation>&amp;Griser les types après&#xa0;:</translation>
    </message>
    <message>
        <source>How many of its intervals without a message make a type count as silent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None</source>
        <translation>Aucun</translation>
    </message>
    <message>
        <source>Annotation file</source>
        <translation>Fichier d’annotations</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>&amp;Parcourir...</translation>
    </message>
    <message>
        <source>&amp;Annotations:</source>
        <translation>&amp;Annotations&#xa0;:</translation>
    </message>
    <message>
        <source>A file that adds roles, confidentiality and computed fields to the definitions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show con&amp;fidential data</source>
        <translation>Afficher les données con&amp;fidentielles</translation>
    </message>
    <message>
        <source>Fields that their owner marked as confidential can then be read by anybody who sees this screen, also in pictures, copies and plots. The program forgets this choice when it ends.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Avertissement</translation>
    </message>
    <message>
        <source>Annotations</source>
        <translation>Annotations</translation>
    </message>
    <message>
        <source>Annotations (*.json);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> s</source>
        <translation> s</translation>
    </message>
    <message>
        <source>&amp;Watches time out after:</source>
        <translation>&amp;Expiration des valeurs suivies&#xa0;:</translation>
    </message>
    <message>
        <source>How long a watch keeps its value when no message brings a new one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>all</source>
        <translation>tous</translation>
    </message>
    <message>
        <source>Di&amp;gits:</source>
        <translation>C&amp;hiffres&#xa0;:</translation>
    </message>
    <message>
        <source>Significant digits of floating-point numbers in the tree, where Decimals says nothing. Copies and raw values have all of them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Language:</source>
        <translation>&amp;Langue&#xa0;:</translation>
    </message>
    <message>
        <source>The language of all texts, at once. What was logged stays in the language it was logged in.</source>
        <translation>La langue de tous les textes, tout de suite. Ce qui a été journalisé reste dans sa langue.</translation>
    </message>
</context>
<context>
    <name>RateChoice</name>
    <message>
        <source>%1 messages/s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>As fast as possible</source>
        <translation>Aussi vite que possible</translation>
    </message>
    <message>
        <source>Rate of playback</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The recording has no times: how many of its messages are shown in a second</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 message/s</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RecordedLines</name>
    <message>
        <source>reading %1, %2 %</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>too many values: only the extremes of some</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Recorder</name>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 ne peut pas être écrit&#xa0;: %2</translation>
    </message>
    <message>
        <source>Recording to %1 ended: %2. What is in the file can be read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>other messages come now, which such a recording cannot keep</source>
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
    <name>RowToolTips</name>
    <message>
        <source>Path:</source>
        <translation>Chemin&#xa0;:</translation>
    </message>
    <message>
        <source>Time:</source>
        <translation>Heure&#xa0;:</translation>
    </message>
    <message>
        <source>Sender:</source>
        <translation>Émetteur&#xa0;:</translation>
    </message>
    <message>
        <source>Number:</source>
        <translation>Numéro&#xa0;:</translation>
    </message>
    <message>
        <source>Silent:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>message type</source>
        <translation>type de message</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>computed</source>
        <translation>calculé</translation>
    </message>
    <message>
        <source>optional</source>
        <translation>facultatif</translation>
    </message>
    <message>
        <source>confidential</source>
        <translation>confidentiel</translation>
    </message>
    <message>
        <source>Unit:</source>
        <translation>Unité&#xa0;:</translation>
    </message>
    <message>
        <source>Range:</source>
        <translation>Plage&#xa0;:</translation>
    </message>
    <message>
        <source>Raw value:</source>
        <translation>Valeur brute&#xa0;:</translation>
    </message>
    <message>
        <source>Value:</source>
        <translation>Valeur&#xa0;:</translation>
    </message>
</context>
<context>
    <name>SenderChoice</name>
    <message>
        <source>All senders</source>
        <translation>Tous les émetteurs</translation>
    </message>
    <message>
        <source>Sender shown</source>
        <translation>Émetteur affiché</translation>
    </message>
    <message>
        <source>Whose messages the tree, the forms and the values show</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SenderRow</name>
    <message>
        <source>Without a name</source>
        <translation>Sans nom</translation>
    </message>
    <message>
        <source>Sender</source>
        <translation>Émetteur</translation>
    </message>
    <message>
        <source>1 type</source>
        <translation>1 type</translation>
    </message>
    <message>
        <source>%1 types</source>
        <translation>%1 types</translation>
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
    <name>Severity</name>
    <message>
        <source>Emergency</source>
        <translation>Urgence</translation>
    </message>
    <message>
        <source>Alert</source>
        <translation>Alerte</translation>
    </message>
    <message>
        <source>Critical</source>
        <translation>Critique</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Erreur</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Avertissement</translation>
    </message>
    <message>
        <source>Notice</source>
        <translation>Notification</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Débogage</translation>
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
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no message for %1, since %2 UTC</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>gone; the last message came %1 ago</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>as of %1 UTC; nothing since the jump</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SimulationBanner</name>
    <message>
        <source>Simulation: none of this comes from a device.</source>
        <translation>Simulation&#xa0;: rien de tout cela ne vient d’un appareil.</translation>
    </message>
    <message>
        <source>End Simulation</source>
        <translation>Finir la simulation</translation>
    </message>
    <message>
        <source>Close it, and go to the start page</source>
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
        <source>The schema could not be loaded.</source>
        <translation type="unfinished"></translation>
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
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>State</source>
        <translation>État</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Fréquence</translation>
    </message>
    <message>
        <source>%1 is being read; a recording needs another name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is being recorded already.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>recording, %1 in %2</source>
        <comment>size, duration</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>recorded %1 in %2, %3</source>
        <comment>size, duration, state</comment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SourcePanel</name>
    <message>
        <source>&amp;Reconnect</source>
        <translation>&amp;Reconnecter</translation>
    </message>
    <message>
        <source>C&amp;lose</source>
        <translation>&amp;Fermer</translation>
    </message>
    <message>
        <source>Sources</source>
        <translation>Sources</translation>
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
        <source>Open or connect something.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SourceSession</name>
    <message>
        <source>looking through it, %1 %</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>opening</source>
        <translation>ouverture</translation>
    </message>
    <message>
        <source>receiving</source>
        <translation>réception</translation>
    </message>
    <message>
        <source>ended</source>
        <translation>terminé</translation>
    </message>
    <message>
        <source>failed: %1</source>
        <translation>échec&#xa0;: %1</translation>
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
        <translation>%1 @ %2</translation>
    </message>
    <message>
        <source>The end of %1 could not be written: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>listening</source>
        <translation>écoute</translation>
    </message>
    <message>
        <source>connected</source>
        <translation>connecté</translation>
    </message>
    <message>
        <source>silent since %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>playing</source>
        <translation>lecture</translation>
    </message>
    <message>
        <source>paused</source>
        <translation>en pause</translation>
    </message>
    <message>
        <source>stopped</source>
        <translation>arrêté</translation>
    </message>
    <message>
        <source>recording to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>recorded to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the end of %1 could not be written: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>other definitions (%1); what came before was counted without them</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>stepped back; counts and statistics begin there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>jumped to %1; counts and statistics begin there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>jumped to another place; counts and statistics begin there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>read again from the beginning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a datagram was dropped by the system: they came faster than they could be taken</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>Try without a device</source>
        <translation>Essayer sans appareil</translation>
    </message>
    <message>
        <source>Drop recordings, folders of recordings or definitions here</source>
        <translation>Déposer ici des enregistrements, leurs dossiers ou des définitions</translation>
    </message>
    <message>
        <source>Start page</source>
        <translation>Page d’accueil</translation>
    </message>
    <message>
        <source>Recent recordings</source>
        <translation>Enregistrements récents</translation>
    </message>
    <message>
        <source>Recent connections</source>
        <translation>Connexions récentes</translation>
    </message>
    <message>
        <source>Recent</source>
        <translation>Récents</translation>
    </message>
    <message>
        <source>What you open is found here again.</source>
        <translation>Ce qui a été ouvert se retrouve ici.</translation>
    </message>
</context>
<context>
    <name>StatisticsFilter</name>
    <message>
        <source>How often and how regularly messages come is told here once some were received.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No type and no sender is called so.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StatisticsPanel</name>
    <message>
        <source>Message statistics</source>
        <translation>Statistiques des messages</translation>
    </message>
    <message>
        <source>Save Statistics</source>
        <translation>Enregistrer les statistiques</translation>
    </message>
    <message>
        <source>Show &amp;Statistics</source>
        <translation>Afficher les &amp;statistiques</translation>
    </message>
    <message>
        <source>Played</source>
        <translation>Joué</translation>
    </message>
    <message>
        <source>What was played since the recording was opened, or since the last jump</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What the statistics are about</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Message statistics of the whole recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looking through the recording: %1 %</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Whole Recording (%1 %)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Whole Recording</source>
        <translation>Tout l’enregistrement</translation>
    </message>
    <message>
        <source>Save St&amp;atistics as CSV...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type or sender</source>
        <translation>Type ou émetteur</translation>
    </message>
    <message>
        <source>Show only the statistics of these types</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>Last problem</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 sources</source>
        <translation>%1 sources</translation>
    </message>
    <message>
        <source>Nothing is open</source>
        <translation>Rien n’est ouvert</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1&#xa0;: %2</translation>
    </message>
    <message>
        <source>%1 sources, %2 recorded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The views are brought up to date some times a second and show the newest message of each type. %1 were overtaken before that; all are counted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt; 0.1 % lost</source>
        <translation>&lt; 0.1 % perdus</translation>
    </message>
    <message>
        <source>%1 % lost</source>
        <translation>%1 % perdus</translation>
    </message>
    <message>
        <source>%1 damaged</source>
        <translation>%1 endommagés</translation>
    </message>
    <message>
        <source>Checksum failures: %1. Cut off: %2. None of them is shown as a message.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 message</source>
        <translation>1 message</translation>
    </message>
    <message>
        <source>%1 messages</source>
        <translation>%1 messages</translation>
    </message>
    <message>
        <source>%1   %2 /s   %3   %4/s</source>
        <comment>messages, their rate, bytes, their rate</comment>
        <translation>%1   %2 /s   %3   %4/s</translation>
    </message>
    <message>
        <source>Numbers that were skipped by those who number their messages: %1. It is a lower bound.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TimeLine</name>
    <message>
        <source>Time line of the recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How many messages come when, and where there are gaps, damage and events</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 UTC   %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 messages/s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2 /s</source>
        <comment>type, rate</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>damaged: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looking through the recording: %1 %</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>gap of %1: %2 s</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TreeActions</name>
    <message>
        <source>&amp;Copy Value</source>
        <translation>&amp;Copier la valeur</translation>
    </message>
    <message>
        <source>Copy &amp;Raw Value</source>
        <translation>Copier la valeur b&amp;rute</translation>
    </message>
    <message>
        <source>Ctrl+Shift+C</source>
        <translation>Ctrl+Shift+C</translation>
    </message>
    <message>
        <source>Copy &amp;Path</source>
        <translation>Copier le c&amp;hemin</translation>
    </message>
    <message>
        <source>Ctrl+Alt+C</source>
        <translation>Ctrl+Alt+C</translation>
    </message>
    <message>
        <source>Copy as &amp;JSON</source>
        <translation>Copier en &amp;JSON</translation>
    </message>
    <message>
        <source>Ctrl+J</source>
        <translation>Ctrl+J</translation>
    </message>
    <message>
        <source>Pi&amp;n</source>
        <translation>&amp;Épingler</translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translation>Ctrl+D</translation>
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
        <translation>Copié&#xa0;: %1</translation>
    </message>
</context>
<context>
    <name>TreeHint</name>
    <message>
        <source>Nothing matches what is searched for; Esc shows everything again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open a recording (Ctrl+O), connect to a device (Ctrl+K), or drop a recording here.</source>
        <translation>Ouvrir un enregistrement (Ctrl+O), se connecter à un appareil (Ctrl+K), ou déposer un enregistrement ici.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1&#xa0;: %2</translation>
    </message>
    <message>
        <source>Waiting for messages from %1 ...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looking through %1: %2 % are done. Close the source to cancel.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tick a message type in the list to see its fields here, or add all of them (Ctrl+Shift+A).</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TreePanel</name>
    <message>
        <source>Message tree</source>
        <translation>Arbre des messages</translation>
    </message>
    <message>
        <source>&amp;Add All Types</source>
        <translation>&amp;Ajouter tous les types</translation>
    </message>
    <message>
        <source>Ctrl+Shift+A</source>
        <translation>Ctrl+Shift+A</translation>
    </message>
    <message>
        <source>&amp;Remove All Types</source>
        <translation>&amp;Retirer tous les types</translation>
    </message>
    <message>
        <source>&amp;Collapse All</source>
        <translation>Tout re&amp;plier</translation>
    </message>
    <message>
        <source>&amp;Expand All</source>
        <translation>Tout &amp;déplier</translation>
    </message>
    <message>
        <source>&amp;Virtual Fields</source>
        <translation>Champs &amp;virtuels</translation>
    </message>
    <message>
        <source>&amp;Primary Fields Only</source>
        <translation>Champs &amp;primaires seulement</translation>
    </message>
    <message>
        <source>&amp;Columns</source>
        <translation>&amp;Colonnes</translation>
    </message>
    <message>
        <source>By &amp;Type</source>
        <translation>Par &amp;type</translation>
    </message>
    <message>
        <source>A row for each type, with the newest message of whoever sent it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>By Type and S&amp;ender</source>
        <translation>Par type et é&amp;metteur</translation>
    </message>
    <message>
        <source>A row for each type of each sender</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>By &amp;Sender</source>
        <translation>Par é&amp;metteur</translation>
    </message>
    <message>
        <source>A row for each sender, with its types below</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Rows</source>
        <translation>&amp;Lignes</translation>
    </message>
    <message>
        <source>Un&amp;pin</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Pin to the Top</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide &amp;Unset Fields</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add New T&amp;ypes Automatically</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TypePanel</name>
    <message>
        <source>Message types</source>
        <translation>Types de messages</translation>
    </message>
    <message>
        <source>Message types appear here as they are received.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type or sender</source>
        <translation>Type ou émetteur</translation>
    </message>
    <message>
        <source>Show only these types</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>By Sender</source>
        <translation>Par émetteur</translation>
    </message>
    <message>
        <source>A row for each sender, with its types below</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No type and no sender is called so.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Take out of the Tree</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Show in the Tree</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show &amp;Only This in the Tree</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Copy Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Co&amp;lumns</source>
        <translation>Co&amp;lonnes</translation>
    </message>
    <message>
        <source>Load &amp;Definitions...</source>
        <translation>Charger des &amp;définitions...</translation>
    </message>
</context>
<context>
    <name>ValueSaver</name>
    <message>
        <source>Saving %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 ne peut pas être écrit&#xa0;: %2</translation>
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
        <translation>Suppri&amp;mer</translation>
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
    <message>
        <source>Sender: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WatchBar</name>
    <message>
        <source>&amp;Watch</source>
        <translation>&amp;Suivre</translation>
    </message>
    <message>
        <source>Ctrl+Shift+W</source>
        <translation>Ctrl+Shift+W</translation>
    </message>
    <message>
        <source>Watched values</source>
        <translation>Valeurs suivies</translation>
    </message>
</context>
<context>
    <name>WatchEditor</name>
    <message>
        <source>Format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Message type</source>
        <translation>Type de message</translation>
    </message>
    <message>
        <source>Field</source>
        <translation>Champ</translation>
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
        <translation>Valeur</translation>
    </message>
    <message>
        <source>Keep this value in sight below</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All</source>
        <translation>Tout</translation>
    </message>
    <message>
        <source>P&amp;in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 fields</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WatchedField</name>
    <message>
        <source>Hidden data</source>
        <translation>Données masquées</translation>
    </message>
</context>
</TS>
