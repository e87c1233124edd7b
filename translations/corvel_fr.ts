<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR">
<context>
    <name>Annotations</name>
    <message>
        <source>cannot be read: not a file</source>
        <translation>illisible&#xa0;: ce n’est pas un fichier</translation>
    </message>
    <message>
        <source>cannot be read: %1</source>
        <translation>illisible&#xa0;: %1</translation>
    </message>
    <message>
        <source>cannot be read: larger than %1 bytes</source>
        <translation>illisible&#xa0;: plus de %1 octets</translation>
    </message>
    <message>
        <source>malformed JSON: %1</source>
        <translation>JSON mal formé&#xa0;: %1</translation>
    </message>
    <message>
        <source>the key &quot;%1&quot; is there twice</source>
        <translation>la clé «&#xa0;%1&#xa0;» figure deux fois</translation>
    </message>
    <message>
        <source>unknown message type</source>
        <translation>type de message inconnu</translation>
    </message>
    <message>
        <source>not an object</source>
        <translation>ce n’est pas un objet</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not an object</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un objet</translation>
    </message>
    <message>
        <source>unknown key &quot;%1&quot;</source>
        <translation>clé inconnue «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>no message type has that field</source>
        <translation>aucun type de message n’a ce champ</translation>
    </message>
    <message>
        <source>unknown field</source>
        <translation>champ inconnu</translation>
    </message>
    <message>
        <source>the role &quot;%1&quot; is neither &quot;primary&quot; nor &quot;secondary&quot;</source>
        <translation>le rôle «&#xa0;%1&#xa0;» n’est ni «&#xa0;primary&#xa0;» ni «&#xa0;secondary&#xa0;»</translation>
    </message>
    <message>
        <source>&quot;confidential&quot; is neither true nor false</source>
        <translation>«&#xa0;confidential&#xa0;» n’est ni true ni false</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not an array</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un tableau</translation>
    </message>
    <message>
        <source>a virtual field is not an object</source>
        <translation>un champ virtuel n’est pas un objet</translation>
    </message>
    <message>
        <source>a virtual field without a name</source>
        <translation>un champ virtuel sans nom</translation>
    </message>
    <message>
        <source>&quot;decimals&quot; is not a number from 0 to %1</source>
        <translation>«&#xa0;decimals&#xa0;» n’est pas un nombre de 0 à %1</translation>
    </message>
    <message>
        <source>there already is a field of that name</source>
        <translation>il existe déjà un champ de ce nom</translation>
    </message>
    <message>
        <source>a virtual field without an expression</source>
        <translation>un champ virtuel sans expression</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a text</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un texte</translation>
    </message>
    <message>
        <source>the expression cannot be understood: %1</source>
        <translation>l’expression est incompréhensible&#xa0;: %1</translation>
    </message>
    <message>
        <source>the expression names &quot;%1&quot;, which is no field</source>
        <translation>l’expression nomme «&#xa0;%1&#xa0;», qui n’est pas un champ</translation>
    </message>
    <message>
        <source>the expression names &quot;%1&quot;, which has several values: name one as in &quot;%1_0&quot;</source>
        <translation>l’expression nomme «&#xa0;%1&#xa0;», qui a plusieurs valeurs&#xa0;: en nommer une, comme «&#xa0;%1_0&#xa0;»</translation>
    </message>
    <message>
        <source>the expression names &quot;%1&quot;, which is no sub-message</source>
        <translation>l’expression nomme «&#xa0;%1&#xa0;», qui n’est pas un sous-message</translation>
    </message>
    <message>
        <source>the expression names &quot;%1&quot;, which is no number</source>
        <translation>l’expression nomme «&#xa0;%1&#xa0;», qui n’est pas un nombre</translation>
    </message>
    <message>
        <source> (character %1)</source>
        <translation> (caractère %1)</translation>
    </message>
</context>
<context>
    <name>ByteInput</name>
    <message>
        <source>standard input</source>
        <translation>entrée standard</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>annulé</translation>
    </message>
    <message>
        <source>no answer within %1 s</source>
        <translation>pas de réponse en %1 s</translation>
    </message>
    <message>
        <source>the port is in use by another program</source>
        <translation>le port est utilisé par un autre programme</translation>
    </message>
    <message>
        <source>it has no other places to go to</source>
        <translation>il n’y a pas d’autre endroit où aller</translation>
    </message>
    <message>
        <source>there is no such serial port</source>
        <translation>ce port série n’existe pas</translation>
    </message>
    <message>
        <source>another program uses it</source>
        <translation>un autre programme l’utilise</translation>
    </message>
    <message>
        <source>permission denied; the group &quot;%1&quot; may open it</source>
        <translation>accès refusé&#xa0;; le groupe «&#xa0;%1&#xa0;» peut l’ouvrir</translation>
    </message>
    <message>
        <source>this is no serial port</source>
        <translation>ce n’est pas un port série</translation>
    </message>
    <message>
        <source>the device is gone</source>
        <translation>l’appareil a disparu</translation>
    </message>
</context>
<context>
    <name>Container</name>
    <message>
        <source>a schema and a type must be named to read messages of Protocol Buffers</source>
        <translation>pour lire des messages Protocol Buffers, il faut indiquer un schéma et un type</translation>
    </message>
    <message>
        <source>the schema has several types; one of them must be named</source>
        <translation>le schéma a plusieurs types&#xa0;; il faut en indiquer un</translation>
    </message>
    <message>
        <source>messages of Protocol Buffers with lengths before them, whose type must be named</source>
        <translation>messages Protocol Buffers précédés de leur longueur, dont le type doit être indiqué</translation>
    </message>
    <message>
        <source>MAVLink frames</source>
        <translation>trames MAVLink</translation>
    </message>
    <message>
        <source>MCAP recordings</source>
        <translation>enregistrements MCAP</translation>
    </message>
    <message>
        <source>the input is empty</source>
        <translation>l’entrée est vide</translation>
    </message>
    <message>
        <source>not recognised: it begins with %1; what can be read: %2</source>
        <translation>non reconnu&#xa0;: commence par %1&#xa0;; ce qui peut être lu&#xa0;: %2</translation>
    </message>
    <message>
        <source>MAVLink frames with times before them</source>
        <translation>trames MAVLink précédées de leur date</translation>
    </message>
    <message>
        <source>an MCAP recording says itself of what types its messages are; none can be named</source>
        <translation>un enregistrement MCAP dit lui-même de quels types sont ses messages&#xa0;; on ne peut pas en indiquer</translation>
    </message>
    <message>
        <source>messages of a broker with their topics</source>
        <translation>messages d’un courtier avec leurs sujets</translation>
    </message>
</context>
<context>
    <name>CorvelEvent</name>
    <message>
        <source>Source</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>CRC error</source>
        <translation>Erreur CRC</translation>
    </message>
    <message>
        <source>Unknown message</source>
        <translation>Message inconnu</translation>
    </message>
    <message>
        <source>Truncated message</source>
        <translation>Message tronqué</translation>
    </message>
    <message>
        <source>Resynchronisation</source>
        <translation>Resynchronisation</translation>
    </message>
    <message>
        <source>Unsupported message</source>
        <translation>Message non pris en charge</translation>
    </message>
    <message>
        <source>Clock jump</source>
        <translation>Saut d’horloge</translation>
    </message>
    <message>
        <source>Definition problem</source>
        <translation>Problème de définition</translation>
    </message>
    <message>
        <source>Other</source>
        <translation>Autre</translation>
    </message>
</context>
<context>
    <name>Definitions</name>
    <message>
        <source>cannot be read: not a file</source>
        <translation>illisible&#xa0;: ce n’est pas un fichier</translation>
    </message>
    <message>
        <source>cannot be read: %1</source>
        <translation>illisible&#xa0;: %1</translation>
    </message>
    <message>
        <source>these are no definitions that can be read: %1</source>
        <translation>ce ne sont pas des définitions lisibles&#xa0;: %1</translation>
    </message>
    <message>
        <source>FILTER=TYPE is expected</source>
        <translation>FILTRE=TYPE est attendu</translation>
    </message>
    <message>
        <source>there is no type &quot;%1&quot;</source>
        <translation>il n’y a pas de type «&#xa0;%1&#xa0;»</translation>
    </message>
</context>
<context>
    <name>Encoding</name>
    <message>
        <source>MAVLink dialect</source>
        <translation>Dialecte MAVLink</translation>
    </message>
    <message>
        <source>Protocol Buffers schema</source>
        <translation>Schéma Protocol Buffers</translation>
    </message>
    <message>
        <source>JSON schema</source>
        <translation>Schéma JSON</translation>
    </message>
    <message>
        <source>ROS 2 message definition</source>
        <translation>Définition de message ROS 2</translation>
    </message>
    <message>
        <source>ROS 1 message definition</source>
        <translation>Définition de message ROS 1</translation>
    </message>
    <message>
        <source>no file of definitions has a type &quot;%1&quot;</source>
        <translation>aucun fichier de définitions n’a de type «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>Sparkplug births</source>
        <translation>Naissances Sparkplug</translation>
    </message>
</context>
<context>
    <name>Envelopes</name>
    <message>
        <source>(other topics)</source>
        <translation>(autres sujets)</translation>
    </message>
    <message>
        <source>cleared</source>
        <translation>effacé</translation>
    </message>
    <message>
        <source>%1 (%2, not decodable)</source>
        <translation>%1 (%2, non décodable)</translation>
    </message>
    <message>
        <source>there are more than %1 topics: the %2 oldest are forgotten</source>
        <translation>il y a plus de %1 sujets&#xa0;: les %2 plus anciens sont oubliés</translation>
    </message>
    <message>
        <source>unknown content</source>
        <translation>contenu inconnu</translation>
    </message>
    <message>
        <source>nothing says what it is; it begins with %1</source>
        <translation>rien ne dit ce que c’est&#xa0;; commence par %1</translation>
    </message>
    <message>
        <source>its schema, %1, did not come</source>
        <translation>son schéma, %1, n’est pas arrivé</translation>
    </message>
    <message>
        <source>nothing says of what type it is</source>
        <translation>rien ne dit de quel type il est</translation>
    </message>
    <message>
        <source>the schema %1 cannot be used: %2</source>
        <translation>le schéma %1 est inutilisable&#xa0;: %2</translation>
    </message>
    <message>
        <source>there are too many nodes and devices</source>
        <translation>il y a trop de nœuds et d’appareils</translation>
    </message>
    <message>
        <source>it is no payload of Sparkplug B</source>
        <translation>ce n’est pas une charge utile Sparkplug B</translation>
    </message>
    <message>
        <source>it is a command</source>
        <translation>c’est une commande</translation>
    </message>
    <message>
        <source>no birth yet</source>
        <translation>pas encore de naissance</translation>
    </message>
    <message>
        <source>the device %1 has ended</source>
        <translation>l’appareil %1 a pris fin</translation>
    </message>
    <message>
        <source>its connection has ended</source>
        <translation>sa connexion a pris fin</translation>
    </message>
    <message>
        <source>it is compressed by &quot;%1&quot;; what can be read is GZIP and DEFLATE</source>
        <translation>il est compressé par «&#xa0;%1&#xa0;»&#xa0;; sont lisibles GZIP et DEFLATE</translation>
    </message>
    <message>
        <source>decompressed it has more than %1 MiB</source>
        <translation>décompressé, il fait plus de %1 Mio</translation>
    </message>
    <message>
        <source>it cannot be decompressed</source>
        <translation>il ne peut pas être décompressé</translation>
    </message>
</context>
<context>
    <name>EventLog</name>
    <message>
        <source>The log is full with %1 entries: this event and all later ones are counted, but not entered until the log is cleared</source>
        <translation>Le journal est plein avec %1 entrées&#xa0;: cet événement et tous les suivants sont comptés, mais ne seront inscrits qu’après effacement du journal</translation>
    </message>
    <message>
        <source>%1, various</source>
        <translation>%1, divers</translation>
    </message>
    <message>
        <source>%1 x %2</source>
        <translation>%1 x %2</translation>
    </message>
    <message>
        <source>,</source>
        <comment>between groups of three digits</comment>
        <translation>&#x202f;</translation>
    </message>
    <message>
        <source> (%1 in all)</source>
        <translation> (%1 en tout)</translation>
    </message>
</context>
<context>
    <name>EventLogTableWidget</name>
    <message>
        <source>Time</source>
        <translation>Heure</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>N/A</source>
        <translation>n. d.</translation>
    </message>
</context>
<context>
    <name>FieldInfo</name>
    <message>
        <source>not available</source>
        <translation>non disponible</translation>
    </message>
    <message>
        <source>(1 byte)</source>
        <translation>(1 octet)</translation>
    </message>
    <message>
        <source>(%1 bytes)</source>
        <translation>(%1 octets)</translation>
    </message>
</context>
<context>
    <name>FieldValueLabel</name>
    <message>
        <source>N/A</source>
        <translation>n. d.</translation>
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
        <translation>annulé</translation>
    </message>
    <message>
        <source>%1 is empty</source>
        <translation>%1 est vide</translation>
    </message>
    <message>
        <source>%1 is damaged (%2); what comes before is read</source>
        <translation>%1 est endommagé (%2)&#xa0;; ce qui précède est lu</translation>
    </message>
    <message>
        <source>%1 cannot be decompressed into %2: %3</source>
        <translation>%1 ne peut pas être décompressé dans %2&#xa0;: %3</translation>
    </message>
    <message>
        <source>%1 breaks off; what there is is read</source>
        <translation>%1 s’interrompt&#xa0;; ce qui existe est lu</translation>
    </message>
    <message>
        <source>%1 became shorter</source>
        <translation>%1 a raccourci</translation>
    </message>
</context>
<context>
    <name>Formula</name>
    <message>
        <source>&quot;%1&quot; cannot stand here</source>
        <translation>«&#xa0;%1&#xa0;» ne peut pas figurer ici</translation>
    </message>
    <message>
        <source>a comparison is written &quot;==&quot;</source>
        <translation>une comparaison s’écrit «&#xa0;==&#xa0;»</translation>
    </message>
    <message>
        <source>there is no function &quot;%1&quot;</source>
        <translation>il n’y a pas de fonction «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>it has several results</source>
        <translation>elle a plusieurs résultats</translation>
    </message>
    <message>
        <source>something is missing at the end</source>
        <translation>il manque quelque chose à la fin</translation>
    </message>
    <message>
        <source>a parenthesis is missing</source>
        <translation>il manque une parenthèse</translation>
    </message>
    <message>
        <source>a function has too many arguments</source>
        <translation>une fonction a trop d’arguments</translation>
    </message>
    <message>
        <source>a function has too few arguments</source>
        <translation>une fonction a trop peu d’arguments</translation>
    </message>
    <message>
        <source>a &quot;?&quot; has no &quot;:&quot;</source>
        <translation>un «&#xa0;?&#xa0;» n’a pas de «&#xa0;:&#xa0;»</translation>
    </message>
</context>
<context>
    <name>FoxgloveInput</name>
    <message>
        <source>cancelled</source>
        <translation>annulé</translation>
    </message>
    <message>
        <source>it does not speak the Foxglove protocol: no greeting within %1 s</source>
        <translation>il ne parle pas le protocole Foxglove&#xa0;: pas de salutation en %1 s</translation>
    </message>
    <message>
        <source>no answer within %1 s</source>
        <translation>pas de réponse en %1 s</translation>
    </message>
    <message>
        <source>it does not speak the Foxglove protocol</source>
        <translation>il ne parle pas le protocole Foxglove</translation>
    </message>
</context>
<context>
    <name>InputAddress</name>
    <message>
        <source>no input is named</source>
        <translation>aucune entrée n’est indiquée</translation>
    </message>
    <message>
        <source>the bracket of the IPv6 address is not closed</source>
        <translation>le crochet de l’adresse IPv6 n’est pas fermé</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no IPv6 address</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas une adresse IPv6</translation>
    </message>
    <message>
        <source>an IPv6 address stands in brackets</source>
        <translation>une adresse IPv6 s’écrit entre crochets</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not expected behind the host</source>
        <translation>«&#xa0;%1&#xa0;» est inattendu après l’hôte</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no parameter; NAME=VALUE is one</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un paramètre&#xa0;; NOM=VALEUR en est un</translation>
    </message>
    <message>
        <source>there is no parameter &quot;%1&quot;; there is: %2</source>
        <translation>il n’y a pas de paramètre «&#xa0;%1&#xa0;»&#xa0;; il y a&#xa0;: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is told twice</source>
        <translation>«&#xa0;%1&#xa0;» est indiqué deux fois</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no port; ports are 1 to 65535</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un port&#xa0;; les ports vont de 1 à 65535</translation>
    </message>
    <message>
        <source>this is no address; ws://HOST:PORT is one</source>
        <translation>ce n’est pas une adresse&#xa0;; ws://HÔTE:PORT en est une</translation>
    </message>
    <message>
        <source>no host is named</source>
        <translation>aucun hôte n’est indiqué</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no address to listen on; it is written in numbers</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas une adresse d’écoute&#xa0;; elle s’écrit en chiffres</translation>
    </message>
    <message>
        <source>no serial port is named</source>
        <translation>aucun port série n’est indiqué</translation>
    </message>
    <message>
        <source>baud is &quot;%1&quot;; it is a number such as 57600</source>
        <translation>baud est «&#xa0;%1&#xa0;»&#xa0;; c’est un nombre comme 57600</translation>
    </message>
    <message>
        <source>format is &quot;%1&quot;; it has data bits, parity (N, E, O, M or S) and stop bits, such as 8N1</source>
        <translation>format est «&#xa0;%1&#xa0;»&#xa0;; il a des bits de données, une parité (N, E, O, M ou S) et des bits d’arrêt, comme 8N1</translation>
    </message>
    <message>
        <source>flow is &quot;%1&quot;; it is none, hardware or software</source>
        <translation>flow est «&#xa0;%1&#xa0;»&#xa0;; c’est none, hardware ou software</translation>
    </message>
    <message>
        <source>a password stands in no address, which is shown and logged; a file, the environment or the dialog has it</source>
        <translation>un mot de passe ne figure pas dans une adresse, qui est affichée et journalisée&#xa0;; il vient d’un fichier, de l’environnement ou du dialogue</translation>
    </message>
    <message>
        <source>there are more than %1 filters</source>
        <translation>il y a plus de %1 filtres</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a subscription that is shared: it would take messages from others</source>
        <translation>«&#xa0;%1&#xa0;» est un abonnement partagé&#xa0;: il prendrait des messages à d’autres</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no filter of topics; &quot;fleet/+/state&quot; and &quot;fleet/#&quot; are some</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un filtre de sujets&#xa0;; «&#xa0;fleet/+/state&#xa0;» et «&#xa0;fleet/#&#xa0;» en sont</translation>
    </message>
    <message>
        <source>a certificate (cert) and its key (key) belong together</source>
        <translation>un certificat (cert) et sa clé (key) vont ensemble</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no server; HOST:PORT is one</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un serveur&#xa0;; HÔTE:PORT en est un</translation>
    </message>
    <message>
        <source>there are more than %1 servers</source>
        <translation>il y a plus de %1 serveurs</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no subject; &quot;fleet.*.state&quot; and &quot;fleet.&gt;&quot; are some</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un sujet&#xa0;; «&#xa0;fleet.*.state&#xa0;» et «&#xa0;fleet.&gt;&#xa0;» en sont</translation>
    </message>
    <message>
        <source>tls is &quot;%1&quot;; it is auto or on</source>
        <translation>tls est «&#xa0;%1&#xa0;»&#xa0;; c’est auto ou on</translation>
    </message>
    <message>
        <source>no subject is named; &quot;&gt;&quot; stands for all</source>
        <translation>aucun sujet n’est indiqué&#xa0;; «&#xa0;&gt;&#xa0;» les désigne tous</translation>
    </message>
    <message>
        <source>there are more than %1 subjects</source>
        <translation>il y a plus de %1 sujets</translation>
    </message>
    <message>
        <source>no stream is named; jetstream://HOST/STREAM names one</source>
        <translation>aucun flux n’est indiqué&#xa0;; jetstream://HÔTE/FLUX en indique un</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no name of a stream</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un nom de flux</translation>
    </message>
    <message>
        <source>end is &quot;%1&quot;; it is follow or stop</source>
        <translation>end est «&#xa0;%1&#xa0;»&#xa0;; c’est follow ou stop</translation>
    </message>
</context>
<context>
    <name>InputKind</name>
    <message>
        <source>Fil&amp;e:</source>
        <translation>Fichi&amp;er&#xa0;:</translation>
    </message>
    <message>
        <source>The path of the file</source>
        <translation>Le chemin du fichier</translation>
    </message>
    <message>
        <source>Standard input</source>
        <translation>Entrée standard</translation>
    </message>
    <message>
        <source>&amp;Address:</source>
        <translation>&amp;Adresse&#xa0;:</translation>
    </message>
    <message>
        <source>The address of the server; wss:// is encrypted</source>
        <translation>L’adresse du serveur&#xa0;; wss:// est chiffré</translation>
    </message>
    <message>
        <source>WebSocket: a Foxglove server</source>
        <translation>WebSocket&#xa0;: un serveur Foxglove</translation>
    </message>
    <message>
        <source>&amp;Host:</source>
        <translation>&amp;Hôte&#xa0;:</translation>
    </message>
    <message>
        <source>Name or address of the server</source>
        <translation>Nom ou adresse du serveur</translation>
    </message>
    <message>
        <source>&amp;Port:</source>
        <translation>&amp;Port&#xa0;:</translation>
    </message>
    <message>
        <source>The number of the port</source>
        <translation>Le numéro du port</translation>
    </message>
    <message>
        <source>TCP: connect to a server</source>
        <translation>TCP&#xa0;: se connecter à un serveur</translation>
    </message>
    <message>
        <source>&amp;Address to listen on:</source>
        <translation>&amp;Adresse d’écoute&#xa0;:</translation>
    </message>
    <message>
        <source>An address of this computer; 0.0.0.0 is all of them</source>
        <translation>Une adresse de cet ordinateur&#xa0;; 0.0.0.0 les désigne toutes</translation>
    </message>
    <message>
        <source>UDP: listen for datagrams</source>
        <translation>UDP&#xa0;: écouter des datagrammes</translation>
    </message>
    <message>
        <source>none</source>
        <translation>aucun</translation>
    </message>
    <message>
        <source>hardware (RTS/CTS)</source>
        <translation>matériel (RTS/CTS)</translation>
    </message>
    <message>
        <source>software (XON/XOFF)</source>
        <translation>logiciel (XON/XOFF)</translation>
    </message>
    <message>
        <source>The serial port, such as /dev/ttyUSB0</source>
        <translation>Le port série, comme /dev/ttyUSB0</translation>
    </message>
    <message>
        <source>&amp;Baud rate:</source>
        <translation>&amp;Débit&#xa0;:</translation>
    </message>
    <message>
        <source>Bits a second</source>
        <translation>Bits par seconde</translation>
    </message>
    <message>
        <source>Data for&amp;mat:</source>
        <translation>For&amp;mat des données&#xa0;:</translation>
    </message>
    <message>
        <source>Data bits, parity (none, even, odd, mark, space) and stop bits</source>
        <translation>Bits de données, parité (none, even, odd, mark, space) et bits d’arrêt</translation>
    </message>
    <message>
        <source>F&amp;low control:</source>
        <translation>Contrô&amp;le de flux&#xa0;:</translation>
    </message>
    <message>
        <source>How this computer asks the device to wait</source>
        <translation>Comment cet ordinateur demande à l’appareil d’attendre</translation>
    </message>
    <message>
        <source>Serial port</source>
        <translation>Port série</translation>
    </message>
    <message>
        <source>A recording, a folder of one, or a device file</source>
        <translation>Un enregistrement, son dossier, ou un fichier de périphérique</translation>
    </message>
    <message>
        <source>&amp;Topics:</source>
        <translation>Suje&amp;ts&#xa0;:</translation>
    </message>
    <message>
        <source>Filters with commas between them: &quot;+&quot; stands for one level, &quot;#&quot; for the rest</source>
        <translation>Des filtres séparés par des virgules&#xa0;: «&#xa0;+&#xa0;» désigne un niveau, «&#xa0;#&#xa0;» le reste</translation>
    </message>
    <message>
        <source>&amp;User:</source>
        <translation>&amp;Utilisateur&#xa0;:</translation>
    </message>
    <message>
        <source>Pass&amp;word:</source>
        <translation>&amp;Mot de passe&#xa0;:</translation>
    </message>
    <message>
        <source>It is not kept; empty takes it from the file, or from the environment variable CORVEL_MQTT_PASSWORD</source>
        <translation>Il n’est pas conservé&#xa0;; vide, il est pris dans le fichier ou dans la variable d’environnement CORVEL_MQTT_PASSWORD</translation>
    </message>
    <message>
        <source>Password f&amp;ile:</source>
        <translation>F&amp;ichier du mot de passe&#xa0;:</translation>
    </message>
    <message>
        <source>A file whose first line is the password</source>
        <translation>Un fichier dont la première ligne est le mot de passe</translation>
    </message>
    <message>
        <source>T&amp;rusted:</source>
        <translation>De confia&amp;nce&#xa0;:</translation>
    </message>
    <message>
        <source>A file of certificates that are trusted; empty for those of the system</source>
        <translation>Un fichier de certificats de confiance&#xa0;; vide pour ceux du système</translation>
    </message>
    <message>
        <source>&amp;Certificate:</source>
        <translation>&amp;Certificat&#xa0;:</translation>
    </message>
    <message>
        <source>A file with one&apos;s own certificate, if the server asks for it</source>
        <translation>Un fichier avec son propre certificat, si le serveur le demande</translation>
    </message>
    <message>
        <source>K&amp;ey:</source>
        <translation>C&amp;lé&#xa0;:</translation>
    </message>
    <message>
        <source>The file of the certificate&apos;s key, without a password</source>
        <translation>Le fichier de la clé du certificat, sans mot de passe</translation>
    </message>
    <message>
        <source>MQTT: topics of a broker</source>
        <translation>MQTT&#xa0;: sujets d’un courtier</translation>
    </message>
    <message>
        <source>MQTT, encrypted: topics of a broker</source>
        <translation>MQTT chiffré&#xa0;: sujets d’un courtier</translation>
    </message>
    <message>
        <source>if the server wants it</source>
        <translation>si le serveur le veut</translation>
    </message>
    <message>
        <source>always</source>
        <translation>toujours</translation>
    </message>
    <message>
        <source>go on with what comes</source>
        <translation>continuer avec ce qui arrive</translation>
    </message>
    <message>
        <source>stop</source>
        <translation>arrêter</translation>
    </message>
    <message>
        <source>Other &amp;servers:</source>
        <translation>Autres &amp;serveurs&#xa0;:</translation>
    </message>
    <message>
        <source>HOST:PORT of others of a cluster, with commas between them, for when the first is away; those that a server tells of need not be named</source>
        <translation>HÔTE:PORT des autres d’une grappe, séparés par des virgules, pour quand le premier est absent&#xa0;; ceux qu’un serveur annonce n’ont pas à être indiqués</translation>
    </message>
    <message>
        <source>The user&apos;s, or without a user a token. It is not kept; empty takes it from the file, or from the environment variable CORVEL_NATS_PASSWORD</source>
        <translation>Celui de l’utilisateur ou, sans utilisateur, un jeton. Il n’est pas conservé&#xa0;; vide, il est pris dans le fichier ou dans la variable d’environnement CORVEL_NATS_PASSWORD</translation>
    </message>
    <message>
        <source>Cre&amp;dentials:</source>
        <translation>I&amp;dentifiants&#xa0;:</translation>
    </message>
    <message>
        <source>A file of credentials, with a user&apos;s token and key</source>
        <translation>Un fichier d’identifiants, avec le jeton et la clé d’un utilisateur</translation>
    </message>
    <message>
        <source>Encr&amp;ypted:</source>
        <translation>Chi&amp;ffré&#xa0;:</translation>
    </message>
    <message>
        <source>Whether the connection is encrypted</source>
        <translation>Si la connexion est chiffrée</translation>
    </message>
    <message>
        <source>Sub&amp;jects:</source>
        <translation>Su&amp;jets&#xa0;:</translation>
    </message>
    <message>
        <source>Subjects with commas between them: &quot;*&quot; stands for one level, &quot;&gt;&quot; for the rest</source>
        <translation>Des sujets séparés par des virgules&#xa0;: «&#xa0;*&#xa0;» désigne un niveau, «&#xa0;&gt;&#xa0;» le reste</translation>
    </message>
    <message>
        <source>The name of a stream; behind a slash there can be a subject: &quot;*&quot; stands for one level, &quot;&gt;&quot; for the rest</source>
        <translation>Le nom d’un flux&#xa0;; après une barre oblique peut suivre un sujet&#xa0;: «&#xa0;*&#xa0;» désigne un niveau, «&#xa0;&gt;&#xa0;» le reste</translation>
    </message>
    <message>
        <source>What becomes of it when everything was read that is stored</source>
        <translation>Ce qu’il en advient quand tout ce qui est stocké a été lu</translation>
    </message>
    <message>
        <source>NATS: subjects of a server</source>
        <translation>NATS&#xa0;: sujets d’un serveur</translation>
    </message>
    <message>
        <source>NATS JetStream: a stored stream</source>
        <translation>NATS JetStream&#xa0;: un flux stocké</translation>
    </message>
    <message>
        <source>Strea&amp;m:</source>
        <translation>Flu&amp;x&#xa0;:</translation>
    </message>
    <message>
        <source>&amp;At the end:</source>
        <translation>À l&amp;a fin&#xa0;:</translation>
    </message>
</context>
<context>
    <name>JsonCheck</name>
    <message>
        <source>%1 bytes follow the end; they are not decoded</source>
        <translation>%1 octets suivent la fin&#xa0;; ils ne sont pas décodés</translation>
    </message>
    <message>
        <source>there is nothing</source>
        <translation>il n’y a rien</translation>
    </message>
    <message>
        <source>it ends before what is open was closed</source>
        <translation>fin avant que ce qui est ouvert soit fermé</translation>
    </message>
    <message>
        <source>a comma or the end of what is open was expected; the rest is not decoded</source>
        <translation>une virgule ou la fin de ce qui est ouvert était attendue&#xa0;; le reste n’est pas décodé</translation>
    </message>
    <message>
        <source>the name of a member was expected; the rest is not decoded</source>
        <translation>le nom d’un membre était attendu&#xa0;; le reste n’est pas décodé</translation>
    </message>
    <message>
        <source>a name without a value; the rest is not decoded</source>
        <translation>un nom sans valeur&#xa0;; le reste n’est pas décodé</translation>
    </message>
    <message>
        <source>the name is there more than once; the last value is shown</source>
        <translation>le nom figure plusieurs fois&#xa0;; la dernière valeur est affichée</translation>
    </message>
    <message>
        <source>nested more than %1 deep; it is shown as it came</source>
        <translation>imbriqué à plus de %1 niveaux&#xa0;; affiché tel quel</translation>
    </message>
    <message>
        <source>a value was expected; the rest is not decoded</source>
        <translation>une valeur était attendue&#xa0;; le reste n’est pas décodé</translation>
    </message>
    <message>
        <source>no value of JSON, shown as it is</source>
        <translation>pas une valeur JSON, affichée telle quelle</translation>
    </message>
    <message>
        <source>a text does not end; it is not decoded</source>
        <translation>un texte ne finit pas&#xa0;; il n’est pas décodé</translation>
    </message>
    <message>
        <source>not valid UTF-8; wrong bytes are shown as question marks</source>
        <translation>UTF-8 non valide&#xa0;; les octets fautifs sont affichés comme points d’interrogation</translation>
    </message>
    <message>
        <source>a control character without an escape</source>
        <translation>un caractère de contrôle sans échappement</translation>
    </message>
    <message>
        <source>byte %1: </source>
        <translation>octet %1&#xa0;: </translation>
    </message>
    <message>
        <source>%1 at byte %2: </source>
        <translation>%1 à l’octet %2&#xa0;: </translation>
    </message>
    <message>
        <source>and more</source>
        <translation>et d’autres</translation>
    </message>
    <message>
        <source>half of a surrogate pair, shown as U+FFFD: %1</source>
        <translation>moitié d’une paire de substitution, affichée comme U+FFFD&#xa0;: %1</translation>
    </message>
    <message>
        <source>no escape of JSON, shown as it is: \%1</source>
        <translation>pas un échappement JSON, affiché tel quel&#xa0;: \%1</translation>
    </message>
    <message>
        <source>but %1 is an array</source>
        <translation>mais %1 est un tableau</translation>
    </message>
    <message>
        <source>an array</source>
        <translation>un tableau</translation>
    </message>
    <message>
        <source>an object</source>
        <translation>un objet</translation>
    </message>
    <message>
        <source>but %1 is %2</source>
        <translation>mais %1 est %2</translation>
    </message>
    <message>
        <source>it is there again</source>
        <translation>il figure une nouvelle fois</translation>
    </message>
</context>
<context>
    <name>JsonDocument</name>
    <message>
        <source>not decoded: longer than %1 bytes</source>
        <translation>non décodé&#xa0;: plus de %1 octets</translation>
    </message>
    <message>
        <source>cannot be read to its end</source>
        <translation>ne peut pas être lu jusqu’à la fin</translation>
    </message>
</context>
<context>
    <name>JsonMessage</name>
    <message>
        <source>between the values</source>
        <translation>entre les valeurs</translation>
    </message>
    <message>
        <source>name of a member</source>
        <translation>nom d’un membre</translation>
    </message>
</context>
<context>
    <name>JsonSchema</name>
    <message>
        <source>there are more than %1 types</source>
        <translation>il y a plus de %1 types</translation>
    </message>
    <message>
        <source>the schema is longer than %1 bytes</source>
        <translation>le schéma fait plus de %1 octets</translation>
    </message>
    <message>
        <source>the schema is no JSON: %1</source>
        <translation>le schéma n’est pas du JSON&#xa0;: %1</translation>
    </message>
    <message>
        <source>the schema is neither an object nor true</source>
        <translation>le schéma n’est ni un objet ni true</translation>
    </message>
    <message>
        <source>the schema is too large: more than %1 parts</source>
        <translation>le schéma est trop grand&#xa0;: plus de %1 parties</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 à %2</translation>
    </message>
    <message>
        <source>at least %1</source>
        <translation>au moins %1</translation>
    </message>
    <message>
        <source>at most %1</source>
        <translation>au plus %1</translation>
    </message>
</context>
<context>
    <name>MavlinkDialect</name>
    <message>
        <source>%1 to %2</source>
        <translation>%1 à %2</translation>
    </message>
    <message>
        <source>at least %1</source>
        <translation>au moins %1</translation>
    </message>
    <message>
        <source>at most %1</source>
        <translation>au plus %1</translation>
    </message>
    <message>
        <source>%1 more errors</source>
        <translation>%1 autres erreurs</translation>
    </message>
    <message>
        <source>no message definitions: the outermost element is &lt;%1&gt; instead of &lt;mavlink&gt;</source>
        <translation>pas de définitions de messages&#xa0;: l’élément extérieur est &lt;%1&gt; au lieu de &lt;mavlink&gt;</translation>
    </message>
    <message>
        <source>malformed XML: %1</source>
        <translation>XML mal formé&#xa0;: %1</translation>
    </message>
    <message>
        <source>an enum without a name</source>
        <translation>une énumération sans nom</translation>
    </message>
    <message>
        <source>an enum entry without a name</source>
        <translation>une entrée d’énumération sans nom</translation>
    </message>
    <message>
        <source>%1: the value &quot;%2&quot; is not a number</source>
        <translation>%1&#xa0;: la valeur «&#xa0;%2&#xa0;» n’est pas un nombre</translation>
    </message>
    <message>
        <source>a message without a name</source>
        <translation>un message sans nom</translation>
    </message>
    <message>
        <source>%1: the id &quot;%2&quot; is not a number from 0 to %3</source>
        <translation>%1&#xa0;: l’identifiant «&#xa0;%2&#xa0;» n’est pas un nombre de 0 à %3</translation>
    </message>
    <message>
        <source>a field without a name</source>
        <translation>un champ sans nom</translation>
    </message>
    <message>
        <source>%1: the array length of &quot;%2&quot; is not a number from 1 to %3</source>
        <translation>%1&#xa0;: la longueur du tableau «&#xa0;%2&#xa0;» n’est pas un nombre de 1 à %3</translation>
    </message>
    <message>
        <source>%1: unknown type &quot;%2&quot;</source>
        <translation>%1&#xa0;: type inconnu «&#xa0;%2&#xa0;»</translation>
    </message>
    <message>
        <source>cannot be read: not a file</source>
        <translation>illisible&#xa0;: ce n’est pas un fichier</translation>
    </message>
    <message>
        <source>cannot be read: %1</source>
        <translation>illisible&#xa0;: %1</translation>
    </message>
    <message>
        <source>cannot be read: larger than %1 bytes</source>
        <translation>illisible&#xa0;: plus de %1 octets</translation>
    </message>
    <message>
        <source>files include each other: %1</source>
        <translation>des fichiers s’incluent mutuellement&#xa0;: %1</translation>
    </message>
    <message>
        <source>the included file &quot;%1&quot; %2</source>
        <translation>le fichier inclus «&#xa0;%1&#xa0;» %2</translation>
    </message>
    <message>
        <source>more than %1 files</source>
        <translation>plus de %1 fichiers</translation>
    </message>
    <message>
        <source>more than %1 bytes in all files</source>
        <translation>plus de %1 octets dans l’ensemble des fichiers</translation>
    </message>
    <message>
        <source>the entry %1 of %2 is already defined at %3</source>
        <translation>l’entrée %1 de %2 est déjà définie en %3</translation>
    </message>
    <message>
        <source>%1: the id %2 is already that of %3 at %4</source>
        <translation>%1&#xa0;: l’identifiant %2 est déjà celui de %3 en %4</translation>
    </message>
    <message>
        <source>%1: the name is already taken at %2</source>
        <translation>%1&#xa0;: le nom est déjà pris en %2</translation>
    </message>
    <message>
        <source>%1: the field %2 is there twice</source>
        <translation>%1&#xa0;: le champ %2 figure deux fois</translation>
    </message>
    <message>
        <source>%1: the payload is longer than %2 bytes with the field %3</source>
        <translation>%1&#xa0;: avec le champ %3, la charge utile dépasse %2 octets</translation>
    </message>
</context>
<context>
    <name>MavlinkFrame</name>
    <message>
        <source>start of a frame</source>
        <translation>début d’une trame</translation>
    </message>
    <message>
        <source>length of the payload</source>
        <translation>longueur de la charge utile</translation>
    </message>
    <message>
        <source>flags that a receiver must know</source>
        <translation>drapeaux qu’un récepteur doit connaître</translation>
    </message>
    <message>
        <source>flags</source>
        <translation>drapeaux</translation>
    </message>
    <message>
        <source>sequence number</source>
        <translation>numéro de séquence</translation>
    </message>
    <message>
        <source>system that sent it</source>
        <translation>système émetteur</translation>
    </message>
    <message>
        <source>component that sent it</source>
        <translation>composant émetteur</translation>
    </message>
    <message>
        <source>number of the message type</source>
        <translation>numéro du type de message</translation>
    </message>
    <message>
        <source>payload without a field</source>
        <translation>charge utile sans champ</translation>
    </message>
    <message>
        <source>checksum</source>
        <translation>somme de contrôle</translation>
    </message>
    <message>
        <source>signature</source>
        <translation>signature</translation>
    </message>
</context>
<context>
    <name>McapIndex</name>
    <message>
        <source>%1: this is no MCAP file</source>
        <translation>%1&#xa0;: ce n’est pas un fichier MCAP</translation>
    </message>
    <message>
        <source>%1: cancelled</source>
        <translation>%1&#xa0;: annulé</translation>
    </message>
</context>
<context>
    <name>McapStream</name>
    <message>
        <source>a schema&apos;s lengths do not fit its record</source>
        <translation>les longueurs d’un schéma ne correspondent pas à son bloc de données</translation>
    </message>
    <message>
        <source>a schema has the number 0, which means none</source>
        <translation>un schéma a le numéro 0, qui signifie aucun</translation>
    </message>
    <message>
        <source>schema %1 is one too many: 64 MiB of schemas and channels are known</source>
        <translation>le schéma %1 est de trop&#xa0;: 64 Mio de schémas et de canaux sont connus</translation>
    </message>
    <message>
        <source>a channel&apos;s lengths do not fit its record</source>
        <translation>les longueurs d’un canal ne correspondent pas à son bloc de données</translation>
    </message>
    <message>
        <source>channel %1 is one too many: 64 MiB of schemas and channels are known</source>
        <translation>le canal %1 est de trop&#xa0;: 64 Mio de schémas et de canaux sont connus</translation>
    </message>
    <message>
        <source>no encoding</source>
        <translation>sans codage</translation>
    </message>
    <message>
        <source> without a schema</source>
        <translation> sans schéma</translation>
    </message>
    <message>
        <source>the channel has no schema</source>
        <translation>le canal n’a pas de schéma</translation>
    </message>
    <message>
        <source>the channel&apos;s schema %1 was not announced</source>
        <translation>le schéma %1 du canal n’a pas été annoncé</translation>
    </message>
    <message>
        <source>the schema %1 is %2 and the messages are %3</source>
        <translation>le schéma %1 est %2 et les messages sont %3</translation>
    </message>
    <message>
        <source>the schema %1 cannot be used: %2</source>
        <translation>le schéma %1 est inutilisable&#xa0;: %2</translation>
    </message>
    <message>
        <source>%1 (%2, not decodable)</source>
        <translation>%1 (%2, non décodable)</translation>
    </message>
    <message>
        <source>channel %1</source>
        <translation>canal %1</translation>
    </message>
    <message>
        <source>not announced</source>
        <translation>non annoncé</translation>
    </message>
    <message>
        <source>a chunk whose lengths contradict each other</source>
        <translation>un bloc dont les longueurs se contredisent</translation>
    </message>
    <message>
        <source>a chunk of %1 bytes</source>
        <translation>un bloc de %1 octets</translation>
    </message>
    <message>
        <source>a chunk with the compression &quot;%1&quot;</source>
        <translation>un bloc avec la compression «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>a chunk that holds %1 bytes was passed over, %2 MiB are read</source>
        <translation>un bloc contenant %1 octets a été sauté, on lit jusqu’à %2 Mio</translation>
    </message>
    <message>
        <source>a chunk that does not decompress was dropped (%1)</source>
        <translation>un bloc qui ne se décompresse pas a été écarté (%1)</translation>
    </message>
    <message>
        <source>a chunk that says it holds %1 bytes and holds %2 was dropped</source>
        <translation>un bloc qui dit contenir %1 octets et en contient %2 a été écarté</translation>
    </message>
    <message>
        <source>a chunk, which was dropped,</source>
        <translation>un bloc, qui a été écarté,</translation>
    </message>
    <message>
        <source>a record in a chunk has %1 bytes where %2 are left; what follows it was dropped</source>
        <translation>un enregistrement d’un bloc a %1 octets là où il en reste %2&#xa0;; la suite a été écartée</translation>
    </message>
    <message>
        <source>a chunk, or a second without chunks, is earlier than the one before the last, and there is no index</source>
        <translation>un bloc, ou une seconde sans blocs, est antérieur à l’avant-dernier, et il n’y a pas d’index</translation>
    </message>
    <message>
        <source>chunks overlap by more than %1 MiB</source>
        <translation>des blocs se recouvrent de plus de %1 Mio</translation>
    </message>
    <message>
        <source>%1 messages of %2 had to wait until it was announced</source>
        <translation>%1 messages de %2 ont dû attendre son annonce</translation>
    </message>
    <message>
        <source>messages of channel %1, which was not announced</source>
        <translation>messages du canal %1, qui n’a pas été annoncé</translation>
    </message>
    <message>
        <source> in what could be read</source>
        <translation> dans ce qui a pu être lu</translation>
    </message>
    <message>
        <source>%1 MiB</source>
        <translation>%1 Mio</translation>
    </message>
    <message>
        <source>a schema</source>
        <translation>un schéma</translation>
    </message>
    <message>
        <source>a channel</source>
        <translation>un canal</translation>
    </message>
    <message>
        <source>a message</source>
        <translation>un message</translation>
    </message>
    <message>
        <source>a chunk</source>
        <translation>un bloc</translation>
    </message>
    <message>
        <source>an attachment</source>
        <translation>une pièce jointe</translation>
    </message>
    <message>
        <source>a record 0x%1</source>
        <translation>un élément 0x%1</translation>
    </message>
    <message>
        <source>an MCAP file begins otherwise</source>
        <translation>un fichier MCAP commence autrement</translation>
    </message>
    <message>
        <source>no record has the number 0</source>
        <translation>aucun élément n’a le numéro 0</translation>
    </message>
    <message>
        <source>%1 of %2 bytes</source>
        <translation>%1 de %2 octets</translation>
    </message>
    <message>
        <source>the data of the file</source>
        <translation>le contenu du fichier</translation>
    </message>
    <message>
        <source>the summary</source>
        <translation>le résumé</translation>
    </message>
    <message>
        <source>%1 should have the CRC %2 and has %3</source>
        <translation>%1 devrait avoir le CRC %2 et a %3</translation>
    </message>
    <message>
        <source>%1 was passed over, %2 are read</source>
        <translation>%1 a été sauté, on lit jusqu’à %2</translation>
    </message>
    <message>
        <source>an MCAP file ends otherwise</source>
        <translation>un fichier MCAP finit autrement</translation>
    </message>
    <message>
        <source>they follow the end of the recording</source>
        <translation>ils suivent la fin de l’enregistrement</translation>
    </message>
    <message>
        <source>inside a chunk, of which %1 messages can be read</source>
        <translation>dans un bloc dont %1 messages sont lisibles</translation>
    </message>
    <message>
        <source>inside %1</source>
        <translation>ici&#xa0;: %1</translation>
    </message>
    <message>
        <source>the last 8 bytes are missing</source>
        <translation>les 8 derniers octets manquent</translation>
    </message>
    <message>
        <source>the recording has no end mark, it was not finished</source>
        <translation>l’enregistrement n’a pas de marque de fin, il n’a pas été terminé</translation>
    </message>
</context>
<context>
    <name>MessageStatisticsWidget</name>
    <message>
        <source>Message</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Nombre</translation>
    </message>
    <message>
        <source>Current rate/interval</source>
        <translation>Fréquence/intervalle actuel</translation>
    </message>
    <message>
        <source>Gaps</source>
        <translation>Lacunes</translation>
    </message>
    <message>
        <source>CRC Errors</source>
        <translation>Erreurs CRC</translation>
    </message>
</context>
<context>
    <name>MessageTreeWidget</name>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>Raw value</source>
        <translation>Valeur brute</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Valeur</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>Custom 1</source>
        <translation>Personnalisée 1</translation>
    </message>
    <message>
        <source>Custom 2</source>
        <translation>Personnalisée 2</translation>
    </message>
    <message>
        <source>Custom 3</source>
        <translation>Personnalisée 3</translation>
    </message>
    <message>
        <source>Custom 4</source>
        <translation>Personnalisée 4</translation>
    </message>
    <message>
        <source>Custom 5</source>
        <translation>Personnalisée 5</translation>
    </message>
    <message>
        <source>Custom 6</source>
        <translation>Personnalisée 6</translation>
    </message>
    <message>
        <source>Custom 7</source>
        <translation>Personnalisée 7</translation>
    </message>
    <message>
        <source>Custom 8</source>
        <translation>Personnalisée 8</translation>
    </message>
    <message>
        <source>Custom 9</source>
        <translation>Personnalisée 9</translation>
    </message>
    <message>
        <source>Custom 10</source>
        <translation>Personnalisée 10</translation>
    </message>
    <message>
        <source>Column type %1</source>
        <translation>Type de colonne %1</translation>
    </message>
    <message>
        <source>Duplicate column</source>
        <translation>Colonne en double</translation>
    </message>
    <message>
        <source>Attempt to add to a MessageTreeWidget a column that is already present: %1. Duplicate column was not added.</source>
        <translation>Tentative d’ajouter à un MessageTreeWidget une colonne déjà présente&#xa0;: %1. La colonne en double n’a pas été ajoutée.</translation>
    </message>
    <message>
        <source>&amp;Type</source>
        <translation>&amp;Type</translation>
    </message>
    <message>
        <source>&amp;Raw Value</source>
        <translation>Valeur b&amp;rute</translation>
    </message>
</context>
<context>
    <name>MessageTreeWidgetItem</name>
    <message>
        <source>No message type set</source>
        <translation>Aucun type de message défini</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>No message</source>
        <translation>Pas de message</translation>
    </message>
    <message>
        <source>Hidden data</source>
        <translation>Données masquées</translation>
    </message>
    <message>
        <source>Due to confidentiality, the data in this message has been (partly) hidden.</source>
        <translation>Pour raison de confidentialité, les données de ce message ont été (en partie) masquées.</translation>
    </message>
</context>
<context>
    <name>MessageWidget</name>
    <message>
        <source>No message type set</source>
        <translation>Aucun type de message défini</translation>
    </message>
</context>
<context>
    <name>MqttCheck</name>
    <message>
        <source>%1 (packet %2)</source>
        <translation>%1 (paquet %2)</translation>
    </message>
    <message>
        <source>the server sent a %1 for the second time</source>
        <translation>le serveur a envoyé un %1 pour la deuxième fois</translation>
    </message>
    <message>
        <source>the server sent a %1, which only clients send</source>
        <translation>le serveur a envoyé un %1, que seuls les clients envoient</translation>
    </message>
    <message>
        <source>the server sent a %1 with the flags %2</source>
        <translation>le serveur a envoyé un %1 avec les drapeaux %2</translation>
    </message>
    <message>
        <source>the server sent a %1 whose length has more than four bytes</source>
        <translation>le serveur a envoyé un %1 dont la longueur a plus de quatre octets</translation>
    </message>
    <message>
        <source>the server sent a %1 of %2 bytes</source>
        <translation>le serveur a envoyé un %1 de %2 octets</translation>
    </message>
    <message>
        <source>the server sent a %1 whose topic is longer than the packet</source>
        <translation>le serveur a envoyé un %1 dont le sujet est plus long que le paquet</translation>
    </message>
    <message>
        <source>the server sent a %1 without a topic</source>
        <translation>le serveur a envoyé un %1 sans sujet</translation>
    </message>
    <message>
        <source>the server sent a %1 that ends before its number</source>
        <translation>le serveur a envoyé un %1 qui finit avant son numéro</translation>
    </message>
    <message>
        <source>the server sent a %1 that is too short</source>
        <translation>le serveur a envoyé un %1 trop court</translation>
    </message>
    <message>
        <source>the server sent a %1 with something in it</source>
        <translation>le serveur a envoyé un %1 qui contient quelque chose</translation>
    </message>
    <message>
        <source>the server sent a %1 with something behind its properties</source>
        <translation>le serveur a envoyé un %1 avec quelque chose après ses propriétés</translation>
    </message>
    <message>
        <source>the server sent a %1 whose properties are longer than the packet</source>
        <translation>le serveur a envoyé un %1 dont les propriétés sont plus longues que le paquet</translation>
    </message>
    <message>
        <source>the server sent a %1 with the unknown property %2</source>
        <translation>le serveur a envoyé un %1 avec la propriété inconnue %2</translation>
    </message>
    <message>
        <source>the server sent a %1 whose property %2 is longer than all of them</source>
        <translation>le serveur a envoyé un %1 dont la propriété %2 est plus longue que toutes ensemble</translation>
    </message>
</context>
<context>
    <name>MqttInput</name>
    <message>
        <source>it speaks no such version of MQTT</source>
        <translation>il ne parle pas cette version de MQTT</translation>
    </message>
    <message>
        <source>it does not take the name of this program</source>
        <translation>il n’accepte pas le nom de ce programme</translation>
    </message>
    <message>
        <source>user or password is wrong</source>
        <translation>utilisateur ou mot de passe erroné</translation>
    </message>
    <message>
        <source>not authorised</source>
        <translation>non autorisé</translation>
    </message>
    <message>
        <source>the server is unavailable</source>
        <translation>le serveur est indisponible</translation>
    </message>
    <message>
        <source>the server is busy</source>
        <translation>le serveur est occupé</translation>
    </message>
    <message>
        <source>this user or address is banned</source>
        <translation>cet utilisateur ou cette adresse est banni</translation>
    </message>
    <message>
        <source>the server shuts down</source>
        <translation>le serveur s’arrête</translation>
    </message>
    <message>
        <source>another program has connected under the same name</source>
        <translation>un autre programme s’est connecté sous le même nom</translation>
    </message>
    <message>
        <source>it does not take such a filter</source>
        <translation>il n’accepte pas un tel filtre</translation>
    </message>
    <message>
        <source>a quota is used up</source>
        <translation>un quota est épuisé</translation>
    </message>
    <message>
        <source>another server is to be used</source>
        <translation>un autre serveur doit être utilisé</translation>
    </message>
    <message>
        <source>the server has moved</source>
        <translation>le serveur a déménagé</translation>
    </message>
    <message>
        <source>too many connections in a short time</source>
        <translation>trop de connexions en peu de temps</translation>
    </message>
    <message>
        <source>reason 0x%1</source>
        <translation>raison 0x%1</translation>
    </message>
    <message>
        <source>no encrypted connection comes about: %1</source>
        <translation>aucune connexion chiffrée ne s’établit&#xa0;: %1</translation>
    </message>
    <message>
        <source>what comes is no MQTT</source>
        <translation>ce qui arrive n’est pas du MQTT</translation>
    </message>
    <message>
        <source>the server has closed the connection</source>
        <translation>le serveur a fermé la connexion</translation>
    </message>
    <message>
        <source>no answer within %1 s</source>
        <translation>pas de réponse en %1 s</translation>
    </message>
    <message>
        <source>the server refuses the connection: %1</source>
        <translation>le serveur refuse la connexion&#xa0;: %1</translation>
    </message>
    <message>
        <source>the server ends the connection: %1</source>
        <translation>le serveur met fin à la connexion&#xa0;: %1</translation>
    </message>
    <message>
        <source>the server refuses %1: %2</source>
        <translation>le serveur refuse %1&#xa0;: %2</translation>
    </message>
    <message>
        <source>a message of %1 bytes of %2 is too large</source>
        <translation>un message de %1 octets de %2 est trop grand</translation>
    </message>
    <message>
        <source>%1 messages came faster than they were read, and were dropped</source>
        <translation>%1 messages sont arrivés plus vite qu’ils n’étaient lus, et ont été écartés</translation>
    </message>
    <message>
        <source>it does not take such a topic</source>
        <translation>il n’accepte pas un tel sujet</translation>
    </message>
    <message>
        <source>the message is too large</source>
        <translation>le message est trop grand</translation>
    </message>
    <message>
        <source>it keeps no messages</source>
        <translation>il ne conserve pas de messages</translation>
    </message>
    <message>
        <source>%1 is no certificate or key that can be used</source>
        <translation>%1 n’est pas un certificat ou une clé utilisable</translation>
    </message>
</context>
<context>
    <name>NatsInput</name>
    <message>
        <source>the server&apos;s JetStream does not answer within %1 s, or this user may not ask for it</source>
        <translation>le JetStream du serveur ne répond pas en %1 s, ou cet utilisateur ne peut pas l’interroger</translation>
    </message>
    <message>
        <source>the stream is a work queue: what one reads is taken from the others</source>
        <translation>le flux est une file de travail&#xa0;: ce que l’un lit est pris aux autres</translation>
    </message>
    <message>
        <source>message %1 of the stream is too large</source>
        <translation>le message %1 du flux est trop grand</translation>
    </message>
    <message>
        <source>what comes is no greeting of a NATS server</source>
        <translation>ce qui arrive n’est pas la salutation d’un serveur NATS</translation>
    </message>
    <message>
        <source>user, password or token is wrong</source>
        <translation>utilisateur, mot de passe ou jeton erroné</translation>
    </message>
    <message>
        <source>the server does not encrypt connections</source>
        <translation>le serveur ne chiffre pas les connexions</translation>
    </message>
    <message>
        <source>no encrypted connection comes about: %1</source>
        <translation>aucune connexion chiffrée ne s’établit&#xa0;: %1</translation>
    </message>
    <message>
        <source>the connection is lost; it is tried again for as long as it takes</source>
        <translation>la connexion est perdue&#xa0;; elle est retentée aussi longtemps qu’il le faut</translation>
    </message>
    <message>
        <source>connected again, to %1</source>
        <translation>reconnecté, à %1</translation>
    </message>
    <message>
        <source>the server has ended the connection: %1</source>
        <translation>le serveur a mis fin à la connexion&#xa0;: %1</translation>
    </message>
    <message>
        <source>%1 messages came faster than they were read, and were dropped</source>
        <translation>%1 messages sont arrivés plus vite qu’ils n’étaient lus, et ont été écartés</translation>
    </message>
    <message>
        <source>a message of %1 is too large</source>
        <translation>un message de %1 est trop grand</translation>
    </message>
    <message>
        <source>the server has no JetStream, or none for this user</source>
        <translation>le serveur n’a pas de JetStream, ou pas pour cet utilisateur</translation>
    </message>
    <message>
        <source>there is no stream of that name</source>
        <translation>il n’y a pas de flux de ce nom</translation>
    </message>
    <message>
        <source>the server says: %1</source>
        <translation>le serveur dit&#xa0;: %1</translation>
    </message>
    <message>
        <source>the server has the session %1 no more</source>
        <translation>le serveur n’a plus la session %1</translation>
    </message>
    <message>
        <source>the stream has a consumer %1 that is no session of this program; another name is needed</source>
        <translation>le flux a un consommateur %1 qui n’est pas une session de ce programme&#xa0;; il faut un autre nom</translation>
    </message>
    <message>
        <source>the session %1 is of the subject &quot;%2&quot;; what is read of another one needs a session of another name</source>
        <translation>la session %1 porte sur le sujet «&#xa0;%2&#xa0;»&#xa0;; en lire un autre demande une session d’un autre nom</translation>
    </message>
    <message>
        <source>another program reads in the session %1</source>
        <translation>un autre programme lit dans la session %1</translation>
    </message>
</context>
<context>
    <name>Output</name>
    <message>
        <source>&quot;%1&quot; is no address of this computer; 0.0.0.0 stands for all</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas une adresse de cet ordinateur&#xa0;; 0.0.0.0 les désigne toutes</translation>
    </message>
    <message>
        <source>nothing can stand behind the port</source>
        <translation>rien ne peut figurer après le port</translation>
    </message>
    <message>
        <source>%1 was refused: %2</source>
        <translation>%1 a été refusé&#xa0;: %2</translation>
    </message>
    <message>
        <source>there are too many clients</source>
        <translation>il y a trop de clients</translation>
    </message>
    <message>
        <source>it speaks no protocol of Foxglove</source>
        <translation>il ne parle aucun protocole de Foxglove</translation>
    </message>
    <message>
        <source>%1 is connected</source>
        <translation>%1 est connecté</translation>
    </message>
    <message>
        <source>%1 is gone</source>
        <translation>%1 est parti</translation>
    </message>
    <message>
        <source>no host is named</source>
        <translation>aucun hôte n’est indiqué</translation>
    </message>
    <message>
        <source>no prefix of the topics is named behind the host</source>
        <translation>aucun préfixe des sujets n’est indiqué après l’hôte</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no prefix of topics</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un préfixe de sujets</translation>
    </message>
    <message>
        <source>a certificate (cert) and its key (key) belong together</source>
        <translation>un certificat (cert) et sa clé (key) vont ensemble</translation>
    </message>
    <message>
        <source>no answer within %1 s</source>
        <translation>pas de réponse en %1 s</translation>
    </message>
    <message>
        <source>%1; trying again</source>
        <translation>%1&#xa0;; nouvel essai</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no prefix of subjects; fleet and plant.hall are some</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un préfixe de sujets&#xa0;; fleet et plant.hall en sont</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no name of a stream</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un nom de flux</translation>
    </message>
    <message>
        <source>tls is &quot;%1&quot;; it is auto or on</source>
        <translation>tls est «&#xa0;%1&#xa0;»&#xa0;; c’est auto ou on</translation>
    </message>
    <message>
        <source>; trying again</source>
        <translation>&#xa0;; nouvel essai</translation>
    </message>
    <message>
        <source>nobody confirms what is published: a stream has to take it; trying again</source>
        <translation>personne ne confirme ce qui est publié&#xa0;: un flux doit le prendre&#xa0;; nouvel essai</translation>
    </message>
    <message>
        <source>user, password or token is wrong</source>
        <translation>utilisateur, mot de passe ou jeton erroné</translation>
    </message>
    <message>
        <source>the connection is lost%1; trying again</source>
        <translation>la connexion est perdue%1&#xa0;; nouvel essai</translation>
    </message>
    <message>
        <source>no stream of JetStream takes what is published</source>
        <translation>aucun flux de JetStream ne prend ce qui est publié</translation>
    </message>
    <message>
        <source>stream %1: %2</source>
        <translation>flux %1&#xa0;: %2</translation>
    </message>
    <message>
        <source>the message is too large for the server</source>
        <translation>le message est trop grand pour le serveur</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no parameter; NAME=VALUE is one</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un paramètre&#xa0;; NOM=VALEUR en est un</translation>
    </message>
    <message>
        <source>there is no parameter &quot;%1&quot;; there is: %2</source>
        <translation>il n’y a pas de paramètre «&#xa0;%1&#xa0;»&#xa0;; il y a&#xa0;: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is told twice</source>
        <translation>«&#xa0;%1&#xa0;» est indiqué deux fois</translation>
    </message>
    <message>
        <source>a password does not stand in an address, where others see it</source>
        <translation>un mot de passe ne figure pas dans une adresse, où d’autres le voient</translation>
    </message>
    <message>
        <source>there are no users</source>
        <translation>il n’y a pas d’utilisateurs</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no host with a port; an IPv6 address stands in brackets, ports are 1 to 65535</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un hôte avec un port&#xa0;; une adresse IPv6 s’écrit entre crochets, les ports vont de 1 à 65535</translation>
    </message>
    <message>
        <source>%1 is no output; there is: %2</source>
        <translation>%1 n’est pas une sortie&#xa0;; il y a&#xa0;: %2</translation>
    </message>
</context>
<context>
    <name>OutputKind</name>
    <message>
        <source>MCAP recordings</source>
        <translation>enregistrements MCAP</translation>
    </message>
    <message>
        <source>MAVLink recordings</source>
        <translation>enregistrements MAVLink</translation>
    </message>
    <message>
        <source>WebSocket: a server for Foxglove clients</source>
        <translation>WebSocket&#xa0;: un serveur pour clients Foxglove</translation>
    </message>
    <message>
        <source>UDP: MAVLink frames as datagrams</source>
        <translation>UDP&#xa0;: trames MAVLink en datagrammes</translation>
    </message>
    <message>
        <source>MQTT: topics of a broker</source>
        <translation>MQTT&#xa0;: sujets d’un courtier</translation>
    </message>
    <message>
        <source>MQTT, encrypted: topics of a broker</source>
        <translation>MQTT chiffré&#xa0;: sujets d’un courtier</translation>
    </message>
    <message>
        <source>NATS: a stream of JetStream</source>
        <translation>NATS&#xa0;: un flux de JetStream</translation>
    </message>
</context>
<context>
    <name>PathExpression</name>
    <message>
        <source>character %1: %2</source>
        <translation>caractère %1&#xa0;: %2</translation>
    </message>
    <message>
        <source>this part has one level only; a separator in a name is written \/</source>
        <translation>cette partie n’a qu’un niveau&#xa0;; un séparateur dans un nom s’écrit \/</translation>
    </message>
    <message>
        <source>no bracket was opened; one in a name is written \]</source>
        <translation>aucun crochet n’a été ouvert&#xa0;; dans un nom il s’écrit \]</translation>
    </message>
    <message>
        <source>only an index can stand here</source>
        <translation>seul un indice peut figurer ici</translation>
    </message>
    <message>
        <source>nothing can stand here</source>
        <translation>rien ne peut figurer ici</translation>
    </message>
    <message>
        <source>the name before the # is missing; this character in a name is written \#</source>
        <translation>il manque le nom avant #&#xa0;; dans un nom ce caractère s’écrit \#</translation>
    </message>
    <message>
        <source>the character behind the \ is missing</source>
        <translation>il manque le caractère après \</translation>
    </message>
    <message>
        <source>only / * # [ ] and \ can stand behind a \, or 0 alone for an empty name</source>
        <translation>seuls / * # [ ] et \ peuvent suivre un \, ou 0 seul pour un nom vide</translation>
    </message>
    <message>
        <source>the wildcard stands alone; a star in a name is written \*</source>
        <translation>le joker s’écrit seul&#xa0;; une étoile dans un nom s’écrit \*</translation>
    </message>
    <message>
        <source>a number from 1 must follow the #; this character in a name is written \#</source>
        <translation>un nombre à partir de 1 doit suivre #&#xa0;; dans un nom ce caractère s’écrit \#</translation>
    </message>
    <message>
        <source>only fields have an index; a bracket in a name is written \[</source>
        <translation>seuls les champs ont un indice&#xa0;; un crochet dans un nom s’écrit \[</translation>
    </message>
    <message>
        <source>the ] is missing</source>
        <translation>il manque ]</translation>
    </message>
    <message>
        <source>an index is a number or *</source>
        <translation>un indice est un nombre ou *</translation>
    </message>
    <message>
        <source>nothing can stand behind an index</source>
        <translation>rien ne peut suivre un indice</translation>
    </message>
    <message>
        <source>the path has too many levels</source>
        <translation>le chemin a trop de niveaux</translation>
    </message>
</context>
<context>
    <name>PathExpressionAssistant</name>
    <message>
        <source>No known message type or field is called so</source>
        <translation>Aucun type de message ni champ connu ne s’appelle ainsi</translation>
    </message>
</context>
<context>
    <name>PathExpressionComboBox</name>
    <message>
        <source>Null path expression set!</source>
        <translation>Expression de chemin nulle&#xa0;!</translation>
    </message>
    <message>
        <source>Null options source path expression set!</source>
        <translation>Expression de chemin nulle comme source des choix&#xa0;!</translation>
    </message>
    <message>
        <source>No options</source>
        <translation>Aucun choix</translation>
    </message>
</context>
<context>
    <name>PathExpressionLabel</name>
    <message>
        <source>No path expression set!</source>
        <translation>Aucune expression de chemin définie&#xa0;!</translation>
    </message>
</context>
<context>
    <name>PathExpressionLineEdit</name>
    <message>
        <source>No path expression set!</source>
        <translation>Aucune expression de chemin définie&#xa0;!</translation>
    </message>
</context>
<context>
    <name>PathExpressionListWidget</name>
    <message>
        <source>Null options source path expression set!</source>
        <translation>Expression de chemin nulle comme source des choix&#xa0;!</translation>
    </message>
    <message>
        <source>No options</source>
        <translation>Aucun choix</translation>
    </message>
</context>
<context>
    <name>ProtobufFormat</name>
    <message>
        <source>the schema has no message type &quot;%1&quot;</source>
        <translation>le schéma n’a pas de type de message «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>no schema is loaded</source>
        <translation>aucun schéma n’est chargé</translation>
    </message>
    <message>
        <source>no schema has a message type &quot;%1&quot;</source>
        <translation>aucun schéma n’a de type de message «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>illisible</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation>ce fichier n’existe pas</translation>
    </message>
    <message>
        <source>there is no such folder to import from</source>
        <translation>ce dossier d’importation n’existe pas</translation>
    </message>
    <message>
        <source>an import path has another file of that name: %1</source>
        <translation>un chemin d’importation a un autre fichier de ce nom&#xa0;: %1</translation>
    </message>
    <message>
        <source>cannot be understood</source>
        <translation>incompréhensible</translation>
    </message>
    <message>
        <source>not decoded: longer than %1 bytes</source>
        <translation>non décodé&#xa0;: plus de %1 octets</translation>
    </message>
    <message>
        <source>cannot be parsed to its end</source>
        <translation>ne peut pas être analysé jusqu’à la fin</translation>
    </message>
    <message>
        <source>the required field &quot;%1&quot; is missing</source>
        <translation>le champ obligatoire «&#xa0;%1&#xa0;» manque</translation>
    </message>
    <message>
        <source>the schema is longer than %1 bytes</source>
        <translation>le schéma fait plus de %1 octets</translation>
    </message>
    <message>
        <source>the schema is empty</source>
        <translation>le schéma est vide</translation>
    </message>
    <message>
        <source>the schema is no serialized FileDescriptorSet</source>
        <translation>le schéma n’est pas un FileDescriptorSet sérialisé</translation>
    </message>
    <message>
        <source>and more</source>
        <translation>et d’autres</translation>
    </message>
    <message>
        <source>byte %1: </source>
        <translation>octet %1&#xa0;: </translation>
    </message>
    <message>
        <source>%1 at byte %2: </source>
        <translation>%1 à l’octet %2&#xa0;: </translation>
    </message>
    <message>
        <source>a group does not end</source>
        <translation>un groupe ne finit pas</translation>
    </message>
    <message>
        <source>the number of a field breaks off; the rest is not decoded</source>
        <translation>le numéro d’un champ s’interrompt&#xa0;; le reste n’est pas décodé</translation>
    </message>
    <message>
        <source>no number of a field; the rest is not decoded</source>
        <translation>ce n’est pas un numéro de champ&#xa0;; le reste n’est pas décodé</translation>
    </message>
    <message>
        <source>a number breaks off; the rest is not decoded</source>
        <translation>un nombre s’interrompt&#xa0;; le reste n’est pas décodé</translation>
    </message>
    <message>
        <source>a length breaks off; the rest is not decoded</source>
        <translation>une longueur s’interrompt&#xa0;; le reste n’est pas décodé</translation>
    </message>
    <message>
        <source>claims %1 bytes where %2 are left; the rest is not decoded</source>
        <translation>prétend à %1 octets là où il en reste %2&#xa0;; le reste n’est pas décodé</translation>
    </message>
    <message>
        <source>nested too deeply; it is not decoded</source>
        <translation>imbriqué trop profondément&#xa0;; il n’est pas décodé</translation>
    </message>
    <message>
        <source>the end of a group that did not begin; the rest is not decoded</source>
        <translation>la fin d’un groupe qui n’a pas commencé&#xa0;; le reste n’est pas décodé</translation>
    </message>
    <message>
        <source>an unknown kind of value; the rest is not decoded</source>
        <translation>une sorte de valeur inconnue&#xa0;; le reste n’est pas décodé</translation>
    </message>
    <message>
        <source>nested too deeply; the rest is not decoded</source>
        <translation>imbriqué trop profondément&#xa0;; le reste n’est pas décodé</translation>
    </message>
    <message>
        <source>not valid UTF-8; wrong bytes are shown as question marks</source>
        <translation>UTF-8 non valide&#xa0;; les octets fautifs sont affichés comme points d’interrogation</translation>
    </message>
    <message>
        <source>all schemas together are too large: %1 names</source>
        <translation>tous les schémas ensemble sont trop grands&#xa0;: %1 noms</translation>
    </message>
    <message>
        <source>imports are nested more than %1 deep</source>
        <translation>les importations sont imbriquées à plus de %1 niveaux</translation>
    </message>
    <message>
        <source>the schema is too large: %1 files, %2 names</source>
        <translation>le schéma est trop grand&#xa0;: %1 fichiers, %2 noms</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has parts nested more than %2 types deep</source>
        <translation>«&#xa0;%1&#xa0;» a des parties imbriquées à plus de %2 types</translation>
    </message>
    <message>
        <source>a number breaks off; the rest of the field is not decoded</source>
        <translation>un nombre s’interrompt&#xa0;; le reste du champ n’est pas décodé</translation>
    </message>
    <message>
        <source>Times %1: %2</source>
        <translation>Fois %1&#xa0;: %2</translation>
    </message>
    <message>
        <source>, and %1 more</source>
        <translation>, et %1 autres</translation>
    </message>
    <message>
        <source> (no value of the enum of %1)</source>
        <translation> (pas une valeur de l’énumération de %1)</translation>
    </message>
    <message>
        <source> (but %1 is %2)</source>
        <translation> (mais %1 est %2)</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Gaps start</source>
        <translation>Début de la lacune</translation>
    </message>
    <message>
        <source>Missing epochs</source>
        <translation>Époques manquantes</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Durée</translation>
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
        <translation>Statistiques des messages
au format %1.</translation>
    </message>
    <message>
        <source>%1 (unknown)</source>
        <translation>%1 (inconnu)</translation>
    </message>
    <message>
        <source>Number of times the %1
message has been received.</source>
        <translation>Nombre de réceptions
du message %1.</translation>
    </message>
    <message>
        <source>Most recent regular rate/interval at which the %1
message has been received.</source>
        <translation>Fréquence ou intervalle régulier le plus récent
de réception du message %1.</translation>
    </message>
    <message>
        <source>Detected gaps in regular data segments with valid time, if any.</source>
        <translation>Lacunes détectées dans les segments réguliers à date valide, s’il y en a.</translation>
    </message>
    <message>
        <source>Rates/Intervals</source>
        <translation>Fréquences/intervalles</translation>
    </message>
    <message>
        <source>The rates/intervals in which this message has been received,
together with the corresponding count.</source>
        <translation>Les fréquences/intervalles de réception de ce message,
avec le nombre correspondant.</translation>
    </message>
    <message>
        <source>N/A</source>
        <translation>n. d.</translation>
    </message>
    <message>
        <source>%1 (%2 epochs)</source>
        <translation>%1 (%2 époques)</translation>
    </message>
    <message>
        <source>No time</source>
        <translation>Sans date</translation>
    </message>
    <message>
        <source>The number of times this message 
has been received without a valid time tag.</source>
        <translation>Le nombre de réceptions de ce message 
sans date valide.</translation>
    </message>
    <message>
        <source>Unknown interval/rate</source>
        <translation>Intervalle/fréquence inconnu</translation>
    </message>
    <message>
        <source>Number of times this message has been received 
with a valid time tag but for which the interval 
could not be determined: 
there was no previous message with valid time, 
and the following messages did not 
come in at a regular rate.</source>
        <translation>Nombre de réceptions de ce message 
avec une date valide mais dont l’intervalle 
n’a pas pu être déterminé&#xa0;: 
il n’y avait pas de message antérieur à date valide, 
et les messages suivants n’arrivaient pas 
à une fréquence régulière.</translation>
    </message>
    <message>
        <source>Number of times the messages was received
with the same time stamp as previous.</source>
        <translation>Nombre de réceptions du message
avec la même date que le précédent.</translation>
    </message>
    <message>
        <source>Number of times the message was received at %1.</source>
        <translation>Nombre de réceptions du message à %1.</translation>
    </message>
    <message>
        <source>Gaps, with time and duration</source>
        <translation>Lacunes, avec date et durée</translation>
    </message>
    <message>
        <source>Gaps (incomplete list)</source>
        <translation>Lacunes (liste incomplète)</translation>
    </message>
    <message>
        <source>Gaps</source>
        <translation>Lacunes</translation>
    </message>
    <message>
        <source>Column %1</source>
        <translation>Colonne %1</translation>
    </message>
    <message>
        <source>No field set</source>
        <translation>Aucun champ défini</translation>
    </message>
    <message>
        <source>No values for optional field</source>
        <translation>Pas de valeurs pour un champ facultatif</translation>
    </message>
    <message>
        <source>Optional submessage not present</source>
        <translation>Sous-message facultatif absent</translation>
    </message>
    <message>
        <source>No value for optional field</source>
        <translation>Pas de valeur pour un champ facultatif</translation>
    </message>
    <message>
        <source>string</source>
        <translation>chaîne</translation>
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
        <translation>octets sautés</translation>
    </message>
    <message>
        <source>the time of messages goes back by %1 s</source>
        <translation>l’heure des messages recule de %1 s</translation>
    </message>
    <message>
        <source>the time of messages goes back</source>
        <translation>l’heure des messages recule</translation>
    </message>
    <message>
        <source>the time of messages leaps by %1 s</source>
        <translation>l’heure des messages saute de %1 s</translation>
    </message>
    <message>
        <source>the time of messages leaps</source>
        <translation>l’heure des messages saute</translation>
    </message>
    <message>
        <source>unknown message %1, sender %2</source>
        <translation>message inconnu %1, émetteur %2</translation>
    </message>
    <message>
        <source>message %1</source>
        <translation>message %1</translation>
    </message>
    <message>
        <source>opened</source>
        <translation>ouvert</translation>
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
        <source>%1: %2</source>
        <translation>%1&#xa0;: %2</translation>
    </message>
    <message>
        <source>Unknown %1</source>
        <translation>Inconnu %1</translation>
    </message>
</context>
<context>
    <name>RecordingFolder</name>
    <message>
        <source>%1 is missing, which %2 names</source>
        <translation>il manque %1, que %2 nomme</translation>
    </message>
    <message>
        <source>%1 is read last, for %2 does not name it</source>
        <translation>%1 est lu en dernier, car %2 ne le nomme pas</translation>
    </message>
    <message>
        <source>there is no recording in this folder: no file *.mcap</source>
        <translation>il n’y a pas d’enregistrement dans ce dossier&#xa0;: aucun fichier *.mcap</translation>
    </message>
    <message>
        <source>it says nothing of a recording</source>
        <translation>il ne dit rien d’un enregistrement</translation>
    </message>
    <message>
        <source>a recording in %1, which cannot be read</source>
        <translation>un enregistrement au format %1, qui ne peut pas être lu</translation>
    </message>
    <message>
        <source>it names no files</source>
        <translation>il ne nomme aucun fichier</translation>
    </message>
</context>
<context>
    <name>RosMessage</name>
    <message>
        <source>and more</source>
        <translation>et d’autres</translation>
    </message>
    <message>
        <source>byte %1: </source>
        <translation>octet %1&#xa0;: </translation>
    </message>
    <message>
        <source>%1 at byte %2: </source>
        <translation>%1 à l’octet %2&#xa0;: </translation>
    </message>
    <message>
        <source>; the rest is not decoded</source>
        <translation>&#xa0;; le reste n’est pas décodé</translation>
    </message>
    <message>
        <source>takes %1 bytes where %2 are left</source>
        <translation>prend %1 octets là où il en reste %2</translation>
    </message>
    <message>
        <source>%1 is no truth value</source>
        <translation>%1 n’est pas une valeur de vérité</translation>
    </message>
    <message>
        <source>a text without a zero byte at its end</source>
        <translation>un texte sans octet nul à la fin</translation>
    </message>
    <message>
        <source>%1 characters where the schema allows %2</source>
        <translation>%1 caractères là où le schéma en permet %2</translation>
    </message>
    <message>
        <source>is said to go beyond the end</source>
        <translation>est dit aller au-delà de la fin</translation>
    </message>
    <message>
        <source>%1 elements where the schema allows %2</source>
        <translation>%1 éléments là où le schéma en permet %2</translation>
    </message>
    <message>
        <source>%1 elements where %2 bytes are left</source>
        <translation>%1 éléments là où il reste %2 octets</translation>
    </message>
    <message>
        <source>is said to be longer than its elements</source>
        <translation>est dit plus long que ses éléments</translation>
    </message>
    <message>
        <source>%1 nanoseconds are no part of a second</source>
        <translation>%1 nanosecondes ne sont pas une fraction de seconde</translation>
    </message>
    <message>
        <source>member %1 must be understood, and is not known</source>
        <translation>le membre %1 doit être compris, et n’est pas connu</translation>
    </message>
    <message>
        <source>its head makes no sense or breaks off</source>
        <translation>son en-tête n’a pas de sens ou s’interrompt</translation>
    </message>
    <message>
        <source>its list of members breaks off</source>
        <translation>sa liste de membres s’interrompt</translation>
    </message>
    <message>
        <source>shorter than the 4 bytes that say how it is written</source>
        <translation>plus court que les 4 octets qui disent comment il est écrit</translation>
    </message>
    <message>
        <source>written in a way that is not known: %1 %2</source>
        <translation>écrit d’une manière inconnue&#xa0;: %1 %2</translation>
    </message>
    <message>
        <source>nobody can tell how its wide texts are written; they are shown as if in units of 16 bits</source>
        <translation>personne ne peut dire comment ses textes larges sont écrits&#xa0;; ils sont affichés comme en unités de 16 bits</translation>
    </message>
    <message>
        <source>%1 bytes are left over at its end</source>
        <translation>%1 octets restent à la fin</translation>
    </message>
    <message>
        <source>, but %1 bytes where %2 are needed</source>
        <translation>, mais %1 octets là où il en faut %2</translation>
    </message>
    <message>
        <source>%1, %2 bytes</source>
        <translation>%1, %2 octets</translation>
    </message>
    <message>
        <source>%1 points: %2</source>
        <translation>%1 points&#xa0;: %2</translation>
    </message>
    <message>
        <source>how the message is written</source>
        <translation>comment le message est écrit</translation>
    </message>
    <message>
        <source>padding, which aligns what follows</source>
        <translation>remplissage, qui aligne ce qui suit</translation>
    </message>
    <message>
        <source>padding at the end</source>
        <translation>remplissage à la fin</translation>
    </message>
</context>
<context>
    <name>RosSchema</name>
    <message>
        <source>there is no definition of %1</source>
        <translation>il n’y a pas de définition de %1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is expected here</source>
        <translation>«&#xa0;%1&#xa0;» est attendu ici</translation>
    </message>
    <message>
        <source>a name is expected here</source>
        <translation>un nom est attendu ici</translation>
    </message>
    <message>
        <source>these are more names than any system has</source>
        <translation>ce sont plus de noms qu’aucun système n’en a</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no definition that can be read</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas une définition lisible</translation>
    </message>
    <message>
        <source>nested too deeply</source>
        <translation>imbriqué trop profondément</translation>
    </message>
    <message>
        <source>%1 is defined twice</source>
        <translation>%1 est défini deux fois</translation>
    </message>
    <message>
        <source>what it is made from is no struct</source>
        <translation>ce dont il dérive n’est pas une structure</translation>
    </message>
    <message>
        <source>the name %1 is there twice</source>
        <translation>le nom %1 figure deux fois</translation>
    </message>
    <message>
        <source>a union cannot be told by that type</source>
        <translation>une union ne se distingue pas par ce type</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no value</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas une valeur</translation>
    </message>
    <message>
        <source>%1 is no flag</source>
        <translation>%1 n’est pas un drapeau</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no value of the type %2</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas une valeur du type %2</translation>
    </message>
    <message>
        <source>the text does not end</source>
        <translation>le texte ne finit pas</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no type</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un type</translation>
    </message>
    <message>
        <source>a type is expected here</source>
        <translation>un type est attendu ici</translation>
    </message>
    <message>
        <source>the type %1 is not defined</source>
        <translation>le type %1 n’est pas défini</translation>
    </message>
    <message>
        <source>no message has as many elements</source>
        <translation>aucun message n’a autant d’éléments</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no size</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas une taille</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no number</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un nombre</translation>
    </message>
    <message>
        <source>%1 is no constant</source>
        <translation>%1 n’est pas une constante</translation>
    </message>
    <message>
        <source>a text cannot be calculated with</source>
        <translation>on ne peut pas calculer avec un texte</translation>
    </message>
    <message>
        <source>a value that cannot be calculated</source>
        <translation>une valeur qui ne peut pas être calculée</translation>
    </message>
    <message>
        <source>the schema is too large: %1 bytes</source>
        <translation>le schéma est trop grand&#xa0;: %1 octets</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no name of a type</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un nom de type</translation>
    </message>
    <message>
        <source>a name is missing behind the type</source>
        <translation>il manque un nom après le type</translation>
    </message>
    <message>
        <source>%1 cannot be a constant</source>
        <translation>%1 ne peut pas être une constante</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is too much</source>
        <translation>«&#xa0;%1&#xa0;» est de trop</translation>
    </message>
    <message>
        <source>%1 is part of itself</source>
        <translation>%1 fait partie de lui-même</translation>
    </message>
    <message>
        <source>%1 is nested too deeply</source>
        <translation>%1 est imbriqué trop profondément</translation>
    </message>
    <message>
        <source>%1 has parts nested too deeply</source>
        <translation>%1 a des parties imbriquées trop profondément</translation>
    </message>
    <message>
        <source>line %1, column %2: %3</source>
        <translation>ligne %1, colonne %2&#xa0;: %3</translation>
    </message>
    <message>
        <source>Default: %1</source>
        <translation>Défaut&#xa0;: %1</translation>
    </message>
    <message>
        <source>there is no struct in it</source>
        <translation>il ne contient pas de structure</translation>
    </message>
</context>
<context>
    <name>StreamProblem</name>
    <message>
        <source>nothing that follows can be read, because nothing else tells where a message begins</source>
        <translation>rien de ce qui suit ne peut être lu, car rien d’autre ne dit où commence un message</translation>
    </message>
    <message>
        <source>inside a message of %1 bytes</source>
        <translation>dans un message de %1 octets</translation>
    </message>
    <message>
        <source>a signature breaks off</source>
        <translation>une signature s’interrompt</translation>
    </message>
    <message>
        <source>%1 bytes of payload instead of %2</source>
        <translation>%1 octets de charge utile au lieu de %2</translation>
    </message>
    <message>
        <source>incompatibility flags 0x%1</source>
        <translation>drapeaux d’incompatibilité 0x%1</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 octet</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 octets</translation>
    </message>
    <message>
        <source>checksum failure</source>
        <translation>somme de contrôle erronée</translation>
    </message>
    <message>
        <source>length does not fit the message type</source>
        <translation>la longueur ne correspond pas au type de message</translation>
    </message>
    <message>
        <source>frame with an unsupported feature</source>
        <translation>trame avec une caractéristique non prise en charge</translation>
    </message>
    <message>
        <source>%1 skipped</source>
        <translation>%1 sautés</translation>
    </message>
    <message>
        <source>stream ends early</source>
        <translation>le flux finit trop tôt</translation>
    </message>
    <message>
        <source>stream ends inside a frame, after %1</source>
        <translation>le flux finit dans une trame, après %1</translation>
    </message>
    <message>
        <source>reading failed</source>
        <translation>échec de lecture</translation>
    </message>
    <message>
        <source>not decodable</source>
        <translation>non décodable</translation>
    </message>
    <message>
        <source>messages are not in the order of their times</source>
        <translation>les messages ne sont pas dans l’ordre de leurs dates</translation>
    </message>
    <message>
        <source>message of the server</source>
        <translation>message du serveur</translation>
    </message>
    <message>
        <source>annotation</source>
        <translation>annotation</translation>
    </message>
    <message>
        <source>%1 is gone</source>
        <translation>%1 a disparu</translation>
    </message>
    <message>
        <source>, id %1</source>
        <translation>, id %1</translation>
    </message>
    <message>
        <source>, sender %1</source>
        <translation>, émetteur %1</translation>
    </message>
</context>
<context>
    <name>StreamSource</name>
    <message>
        <source>%1 at byte %2: %3</source>
        <translation>%1 à l’octet %2&#xa0;: %3</translation>
    </message>
    <message>
        <source> (%1 times since byte %2)</source>
        <translation> (%1 fois depuis l’octet %2)</translation>
    </message>
</context>
<context>
    <name>TopicFilter</name>
    <message>
        <source>the filter of topics is empty</source>
        <translation>le filtre de sujets est vide</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: a wildcard stands for whole levels</source>
        <translation>«&#xa0;%1&#xa0;»&#xa0;: un joker désigne des niveaux entiers</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands only at the end</source>
        <translation>«&#xa0;%1&#xa0;» ne figure qu’à la fin</translation>
    </message>
</context>
</TS>
