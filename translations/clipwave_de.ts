<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en_GB">
<context>
    <name>About</name>
    <message>
        <source>About Clipwave</source>
        <translation>Über Clipwave</translation>
    </message>
    <message>
        <source>Clipwave’s icon</source>
        <translation>Symbol von Clipwave</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Makes video podcasts from your movies and publishes them.</source>
        <translation>Macht aus Ihren Filmen Video-Podcasts und veröffentlicht sie.</translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version&#xa0;3. It comes with no warranty.</source>
        <translation>Freie Software unter der GNU General Public License, Version&#xa0;3. Ohne jede Gewährleistung.</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
</context>
<context>
    <name>Account</name>
    <message>
        <source>Over plain http anyone on the way can read the password. Use https, or allow unencrypted connections first.</source>
        <translation>Über unverschlüsseltes HTTP kann unterwegs jeder das Passwort mitlesen. Verwenden Sie HTTPS oder erlauben Sie zuerst unverschlüsselte Verbindungen.</translation>
    </message>
    <message>
        <source>Please enter the server and the member name first.</source>
        <translation>Bitte zuerst den Server und den Mitgliedsnamen eingeben.</translation>
    </message>
    <message>
        <source>An address has no spaces around it.</source>
        <translation>Eine Adresse darf nicht mit Leerzeichen beginnen oder enden.</translation>
    </message>
    <message>
        <source>The secret service refused.</source>
        <translation>Der Passwortdienst hat die Anfrage abgelehnt.</translation>
    </message>
    <message>
        <source>An address begins with http:// or https:// and the name of a host.</source>
        <translation>Eine Adresse beginnt mit http:// oder https:// und einem Rechnernamen.</translation>
    </message>
    <message>
        <source>An address with a user name or a password in it is not kept; say the address without them.</source>
        <translation>Eine Adresse, die einen Benutzernamen oder ein Passwort enthält, wird nicht gespeichert. Bitte die Adresse ohne diese Angaben eingeben.</translation>
    </message>
    <message>
        <source>An address holds no “?” and no “#”.</source>
        <translation>Eine Adresse enthält weder „?“ noch „#“.</translation>
    </message>
    <message>
        <source>The address holds characters that no address can hold.</source>
        <translation>Die Adresse enthält Zeichen, die in einer Adresse nicht erlaubt sind.</translation>
    </message>
</context>
<context>
    <name>Alerts</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>CaptureSettings</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>&amp;Device</source>
        <translation>&amp;Gerät</translation>
    </message>
    <message>
        <source>&amp;Volume</source>
        <translation>&amp;Lautstärke</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>Devices</name>
    <message>
        <source>The System’s Sound Input</source>
        <translation>Toneingang des Systems</translation>
    </message>
    <message>
        <source>Test Pattern</source>
        <translation>Testbild</translation>
    </message>
    <message>
        <source>Test Tone</source>
        <translation>Testton</translation>
    </message>
</context>
<context>
    <name>Documents</name>
    <message>
        <source>The property list cannot be read: %1</source>
        <translation>Die Eigenschaftsliste kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>Text stands between the elements of “%1”.</source>
        <translation>Zwischen den Elementen von „%1“ steht Text.</translation>
    </message>
    <message>
        <source>The key “%1” has no value.</source>
        <translation>Der Schlüssel „%1“ hat keinen Wert.</translation>
    </message>
    <message>
        <source>A value has no key.</source>
        <translation>Ein Wert hat keinen Schlüssel.</translation>
    </message>
    <message>
        <source>“%1” is no kind of value.</source>
        <translation>„%1“ ist kein Werttyp.</translation>
    </message>
    <message>
        <source>The root element is “%1”, not “plist”.</source>
        <translation>Das Wurzelelement ist „%1“ statt „plist“.</translation>
    </message>
    <message>
        <source>It holds %1 values instead of one.</source>
        <translation>Sie enthält %1 Werte statt eines einzigen.</translation>
    </message>
    <message>
        <source>The document&apos;s bytes do not fit its encoding.</source>
        <translation>Die Bytes des Dokuments passen nicht zu seiner Kodierung.</translation>
    </message>
    <message>
        <source>The document is too large.</source>
        <translation>Das Dokument ist zu groß.</translation>
    </message>
    <message>
        <source>There is not enough memory for the document.</source>
        <translation>Für das Dokument reicht der Arbeitsspeicher nicht aus.</translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>A tag carries too many attributes.</source>
        <translation>Ein Tag hat zu viele Attribute.</translation>
    </message>
    <message>
        <source>The document type is too long.</source>
        <translation>Die Dokumenttyp-Deklaration ist zu lang.</translation>
    </message>
    <message>
        <source>What begins here has no end.</source>
        <translation>Was hier beginnt, hat kein Ende.</translation>
    </message>
    <message>
        <source>There is a control character.</source>
        <translation>Hier steht ein Steuerzeichen.</translation>
    </message>
    <message>
        <source>The document holds too many elements.</source>
        <translation>Das Dokument enthält zu viele Elemente.</translation>
    </message>
    <message>
        <source>The elements are nested too deeply.</source>
        <translation>Die Elemente sind zu tief verschachtelt.</translation>
    </message>
    <message>
        <source>The document holds too many different names.</source>
        <translation>Das Dokument enthält zu viele verschiedene Namen.</translation>
    </message>
    <message>
        <source>The entity “%1” is not known.</source>
        <translation>Die Entität „%1“ ist nicht bekannt.</translation>
    </message>
    <message>
        <source>The document type declares attribute values.</source>
        <translation>Die Dokumenttyp-Deklaration legt Attributwerte fest.</translation>
    </message>
    <message>
        <source>There is a character that XML cannot carry.</source>
        <translation>Hier steht ein Zeichen, das in XML nicht erlaubt ist.</translation>
    </message>
    <message>
        <source>The document is not XML.</source>
        <translation>Das Dokument ist kein XML.</translation>
    </message>
    <message>
        <source>The document holds no element.</source>
        <translation>Das Dokument enthält kein Element.</translation>
    </message>
    <message>
        <source>The document is no XML that could be repaired.</source>
        <translation>Das Dokument ist kein XML, das sich reparieren ließe.</translation>
    </message>
    <message>
        <source>“%1” is no integer.</source>
        <translation>„%1“ ist keine ganze Zahl.</translation>
    </message>
    <message>
        <source>“%1” is no number.</source>
        <translation>„%1“ ist keine Zahl.</translation>
    </message>
    <message>
        <source>“%1” is no date.</source>
        <translation>„%1“ ist kein Datum.</translation>
    </message>
    <message>
        <source>“%1” is no data.</source>
        <translation>„%1“ ist kein gültiger Wert für „data“.</translation>
    </message>
</context>
<context>
    <name>EditActions</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>Typing</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation>&amp;Rückgängig: %1</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>&amp;Wiederherstellen: %1</translation>
    </message>
</context>
<context>
    <name>Editing</name>
    <message>
        <source>The channel&apos;s movie folder cannot be named &quot;%1&quot;. Please select a different channel name.</source>
        <translation>Der Filmordner des Kanals kann nicht „%1“ heißen. Bitte einen anderen Kanalnamen wählen.</translation>
    </message>
    <message numerus="yes">
        <source>Delete %n channels?</source>
        <comment>Delete %n channel?</comment>
        <translation>
            <numerusform>%n Kanal löschen?</numerusform>
            <numerusform>%n Kanäle löschen?</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Delete %n channels and their %1?</source>
        <comment>Delete %n channel and its %1?</comment>
        <translation>
            <numerusform>%n Kanal samt %1 löschen?</numerusform>
            <numerusform>%n Kanäle samt %1 löschen?</numerusform>
        </translation>
    </message>
    <message>
        <source>Delete the channel without a title?</source>
        <translation>Den Kanal ohne Titel löschen?</translation>
    </message>
    <message>
        <source>Delete the channel without a title and its %1?</source>
        <translation>Den Kanal ohne Titel samt %1 löschen?</translation>
    </message>
    <message>
        <source>Delete the channel “%1”?</source>
        <translation>Den Kanal „%1“ löschen?</translation>
    </message>
    <message>
        <source>Delete the channel “%1” and its %2?</source>
        <translation>Den Kanal „%1“ samt %2 löschen?</translation>
    </message>
    <message>
        <source>The movie files stay where they are.</source>
        <translation>Die Filmdateien bleiben an ihrem Ort erhalten.</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Each movie becomes an episode of a new channel.</source>
        <translation>Jeder Film wird zu einer Episode eines neuen Kanals.</translation>
    </message>
    <message numerus="yes">
        <source>%n episodes</source>
        <comment>%n episode</comment>
        <translation>
            <numerusform>%n Episode</numerusform>
            <numerusform>%n Episoden</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FeedURL</name>
    <message>
        <source>Import feed</source>
        <translation>Feed importieren</translation>
    </message>
    <message>
        <source>Import a feed from the web as a new channel</source>
        <translation>Einen Feed aus dem Web als neuen Kanal importieren</translation>
    </message>
    <message>
        <source>&amp;URL</source>
        <translation>&amp;URL</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Import</source>
        <translation>&amp;Importieren</translation>
    </message>
</context>
<context>
    <name>Files</name>
    <message>
        <source>“%1” could not be read: %2.</source>
        <translation>„%1“ konnte nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>“%1” could not be written: %2.</source>
        <translation>„%1“ konnte nicht geschrieben werden: %2.</translation>
    </message>
    <message>
        <source>“%1” could not be created: %2.</source>
        <translation>„%1“ konnte nicht angelegt werden: %2.</translation>
    </message>
    <message>
        <source>“%1” could not be removed: %2.</source>
        <translation>„%1“ konnte nicht gelöscht werden: %2.</translation>
    </message>
    <message>
        <source>“%1” could not be moved: %2.</source>
        <translation>„%1“ konnte nicht verschoben werden: %2.</translation>
    </message>
    <message>
        <source>“%1” could not be used: %2.</source>
        <translation>„%1“ konnte nicht verwendet werden: %2.</translation>
    </message>
    <message>
        <source>its folder does not exist</source>
        <translation>Der Ordner dafür existiert nicht</translation>
    </message>
    <message>
        <source>it does not exist</source>
        <translation>Unter diesem Namen ist nichts vorhanden</translation>
    </message>
    <message>
        <source>you do not have permission</source>
        <translation>Die Berechtigung dazu fehlt</translation>
    </message>
    <message>
        <source>something with that name exists already</source>
        <translation>Der Name ist bereits vergeben</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>Der Datenträger ist voll</translation>
    </message>
    <message>
        <source>your share of the disk is used up</source>
        <translation>Ihr Anteil am Speicherplatz ist aufgebraucht</translation>
    </message>
    <message>
        <source>the disk is read-only</source>
        <translation>Der Datenträger ist schreibgeschützt</translation>
    </message>
    <message>
        <source>it is a folder</source>
        <translation>Dies ist ein Ordner</translation>
    </message>
    <message>
        <source>a part of its path is not a folder</source>
        <translation>Ein Teil des Pfades ist kein Ordner</translation>
    </message>
    <message>
        <source>its name is too long</source>
        <translation>Der Name ist zu lang</translation>
    </message>
    <message>
        <source>its links lead round in a circle</source>
        <translation>Die Verknüpfungen führen im Kreis</translation>
    </message>
    <message>
        <source>too many files are open</source>
        <translation>Es sind zu viele Dateien geöffnet</translation>
    </message>
    <message>
        <source>it would be too large</source>
        <translation>Die Datei würde zu groß</translation>
    </message>
    <message>
        <source>the disk reported an error</source>
        <translation>Der Datenträger meldet einen Fehler</translation>
    </message>
    <message>
        <source>“%1” is not a file that can be loaded.</source>
        <translation>„%1“ ist keine Datei, die geladen werden kann.</translation>
    </message>
    <message>
        <source>There is no home folder.</source>
        <translation>Es gibt keinen persönlichen Ordner.</translation>
    </message>
    <message>
        <source>it holds no dictionary.</source>
        <translation>Die Datei enthält kein „dict“.</translation>
    </message>
    <message>
        <source>The settings in “%1” could not be read: %2</source>
        <translation>Die Einstellungen in „%1“ konnten nicht gelesen werden: %2</translation>
    </message>
</context>
<context>
    <name>ImageProperties</name>
    <message>
        <source>Artwork images</source>
        <translation>Coverbilder</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>No images yet.
Add one with “+”.</source>
        <translation>Noch keine Bilder.
Mit „+“ eines hinzufügen.</translation>
    </message>
    <message>
        <source>Add an image</source>
        <translation>Bild hinzufügen</translation>
    </message>
    <message>
        <source>Remove the selected image</source>
        <translation>Ausgewähltes Bild entfernen</translation>
    </message>
    <message>
        <source>&amp;Title</source>
        <translation>&amp;Titel</translation>
    </message>
    <message>
        <source>&amp;URL</source>
        <translation>&amp;URL</translation>
    </message>
    <message>
        <source>Preview of the image</source>
        <translation>Vorschau des Bildes</translation>
    </message>
    <message>
        <source>&amp;Revert</source>
        <translation>&amp;Zurücksetzen</translation>
    </message>
    <message>
        <source>Take back what is being typed</source>
        <translation>Die laufende Eingabe verwerfen</translation>
    </message>
    <message>
        <source>&amp;Done</source>
        <translation>&amp;Fertig</translation>
    </message>
    <message>
        <source>The picture’s address on the web</source>
        <translation>Die Webadresse des Bildes</translation>
    </message>
</context>
<context>
    <name>Import</name>
    <message>
        <source>The feed has more than 100,000 items.</source>
        <translation>Der Feed hat mehr als 100.000 Einträge.</translation>
    </message>
</context>
<context>
    <name>InterfaceWiring</name>
    <message>
        <source>Change of %1</source>
        <translation>„%1“ ändern</translation>
    </message>
</context>
<context>
    <name>Library</name>
    <message>
        <source>“%1” of a %2 cannot hold a value of this type.</source>
        <translation>„%1“ der Art „%2“ kann keinen Wert dieses Typs aufnehmen.</translation>
    </message>
    <message>
        <source>A %1 has no “%2”.</source>
        <translation>Die Art „%1“ hat kein „%2“.</translation>
    </message>
    <message>
        <source>There is no kind of record named “%1”.</source>
        <translation>Es gibt keine Datensätze der Art „%1“.</translation>
    </message>
    <message>
        <source>A %1 cannot be found by “%2”.</source>
        <translation>Datensätze der Art „%1“ lassen sich nicht nach „%2“ suchen.</translation>
    </message>
    <message>
        <source>“%1” of a %2 is not valid.</source>
        <translation>„%1“ der Art „%2“ ist nicht gültig.</translation>
    </message>
    <message>
        <source>%1 values of the library are not valid.</source>
        <translation>%1 Werte der Mediathek sind nicht gültig.</translation>
    </message>
    <message>
        <source>The library at %1 cannot be opened. %2</source>
        <translation>Die Mediathek unter %1 kann nicht geöffnet werden. %2</translation>
    </message>
    <message>
        <source>There is no kind of store named “%1”.</source>
        <translation>Es gibt keinen Speicher der Art „%1“.</translation>
    </message>
    <message>
        <source>Another library is open in its place.</source>
        <translation>An ihrer Stelle ist eine andere Mediathek geöffnet.</translation>
    </message>
    <message>
        <source>The library at %1 cannot be saved. %2</source>
        <translation>Die Mediathek unter %1 kann nicht gesichert werden. %2</translation>
    </message>
    <message>
        <source>It is open elsewhere.</source>
        <translation>Sie ist bereits an anderer Stelle geöffnet.</translation>
    </message>
    <message>
        <source>Its lock cannot be had: %1.</source>
        <translation>Sie kann nicht gesperrt werden: %1.</translation>
    </message>
    <message>
        <source>It is damaged or cut off at byte %1.</source>
        <translation>Sie ist ab Byte %1 beschädigt oder abgeschnitten.</translation>
    </message>
    <message>
        <source>It is not a library.</source>
        <translation>Die Datei ist keine Mediathek.</translation>
    </message>
    <message>
        <source>It is not a library: it bears no version.</source>
        <translation>Die Datei ist keine Mediathek: Die Versionsangabe fehlt.</translation>
    </message>
    <message>
        <source>It was written by a newer version of this application (format %1).</source>
        <translation>Sie wurde mit einer neueren Version dieses Programms gesichert (Format %1).</translation>
    </message>
    <message>
        <source>It is damaged: its next id is missing.</source>
        <translation>Sie ist beschädigt: Die nächste Kennung fehlt.</translation>
    </message>
    <message>
        <source>It is damaged: there is no id left for a new record.</source>
        <translation>Sie ist beschädigt: Für einen neuen Datensatz ist keine Kennung mehr frei.</translation>
    </message>
    <message>
        <source>It is damaged: there is text between its records.</source>
        <translation>Sie ist beschädigt: Zwischen den Datensätzen steht Text.</translation>
    </message>
    <message>
        <source>It is damaged: a %1 has no id or one that was never given.</source>
        <translation>Sie ist beschädigt: Ein Datensatz der Art „%1“ hat keine Kennung oder eine, die nie vergeben wurde.</translation>
    </message>
    <message>
        <source>It is damaged: the %1 %2 holds text beside its values.</source>
        <translation>Sie ist beschädigt: Der Datensatz %1&#xa0;%2 enthält Text neben seinen Werten.</translation>
    </message>
    <message>
        <source>It is damaged: the %1 %2 has a “%3” of an unknown encoding.</source>
        <translation>Sie ist beschädigt: Im Datensatz %1&#xa0;%2 hat „%3“ eine unbekannte Kodierung.</translation>
    </message>
    <message>
        <source>It is damaged: the %1 %2 has a “%3” of an unknown type.</source>
        <translation>Sie ist beschädigt: Im Datensatz %1&#xa0;%2 hat „%3“ einen unbekannten Typ.</translation>
    </message>
    <message>
        <source>It is damaged: the %1 %2 has two values for “%3”.</source>
        <translation>Sie ist beschädigt: Der Datensatz %1&#xa0;%2 hat zwei Werte für „%3“.</translation>
    </message>
    <message>
        <source>It is damaged: the %1 %2 has a “%3” that cannot be read.</source>
        <translation>Sie ist beschädigt: Im Datensatz %1&#xa0;%2 ist „%3“ nicht lesbar.</translation>
    </message>
    <message>
        <source>It is damaged: the %1 %2 shares its id with another.</source>
        <translation>Sie ist beschädigt: Der Datensatz %1&#xa0;%2 hat dieselbe Kennung wie ein anderer.</translation>
    </message>
    <message>
        <source>It is damaged: the %1 %2 names %3 as its “%4”, and there is no such %5.</source>
        <translation>Sie ist beschädigt: Der Datensatz %1&#xa0;%2 nennt %3 als „%4“, aber einen solchen Datensatz der Art „%5“ gibt es nicht.</translation>
    </message>
    <message>
        <source>It is damaged: the %1 %2 belongs to a record that does not own it.</source>
        <translation>Sie ist beschädigt: Der Datensatz %1&#xa0;%2 gehört zu einem Datensatz, der ihn nicht führt.</translation>
    </message>
</context>
<context>
    <name>LibraryTables</name>
    <message>
        <source>Publish</source>
        <translation>Veröffentlichen</translation>
    </message>
    <message>
        <source>Change of Publish</source>
        <translation>„Veröffentlichen“ ändern</translation>
    </message>
    <message>
        <source>Copy when publishing</source>
        <translation>Beim Veröffentlichen kopieren</translation>
    </message>
    <message>
        <source>Change of Copy</source>
        <translation>„Kopieren“ ändern</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Trouble with the movie</source>
        <translation>Problem mit dem Film</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>Kanäle</translation>
    </message>
    <message>
        <source>Episodes</source>
        <translation>Episoden</translation>
    </message>
    <message>
        <source>URL</source>
        <translation>URL</translation>
    </message>
    <message>
        <source>No channel is selected.
Drop movies here to begin a new one.</source>
        <translation>Kein Kanal ausgewählt.
Filme hierher ziehen, um einen neuen zu beginnen.</translation>
    </message>
    <message>
        <source>Several channels are selected.
Choose one of them to see its episodes.</source>
        <translation>Mehrere Kanäle ausgewählt.
Einen davon auswählen, um seine Episoden zu sehen.</translation>
    </message>
    <message>
        <source>No episodes yet.
Drop movies here, or press “Record”.</source>
        <translation>Noch keine Episoden.
Filme hierher ziehen oder auf „Aufnehmen“ klicken.</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Channels</source>
        <translation>Kanäle</translation>
    </message>
    <message>
        <source>No channels yet.
Make one with “Channel”, or drop movies here.</source>
        <translation>Noch keine Kanäle.
Mit „Kanal“ einen anlegen oder Filme hierher ziehen.</translation>
    </message>
    <message>
        <source>Episodes</source>
        <translation>Episoden</translation>
    </message>
    <message>
        <source>Movie preview</source>
        <translation>Filmvorschau</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Publish method</source>
        <translation>Art der Veröffentlichung</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Auswählen…</translation>
    </message>
    <message>
        <source>Choose the folder to publish to</source>
        <translation>Ordner auswählen, in den veröffentlicht wird</translation>
    </message>
    <message>
        <source>URL</source>
        <translation>URL</translation>
    </message>
    <message>
        <source>Where the folder is found on the web</source>
        <translation>Wo der Ordner im Web zu finden ist</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>Episode</source>
        <translation>Episode</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Subtitle</source>
        <translation>Untertitel</translation>
    </message>
    <message>
        <source>Summary</source>
        <translation>Zusammenfassung</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Publish date</source>
        <translation>Datum der Veröffentlichung</translation>
    </message>
    <message>
        <source>Time zone</source>
        <translation>Zeitzone</translation>
    </message>
    <message>
        <source>Movie</source>
        <translation>Film</translation>
    </message>
    <message>
        <source>Movie file</source>
        <translation>Filmdatei</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Open the movie in the desktop’s player</source>
        <translation>Den Film im Player des Systems öffnen</translation>
    </message>
    <message>
        <source>Movie information</source>
        <translation>Angaben zum Film</translation>
    </message>
    <message>
        <source>Choose the movie of this episode</source>
        <translation>Den Film dieser Episode auswählen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Take the movie out of this episode</source>
        <translation>Den Film aus dieser Episode entfernen</translation>
    </message>
    <message>
        <source>Publishing</source>
        <translation>Veröffentlichung</translation>
    </message>
    <message>
        <source>In the feed</source>
        <translation>Im Feed</translation>
    </message>
    <message>
        <source>The episode is written into the channel’s feed</source>
        <translation>Die Episode wird in den Feed des Kanals geschrieben</translation>
    </message>
    <message>
        <source>Copy the movie</source>
        <translation>Film kopieren</translation>
    </message>
    <message>
        <source>The movie is copied to the destination when you publish next</source>
        <translation>Der Film wird beim nächsten Veröffentlichen an das Ziel kopiert</translation>
    </message>
    <message>
        <source>Directory</source>
        <translation>Verzeichnis</translation>
    </message>
    <message>
        <source>Explicit</source>
        <translation>Explizit</translation>
    </message>
    <message>
        <source>The podcast directory marks the episode as explicit</source>
        <translation>Das Podcast-Verzeichnis kennzeichnet die Episode als explizit</translation>
    </message>
    <message>
        <source>Hide from the directory</source>
        <translation>Im Verzeichnis ausblenden</translation>
    </message>
    <message>
        <source>The podcast directory leaves the episode out</source>
        <translation>Das Podcast-Verzeichnis führt die Episode nicht auf</translation>
    </message>
    <message>
        <source>Episode details</source>
        <translation>Episodendetails</translation>
    </message>
    <message>
        <source>Author</source>
        <translation>Autor</translation>
    </message>
    <message>
        <source>E-mail</source>
        <translation>E-Mail</translation>
    </message>
    <message>
        <source>Keywords</source>
        <translation>Schlagwörter</translation>
    </message>
    <message>
        <source>Separated by commas</source>
        <translation>Durch Kommas getrennt</translation>
    </message>
    <message>
        <source>Category</source>
        <translation>Kategorie</translation>
    </message>
    <message>
        <source>Subcategory</source>
        <translation>Unterkategorie</translation>
    </message>
    <message>
        <source>Comments</source>
        <translation>Kommentare</translation>
    </message>
    <message>
        <source>The page where listeners comment</source>
        <translation>Die Seite, auf der das Publikum kommentiert</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>The subtitle serves when this is empty</source>
        <translation>Wenn leer, wird der Untertitel verwendet</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Unit of the size</source>
        <translation>Einheit der Größe</translation>
    </message>
    <message>
        <source>Media URL</source>
        <translation>Medien-URL</translation>
    </message>
    <message>
        <source>The folder in which the movie is published</source>
        <translation>Der Ordner, in dem der Film veröffentlicht wird</translation>
    </message>
    <message>
        <source>Media file</source>
        <translation>Mediendatei</translation>
    </message>
    <message>
        <source>The name of the published movie</source>
        <translation>Der Name des veröffentlichten Films</translation>
    </message>
    <message>
        <source>Full URL</source>
        <translation>Gesamte URL</translation>
    </message>
    <message>
        <source>Where subscribers find the movie</source>
        <translation>Wo Abonnenten den Film finden</translation>
    </message>
    <message>
        <source>Channel</source>
        <translation>Kanal</translation>
    </message>
    <message>
        <source>Copyright</source>
        <translation>Copyright</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>Website</source>
        <translation>Website</translation>
    </message>
    <message>
        <source>Feed file</source>
        <translation>Feed-Datei</translation>
    </message>
    <message>
        <source>Publish this channel</source>
        <translation>Diesen Kanal veröffentlichen</translation>
    </message>
    <message>
        <source>The channel takes part when you publish</source>
        <translation>Der Kanal wird beim Veröffentlichen einbezogen</translation>
    </message>
    <message>
        <source>Artwork of the channel</source>
        <translation>Coverbild des Kanals</translation>
    </message>
    <message>
        <source>Artwork</source>
        <translation>Coverbild</translation>
    </message>
    <message>
        <source>Edit…</source>
        <translation>Bearbeiten…</translation>
    </message>
    <message>
        <source>Edit the artwork images</source>
        <translation>Die Coverbilder bearbeiten</translation>
    </message>
    <message>
        <source>Podcast</source>
        <translation>Podcast</translation>
    </message>
    <message>
        <source>Owner</source>
        <translation>Inhaber</translation>
    </message>
    <message>
        <source>Owner’s e-mail</source>
        <translation>E-Mail des Inhabers</translation>
    </message>
    <message>
        <source>The podcast directory marks the channel as explicit</source>
        <translation>Das Podcast-Verzeichnis kennzeichnet den Kanal als explizit</translation>
    </message>
    <message>
        <source>The podcast directory leaves the channel out</source>
        <translation>Das Podcast-Verzeichnis führt den Kanal nicht auf</translation>
    </message>
    <message>
        <source>RSS</source>
        <translation>RSS</translation>
    </message>
    <message>
        <source>Managing editor</source>
        <translation>Redaktion</translation>
    </message>
    <message>
        <source>Webmaster</source>
        <translation>Webmaster</translation>
    </message>
    <message>
        <source>Generator</source>
        <translation>Generator</translation>
    </message>
    <message>
        <source>Documentation</source>
        <translation>Dokumentation</translation>
    </message>
    <message>
        <source>The address that explains the format</source>
        <translation>Die Adresse, die das Format erklärt</translation>
    </message>
    <message>
        <source>Time to live</source>
        <translation>TTL</translation>
    </message>
    <message>
        <source>minutes</source>
        <translation>Minuten</translation>
    </message>
    <message>
        <source>Last built</source>
        <translation>Erstellt am</translation>
    </message>
    <message>
        <source>Last build date</source>
        <translation>Erstellungsdatum</translation>
    </message>
    <message>
        <source>Skip days</source>
        <translation>Tage auslassen</translation>
    </message>
    <message>
        <source>Mon</source>
        <translation>Mo</translation>
    </message>
    <message>
        <source>Skip Monday</source>
        <translation>Montag auslassen</translation>
    </message>
    <message>
        <source>Tue</source>
        <translation>Di</translation>
    </message>
    <message>
        <source>Skip Tuesday</source>
        <translation>Dienstag auslassen</translation>
    </message>
    <message>
        <source>Wed</source>
        <translation>Mi</translation>
    </message>
    <message>
        <source>Skip Wednesday</source>
        <translation>Mittwoch auslassen</translation>
    </message>
    <message>
        <source>Thu</source>
        <translation>Do</translation>
    </message>
    <message>
        <source>Skip Thursday</source>
        <translation>Donnerstag auslassen</translation>
    </message>
    <message>
        <source>Fri</source>
        <translation>Fr</translation>
    </message>
    <message>
        <source>Skip Friday</source>
        <translation>Freitag auslassen</translation>
    </message>
    <message>
        <source>Sat</source>
        <translation>Sa</translation>
    </message>
    <message>
        <source>Skip Saturday</source>
        <translation>Samstag auslassen</translation>
    </message>
    <message>
        <source>Sun</source>
        <translation>So</translation>
    </message>
    <message>
        <source>Skip Sunday</source>
        <translation>Sonntag auslassen</translation>
    </message>
    <message>
        <source>Skip hours</source>
        <translation>Stunden auslassen</translation>
    </message>
    <message>
        <source>Skip hour 1</source>
        <translation>Stunde 1 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 2</source>
        <translation>Stunde 2 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 3</source>
        <translation>Stunde 3 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 4</source>
        <translation>Stunde 4 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 5</source>
        <translation>Stunde 5 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 6</source>
        <translation>Stunde 6 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 7</source>
        <translation>Stunde 7 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 8</source>
        <translation>Stunde 8 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 9</source>
        <translation>Stunde 9 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 10</source>
        <translation>Stunde 10 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 11</source>
        <translation>Stunde 11 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 12</source>
        <translation>Stunde 12 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 13</source>
        <translation>Stunde 13 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 14</source>
        <translation>Stunde 14 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 15</source>
        <translation>Stunde 15 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 16</source>
        <translation>Stunde 16 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 17</source>
        <translation>Stunde 17 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 18</source>
        <translation>Stunde 18 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 19</source>
        <translation>Stunde 19 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 20</source>
        <translation>Stunde 20 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 21</source>
        <translation>Stunde 21 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 22</source>
        <translation>Stunde 22 auslassen</translation>
    </message>
    <message>
        <source>Skip hour 23</source>
        <translation>Stunde 23 auslassen</translation>
    </message>
    <message>
        <source>Style sheet</source>
        <translation>Stylesheet</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>Ein</translation>
    </message>
    <message>
        <source>Use a style sheet</source>
        <translation>Stylesheet verwenden</translation>
    </message>
    <message>
        <source>The style sheet’s address</source>
        <translation>Die Adresse des Stylesheets</translation>
    </message>
    <message>
        <source>Publish to</source>
        <translation>Veröffentlichen in</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Publish</source>
        <translation>Publish</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Import feed</source>
        <translation>Feed &amp;importieren</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Channel</source>
        <translation>&amp;Kanal</translation>
    </message>
    <message>
        <source>E&amp;pisode</source>
        <translation>&amp;Episode</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Toolbar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>&amp;New channel</source>
        <translation>&amp;Neuer Kanal</translation>
    </message>
    <message>
        <source>Make a new channel</source>
        <translation>Einen neuen Kanal anlegen</translation>
    </message>
    <message>
        <source>&amp;Open movies…</source>
        <translation>Filme ö&amp;ffnen…</translation>
    </message>
    <message>
        <source>Make a new channel from movies</source>
        <translation>Aus Filmen einen neuen Kanal anlegen</translation>
    </message>
    <message>
        <source>&amp;Add episodes…</source>
        <translation>Episoden &amp;hinzufügen…</translation>
    </message>
    <message>
        <source>Episodes…</source>
        <translation>Episoden…</translation>
    </message>
    <message>
        <source>Add movies to the selected channel as episodes</source>
        <translation>Dem ausgewählten Kanal Filme als Episoden hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Record movie…</source>
        <translation>Film au&amp;fnehmen…</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Aufnehmen</translation>
    </message>
    <message>
        <source>Record a new episode of the selected channel</source>
        <translation>Eine neue Episode des ausgewählten Kanals aufnehmen</translation>
    </message>
    <message>
        <source>From &amp;file…</source>
        <translation>Aus &amp;Datei…</translation>
    </message>
    <message>
        <source>From &amp;URL…</source>
        <translation>Von &amp;URL…</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>&amp;Publish</source>
        <translation>&amp;Veröffentlichen</translation>
    </message>
    <message>
        <source>Publish every channel that is marked for it</source>
        <translation>Alle dafür markierten Kanäle veröffentlichen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederherstellen</translation>
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
        <source>Select &amp;all</source>
        <translation>A&amp;lles auswählen</translation>
    </message>
    <message>
        <source>Pr&amp;eferences…</source>
        <translation>Ei&amp;nstellungen…</translation>
    </message>
    <message>
        <source>Choose &amp;destination…</source>
        <translation>&amp;Ziel auswählen…</translation>
    </message>
    <message>
        <source>&amp;Artwork images…</source>
        <translation>&amp;Coverbilder…</translation>
    </message>
    <message>
        <source>&amp;Publish on or off</source>
        <translation>&amp;Veröffentlichen ein/aus</translation>
    </message>
    <message>
        <source>&amp;Hand feeds to iTunes</source>
        <translation>&amp;Feeds an iTunes übergeben</translation>
    </message>
    <message>
        <source>Hand to iTunes</source>
        <translation>An iTunes übergeben</translation>
    </message>
    <message>
        <source>Hand the feeds of the last publish run to iTunes</source>
        <translation>Die zuletzt veröffentlichten Feeds an iTunes übergeben</translation>
    </message>
    <message>
        <source>Copy &amp;invitation</source>
        <translation>&amp;Einladung kopieren</translation>
    </message>
    <message>
        <source>Copy invitation</source>
        <translation>Einladung kopieren</translation>
    </message>
    <message>
        <source>Copy a message that invites people to subscribe</source>
        <translation>Eine Nachricht kopieren, die zum Abonnieren einlädt</translation>
    </message>
    <message>
        <source>Delete &amp;channel…</source>
        <translation>Kanal &amp;löschen…</translation>
    </message>
    <message>
        <source>Choose &amp;movie…</source>
        <translation>Film aus&amp;wählen…</translation>
    </message>
    <message>
        <source>C&amp;lear movie</source>
        <translation>Film &amp;entfernen</translation>
    </message>
    <message>
        <source>&amp;Open movie in player</source>
        <translation>Film im &amp;Player öffnen</translation>
    </message>
    <message>
        <source>Play or pa&amp;use</source>
        <translation>&amp;Wiedergabe/Pause</translation>
    </message>
    <message>
        <source>&amp;Copy on or off</source>
        <translation>&amp;Kopieren ein/aus</translation>
    </message>
    <message>
        <source>&amp;Delete episodes…</source>
        <translation>Episoden &amp;löschen…</translation>
    </message>
    <message>
        <source>&amp;Episode</source>
        <translation>&amp;Episode</translation>
    </message>
    <message>
        <source>Episode &amp;details</source>
        <translation>Episoden&amp;details</translation>
    </message>
    <message>
        <source>&amp;Podcast</source>
        <translation>&amp;Podcast</translation>
    </message>
    <message>
        <source>&amp;RSS</source>
        <translation>&amp;RSS</translation>
    </message>
    <message>
        <source>&amp;About Clipwave</source>
        <translation>&amp;Über Clipwave</translation>
    </message>
    <message>
        <source>Clipwave &amp;Instructions</source>
        <translation>Clipwave-&amp;Anleitung</translation>
    </message>
</context>
<context>
    <name>Movies</name>
    <message>
        <source>The movie “%1” is missing.</source>
        <translation>Der Film „%1“ fehlt.</translation>
    </message>
    <message>
        <source>The movie “%1” may not be written.</source>
        <translation>In den Film „%1“ darf nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The disk of “%1” is read-only.</source>
        <translation>Der Datenträger von „%1“ ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>There is no more room on the disk for “%1”.</source>
        <translation>Auf dem Datenträger ist kein Platz mehr für „%1“.</translation>
    </message>
    <message>
        <source>The movie “%1” could not be written: %2.</source>
        <translation>Der Film „%1“ konnte nicht geschrieben werden: %2.</translation>
    </message>
    <message>
        <source>The movie “%1” may not be read.</source>
        <translation>Der Film „%1“ darf nicht gelesen werden.</translation>
    </message>
    <message>
        <source>“%1” cannot be played as a movie.</source>
        <translation>„%1“ kann nicht als Film wiedergegeben werden.</translation>
    </message>
    <message>
        <source>The movie “%1” is of a kind that cannot be played.</source>
        <translation>Der Film „%1“ hat ein Format, das nicht wiedergegeben werden kann.</translation>
    </message>
    <message>
        <source>The movie cannot be played: %1.</source>
        <translation>Der Film kann nicht wiedergegeben werden: %1.</translation>
    </message>
    <message>
        <source>The movie “%1” is damaged: it breaks off before its end.</source>
        <translation>Der Film „%1“ ist beschädigt: Er bricht vor dem Ende ab.</translation>
    </message>
</context>
<context>
    <name>Network</name>
    <message>
        <source>There is not enough memory for the data.</source>
        <translation>Für die Daten reicht der Arbeitsspeicher nicht aus.</translation>
    </message>
    <message>
        <source>The request holds a method or a header that cannot be sent.</source>
        <translation>Die Anfrage enthält eine Methode oder eine Kopfzeile, die nicht gesendet werden kann.</translation>
    </message>
    <message>
        <source>The user name or the password holds characters that cannot be sent.</source>
        <translation>Der Benutzername oder das Passwort enthält Zeichen, die nicht gesendet werden können.</translation>
    </message>
    <message>
        <source>The proxy server could not be found.</source>
        <translation>Der Proxyserver wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>The server “%1” answered %2.</source>
        <translation>Der Server „%1“ hat mit %2 geantwortet.</translation>
    </message>
    <message>
        <source>The file of trusted certificates could not be read.</source>
        <translation>Die Datei mit den vertrauenswürdigen Zertifikaten konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The server “%1” did not take everything in time.</source>
        <translation>Der Server „%1“ hat nicht rechtzeitig alles angenommen.</translation>
    </message>
    <message>
        <source>The server “%1” did not send everything in time.</source>
        <translation>Der Server „%1“ hat nicht rechtzeitig alles gesendet.</translation>
    </message>
    <message>
        <source>The server “%1” could not be found.</source>
        <translation>Der Server „%1“ wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>The server “%1” could not be reached.</source>
        <translation>Der Server „%1“ ist nicht erreichbar.</translation>
    </message>
    <message>
        <source>The server “%1” broke the connection off.</source>
        <translation>Der Server „%1“ hat die Verbindung abgebrochen.</translation>
    </message>
    <message>
        <source>The server “%1” redirects too often.</source>
        <translation>Der Server „%1“ leitet zu oft weiter.</translation>
    </message>
    <message>
        <source>The server “%1” redirects to an address that is neither http nor https.</source>
        <translation>Der Server „%1“ leitet an eine Adresse weiter, die weder mit http noch mit https beginnt.</translation>
    </message>
    <message>
        <source>The server “%1” gave an answer that cannot be understood.</source>
        <translation>Die Antwort des Servers „%1“ ist nicht verständlich.</translation>
    </message>
    <message>
        <source>The server “%1” has a certificate that is not trusted.</source>
        <translation>Das Zertifikat des Servers „%1“ ist nicht vertrauenswürdig.</translation>
    </message>
    <message>
        <source>The server “%1” made no secure connection.</source>
        <translation>Mit dem Server „%1“ kam keine sichere Verbindung zustande.</translation>
    </message>
    <message>
        <source>Sending to “%1” failed: %2.</source>
        <translation>Das Senden an „%1“ ist fehlgeschlagen: %2.</translation>
    </message>
    <message>
        <source>Loading from “%1” failed: %2.</source>
        <translation>Das Laden von „%1“ ist fehlgeschlagen: %2.</translation>
    </message>
    <message>
        <source>The address is not a valid URL.</source>
        <translation>Die Adresse ist keine gültige URL.</translation>
    </message>
    <message>
        <source>Addresses that begin with “%1:” cannot be loaded.</source>
        <translation>Adressen, die mit „%1:“ beginnen, können nicht geladen werden.</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1&#xa0;Bytes</translation>
    </message>
    <message>
        <source>The data from “%1” are larger than %2.</source>
        <translation>Die Daten von „%1“ sind größer als %2.</translation>
    </message>
    <message>
        <source>The connection to the server “%1” is not encrypted, so the password was not sent.</source>
        <translation>Die Verbindung zum Server „%1“ ist nicht verschlüsselt. Das Passwort wurde deshalb nicht gesendet.</translation>
    </message>
    <message>
        <source>The file for the server “%1” could not be read to its end.</source>
        <translation>Die Datei für den Server „%1“ konnte nicht bis zum Ende gelesen werden.</translation>
    </message>
</context>
<context>
    <name>Preferences</name>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>New channels and episodes</source>
        <translation>Neue Kanäle und Episoden</translation>
    </message>
    <message>
        <source>&amp;Author</source>
        <translation>&amp;Autor</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Sprache</translation>
    </message>
    <message>
        <source>&amp;Feed file prefix</source>
        <translation>Präfix für Fee&amp;d-Dateien</translation>
    </message>
    <message>
        <source>A new channel’s feed file is this word and a number</source>
        <translation>Die Feed-Datei eines neuen Kanals heißt nach diesem Wort und einer Nummer</translation>
    </message>
    <message>
        <source>&amp;Episode title prefix</source>
        <translation>Präfix für &amp;Episodentitel</translation>
    </message>
    <message>
        <source>Stands before the file’s name in the title of a new episode</source>
        <translation>Steht im Titel einer neuen Episode vor dem Dateinamen</translation>
    </message>
    <message>
        <source>Art&amp;work URL</source>
        <translation>URL des &amp;Coverbilds</translation>
    </message>
    <message>
        <source>The artwork of new channels</source>
        <translation>Das Coverbild neuer Kanäle</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>&amp;Camera</source>
        <translation>&amp;Kamera</translation>
    </message>
    <message>
        <source>&amp;Microphone</source>
        <translation>&amp;Mikrofon</translation>
    </message>
    <message>
        <source>Publishing</source>
        <translation>Veröffentlichung</translation>
    </message>
    <message>
        <source>&amp;Replace published files without asking</source>
        <translation>Veröffentlichte Dateien ohne &amp;Rückfrage ersetzen</translation>
    </message>
    <message>
        <source>Without this, Clipwave asks before a file at the destination is replaced</source>
        <translation>Andernfalls fragt Clipwave nach, bevor eine Datei am Ziel ersetzt wird</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>Aktualisierungen</translation>
    </message>
    <message>
        <source>L&amp;ook for a newer version at start</source>
        <translation>Beim Start nach einer neueren Version s&amp;uchen</translation>
    </message>
    <message>
        <source>.Mac account</source>
        <translation>.Mac-Konto</translation>
    </message>
    <message>
        <source>&amp;Server address</source>
        <translation>&amp;Serveradresse</translation>
    </message>
    <message>
        <source>&amp;Member name</source>
        <translation>&amp;Mitgliedsname</translation>
    </message>
    <message>
        <source>&amp;Password</source>
        <translation>&amp;Passwort</translation>
    </message>
    <message>
        <source>Replaces the one that is kept</source>
        <translation>Ersetzt das gespeicherte</translation>
    </message>
    <message>
        <source>&amp;Home page URL</source>
        <translation>URL der &amp;Homepage</translation>
    </message>
    <message>
        <source>E&amp;xpires</source>
        <translation>&amp;Läuft ab</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Nie</translation>
    </message>
    <message>
        <source>Sign-&amp;up page</source>
        <translation>&amp;Registrierungsseite</translation>
    </message>
    <message>
        <source>&amp;Renewal page</source>
        <translation>&amp;Verlängerungsseite</translation>
    </message>
    <message>
        <source>Allow u&amp;nencrypted connections</source>
        <translation>&amp;Unverschlüsselte Verbindungen erlauben</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Over http everyone on the way can read your password. Allow it only in a network that you trust.</source>
        <translation>Über HTTP kann unterwegs jeder Ihr Passwort mitlesen. Nur in einem Netz erlauben, dem Sie vertrauen.</translation>
    </message>
    <message>
        <source>Advanced</source>
        <translation>Erweitert</translation>
    </message>
    <message>
        <source>List of &amp;versions</source>
        <translation>&amp;Versionsliste</translation>
    </message>
    <message>
        <source>Main window</source>
        <translation>Hauptfenster</translation>
    </message>
    <message>
        <source>How far the dividers between the lists and the preview can be dragged:</source>
        <translation>So weit lassen sich die Trenner zwischen den Listen und der Vorschau ziehen:</translation>
    </message>
    <message>
        <source>&amp;Smallest position</source>
        <translation>&amp;Kleinste Position</translation>
    </message>
    <message>
        <source>points from the left</source>
        <translation>Punkte von links</translation>
    </message>
    <message>
        <source>&amp;Largest position</source>
        <translation>&amp;Größte Position</translation>
    </message>
    <message>
        <source>of the width, such as 0.75</source>
        <translation>der Breite, zum Beispiel 0.75</translation>
    </message>
    <message>
        <source>&amp;Done</source>
        <translation>&amp;Fertig</translation>
    </message>
    <message>
        <source>Please enter a number that is not negative.</source>
        <translation>Bitte eine Zahl eingeben, die nicht negativ ist.</translation>
    </message>
    <message>
        <source>Subscriptions</source>
        <translation>Abonnements</translation>
    </message>
    <message>
        <source>Open &amp;subscription links (itpc, pcast) with Clipwave</source>
        <translation>Abo-&amp;Links (itpc, pcast) mit Clipwave öffnen</translation>
    </message>
    <message>
        <source>The desktop then hands such links to Clipwave, which makes a channel of the feed</source>
        <translation>Der Desktop übergibt solche Links dann an Clipwave, das aus dem Feed einen Kanal macht</translation>
    </message>
</context>
<context>
    <name>ProgramNames</name>
    <message>
        <source>New Artwork</source>
        <translation>Coverbild hinzufügen</translation>
    </message>
    <message>
        <source>Delete Artwork</source>
        <translation>Coverbild löschen</translation>
    </message>
    <message>
        <source>The links are on the clipboard.</source>
        <translation>Die Links sind in der Zwischenablage.</translation>
    </message>
    <message>
        <source>The invitation is on the clipboard.</source>
        <translation>Die Einladung ist in der Zwischenablage.</translation>
    </message>
    <message>
        <source>Kept; type here to replace it</source>
        <translation>Gespeichert; zum Ersetzen hier eingeben</translation>
    </message>
    <message>
        <source>None is kept</source>
        <translation>Keines gespeichert</translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <translation>%1 (nicht angeschlossen)</translation>
    </message>
    <message>
        <source>First camera found</source>
        <translation>Erste gefundene Kamera</translation>
    </message>
    <message>
        <source>First microphone found</source>
        <translation>Erstes gefundenes Mikrofon</translation>
    </message>
    <message>
        <source>Clipwave has to be installed before links can open with it.</source>
        <translation>Clipwave muss installiert sein, bevor Links damit geöffnet werden können.</translation>
    </message>
</context>
<context>
    <name>Publishing</name>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
</context>
<context>
    <name>Record</name>
    <message>
        <source>Record</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>Record &amp;video</source>
        <translation>&amp;Bild aufnehmen</translation>
    </message>
    <message>
        <source>Record &amp;sound</source>
        <translation>&amp;Ton aufnehmen</translation>
    </message>
    <message>
        <source>&amp;Full size</source>
        <translation>&amp;Volle Größe</translation>
    </message>
    <message>
        <source>&amp;Half size</source>
        <translation>&amp;Halbe Größe</translation>
    </message>
    <message>
        <source>&amp;Quarter size</source>
        <translation>V&amp;iertel der Größe</translation>
    </message>
    <message>
        <source>&amp;Other size…</source>
        <translation>&amp;Andere Größe…</translation>
    </message>
    <message>
        <source>V&amp;ideo settings…</source>
        <translation>Bil&amp;deinstellungen…</translation>
    </message>
    <message>
        <source>Sou&amp;nd settings…</source>
        <translation>To&amp;neinstellungen…</translation>
    </message>
    <message>
        <source>&amp;Low latency capture</source>
        <translation>Aufnahme mit &amp;geringer Latenz</translation>
    </message>
    <message>
        <source>Always use &amp;time base</source>
        <translation>Immer die &amp;Zeitbasis verwenden</translation>
    </message>
    <message>
        <source>Use sound &amp;clock</source>
        <translation>&amp;Uhr des Tongeräts verwenden</translation>
    </message>
    <message>
        <source>&amp;Acknowledgements…</source>
        <translation>Dan&amp;ksagungen…</translation>
    </message>
    <message>
        <source>Live picture</source>
        <translation>Live-Bild</translation>
    </message>
    <message>
        <source>Sound level</source>
        <translation>Tonpegel</translation>
    </message>
    <message>
        <source>How long the recording is</source>
        <translation>Dauer der Aufnahme</translation>
    </message>
    <message>
        <source>&amp;Name</source>
        <translation>&amp;Name</translation>
    </message>
    <message>
        <source>Name of the movie</source>
        <translation>Name des Films</translation>
    </message>
    <message>
        <source>&amp;Record</source>
        <translation>&amp;Aufnehmen</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>&amp;Stoppen</translation>
    </message>
    <message>
        <source>Start or stop recording (R)</source>
        <translation>Aufnahme starten oder stoppen (R)</translation>
    </message>
    <message>
        <source>or press R</source>
        <translation>oder R drücken</translation>
    </message>
    <message>
        <source>&amp;Options</source>
        <translation>&amp;Optionen</translation>
    </message>
    <message>
        <source>C&amp;lose</source>
        <translation>S&amp;chließen</translation>
    </message>
</context>
<context>
    <name>Recording</name>
    <message>
        <source>Nothing was recorded into “%1”.</source>
        <translation>In „%1“ wurde nichts aufgenommen.</translation>
    </message>
    <message>
        <source>The device cannot be changed during a recording.</source>
        <translation>Während einer Aufnahme kann das Gerät nicht gewechselt werden.</translation>
    </message>
    <message>
        <source>The device is not connected any more.</source>
        <translation>Das Gerät ist nicht mehr angeschlossen.</translation>
    </message>
    <message>
        <source>“%1” cannot be used at the moment.</source>
        <translation>„%1“ kann zurzeit nicht verwendet werden.</translation>
    </message>
    <message>
        <source>The recording could not be encoded.</source>
        <translation>Die Aufnahme konnte nicht kodiert werden.</translation>
    </message>
    <message>
        <source>The camera was disconnected.</source>
        <translation>Die Verbindung zur Kamera wurde getrennt.</translation>
    </message>
    <message>
        <source>The microphone was disconnected.</source>
        <translation>Die Verbindung zum Mikrofon wurde getrennt.</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>Der Datenträger ist voll.</translation>
    </message>
    <message>
        <source>There is no file to record into.</source>
        <translation>Es gibt keine Datei für die Aufnahme.</translation>
    </message>
    <message>
        <source>The recording could not be started.</source>
        <translation>Die Aufnahme konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>Video settings</source>
        <translation>Bildeinstellungen</translation>
    </message>
    <message>
        <source>Sound settings</source>
        <translation>Toneinstellungen</translation>
    </message>
    <message>
        <source>“%1” cannot be used.</source>
        <translation>„%1“ kann nicht verwendet werden.</translation>
    </message>
    <message>
        <source>The picture cannot have this size. Choose another one.</source>
        <translation>Diese Bildgröße ist nicht möglich. Bitte eine andere wählen.</translation>
    </message>
    <message>
        <source>Built on FFmpeg</source>
        <translation>Basiert auf FFmpeg</translation>
    </message>
    <message>
        <source>Clipwave’s recorder captures, compresses and writes movies with the libraries of the FFmpeg project, which come under the GNU Lesser General Public License.</source>
        <translation>Zum Aufnehmen, Komprimieren und Schreiben von Filmen verwendet Clipwave die Bibliotheken des FFmpeg-Projekts, die unter der GNU Lesser General Public License stehen.</translation>
    </message>
    <message>
        <source>“%1” cannot be made.</source>
        <translation>„%1“ kann nicht angelegt werden.</translation>
    </message>
    <message>
        <source>%1 free, less than a minute</source>
        <translation>%1 frei, weniger als eine Minute</translation>
    </message>
    <message>
        <source>The movie needs a name.</source>
        <translation>Der Film braucht einen Namen.</translation>
    </message>
    <message>
        <source>“%1” exists already.</source>
        <translation>„%1“ ist bereits vorhanden.</translation>
    </message>
    <message numerus="yes">
        <source>%1 free, about %n hours</source>
        <comment>%1 free, about %n hour</comment>
        <translation>
            <numerusform>%1 frei, etwa %n&#xa0;Stunde</numerusform>
            <numerusform>%1 frei, etwa %n&#xa0;Stunden</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 free, about %n minutes</source>
        <comment>%1 free, about %n minute</comment>
        <translation>
            <numerusform>%1 frei, etwa %n&#xa0;Minute</numerusform>
            <numerusform>%1 frei, etwa %n&#xa0;Minuten</numerusform>
        </translation>
    </message>
    <message>
        <source>.</source>
        <extracomment>The decimal mark of a number.</extracomment>
        <translation>,</translation>
    </message>
</context>
<context>
    <name>Report</name>
    <message>
        <source>Published</source>
        <translation>Veröffentlicht</translation>
    </message>
    <message>
        <source>These links subscribe to what was published:</source>
        <translation>Mit diesen Links lässt sich das Veröffentlichte abonnieren:</translation>
    </message>
    <message>
        <source>Subscription links</source>
        <translation>Abo-Links</translation>
    </message>
    <message>
        <source>&amp;Copy links</source>
        <translation>&amp;Links kopieren</translation>
    </message>
    <message>
        <source>Hand to &amp;iTunes</source>
        <translation>An &amp;iTunes übergeben</translation>
    </message>
    <message>
        <source>Copy in&amp;vitation</source>
        <translation>&amp;Einladung kopieren</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>SingleInstance</name>
    <message>
        <source>Clipwave is already open, but it does not answer. Wait until it has finished, or end it, and try again.</source>
        <translation>Clipwave ist bereits geöffnet, antwortet aber nicht. Warten Sie, bis es fertig ist, oder beenden Sie es, und versuchen Sie es dann noch einmal.</translation>
    </message>
</context>
<context>
    <name>SizePanel</name>
    <message>
        <source>Size of the picture</source>
        <translation>Bildgröße</translation>
    </message>
    <message>
        <source>&amp;Width</source>
        <translation>&amp;Breite</translation>
    </message>
    <message>
        <source>pixels</source>
        <translation>Pixel</translation>
    </message>
    <message>
        <source>&amp;Height</source>
        <translation>&amp;Höhe</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>Undo</name>
    <message>
        <source>Open Movies</source>
        <translation>Filme öffnen</translation>
    </message>
    <message>
        <source>Change of Publish Method</source>
        <translation>Art der Veröffentlichung ändern</translation>
    </message>
    <message>
        <source>Record Movie</source>
        <translation>Film aufnehmen</translation>
    </message>
    <message>
        <source>New Channel</source>
        <translation>Neuer Kanal</translation>
    </message>
    <message>
        <source>Delete Channel</source>
        <translation>Kanal löschen</translation>
    </message>
    <message>
        <source>Delete Channels</source>
        <translation>Kanäle löschen</translation>
    </message>
    <message>
        <source>Delete Episode</source>
        <translation>Episode löschen</translation>
    </message>
    <message>
        <source>Delete Episodes</source>
        <translation>Episoden löschen</translation>
    </message>
    <message>
        <source>Choose Movie</source>
        <translation>Film auswählen</translation>
    </message>
    <message>
        <source>Clear Movie</source>
        <translation>Film entfernen</translation>
    </message>
    <message>
        <source>Change of Copy</source>
        <translation>„Kopieren“ ändern</translation>
    </message>
    <message>
        <source>Change of Publish</source>
        <translation>„Veröffentlichen“ ändern</translation>
    </message>
    <message>
        <source>Add Episodes</source>
        <translation>Episoden hinzufügen</translation>
    </message>
    <message>
        <source>Change of Destination</source>
        <translation>Ziel ändern</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Feed importieren</translation>
    </message>
</context>
<context>
    <name>clipwave::ArtworkWell</name>
    <message>
        <source>“%1” is not the address of a picture.</source>
        <translation>„%1“ ist nicht die Adresse eines Bildes.</translation>
    </message>
    <message>
        <source>There is no file “%1”.</source>
        <translation>Es gibt keine Datei „%1“.</translation>
    </message>
    <message>
        <source>The picture cannot be read: %1.</source>
        <translation>Das Bild kann nicht gelesen werden: %1.</translation>
    </message>
    <message>
        <source>No picture</source>
        <translation>Kein Bild</translation>
    </message>
</context>
<context>
    <name>clipwave::DateField</name>
    <message>
        <source>Has a date</source>
        <translation>Mit Datum</translation>
    </message>
    <message>
        <source>Several values</source>
        <translation>Mehrere Werte</translation>
    </message>
    <message>
        <source>No date</source>
        <translation>Kein Datum</translation>
    </message>
</context>
<context>
    <name>clipwave::DesktopInterface</name>
    <message>
        <source>Change of Artwork</source>
        <translation>Coverbild ändern</translation>
    </message>
    <message>
        <source>Under channel &amp;titles</source>
        <translation>Unter den Kanal&amp;titeln anzeigen</translation>
    </message>
    <message>
        <source>Nothing</source>
        <translation>Nichts</translation>
    </message>
    <message>
        <source>No channel is marked for publishing.</source>
        <translation>Kein Kanal ist zum Veröffentlichen markiert.</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Cancel &amp;publishing</source>
        <translation>&amp;Veröffentlichen abbrechen</translation>
    </message>
    <message>
        <source>&amp;Publish</source>
        <translation>&amp;Veröffentlichen</translation>
    </message>
    <message numerus="yes">
        <source>%n channels were published. Their subscription links:</source>
        <translation>
            <numerusform>%n Kanal wurde veröffentlicht. Sein Abo-Link:</numerusform>
            <numerusform>%n Kanäle wurden veröffentlicht. Die Abo-Links:</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>clipwave::FieldMirror</name>
    <message>
        <source>Several values</source>
        <translation>Mehrere Werte</translation>
    </message>
</context>
<context>
    <name>clipwave::ImagePicker</name>
    <message>
        <source>Untitled</source>
        <translation>Ohne Titel</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keines</translation>
    </message>
</context>
<context>
    <name>clipwave::MoviePreview</name>
    <message>
        <source>Movie picture</source>
        <translation>Filmbild</translation>
    </message>
    <message>
        <source>Position in the movie</source>
        <translation>Position im Film</translation>
    </message>
    <message>
        <source>Mute</source>
        <translation>Stumm</translation>
    </message>
    <message>
        <source>No movie</source>
        <translation>Kein Film</translation>
    </message>
    <message>
        <source>Sound only</source>
        <translation>Nur Ton</translation>
    </message>
    <message>
        <source>The movie is damaged and breaks off here.</source>
        <translation>Der Film ist beschädigt und bricht hier ab.</translation>
    </message>
    <message>
        <source>Movie file is missing</source>
        <translation>Die Filmdatei fehlt</translation>
    </message>
    <message>
        <source>This movie cannot be played</source>
        <translation>Dieser Film kann nicht wiedergegeben werden</translation>
    </message>
    <message>
        <source>Turn the sound on</source>
        <translation>Ton einschalten</translation>
    </message>
    <message>
        <source>Turn the sound off</source>
        <translation>Ton ausschalten</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>Pause (Space)</source>
        <translation>Pause (Leertaste)</translation>
    </message>
    <message>
        <source>Play (Space)</source>
        <translation>Wiedergabe (Leertaste)</translation>
    </message>
    <message>
        <source>%1 / %2</source>
        <translation>%1 / %2</translation>
    </message>
</context>
<context>
    <name>clipwave::OpenPanelDialog</name>
    <message>
        <source>Choose a folder</source>
        <translation>Ordner auswählen</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Choose a movie</source>
        <translation>Film auswählen</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>Ö&amp;ffnen</translation>
    </message>
    <message>
        <source>&amp;Choose</source>
        <translation>Aus&amp;wählen</translation>
    </message>
    <message>
        <source>All files</source>
        <translation>Alle Dateien</translation>
    </message>
    <message>
        <source>Movies</source>
        <translation>Filme</translation>
    </message>
    <message>
        <source>“%1” does not exist.</source>
        <translation>„%1“ ist nicht vorhanden.</translation>
    </message>
    <message>
        <source>“%1” is a folder. Choose a file in it.</source>
        <translation>„%1“ ist ein Ordner. Bitte eine Datei darin auswählen.</translation>
    </message>
    <message>
        <source>“%1” is not a folder.</source>
        <translation>„%1“ ist kein Ordner.</translation>
    </message>
    <message>
        <source>“%1” is not a movie that can be used here.</source>
        <translation>„%1“ ist kein Film, der hier verwendet werden kann.</translation>
    </message>
    <message>
        <source>Choose one only.</source>
        <translation>Bitte nur einen Eintrag auswählen.</translation>
    </message>
</context>
<context>
    <name>clipwave::PreviewMirror</name>
    <message>
        <source>No episode selected</source>
        <translation>Keine Episode ausgewählt</translation>
    </message>
    <message numerus="yes">
        <source>%n episodes selected</source>
        <translation>
            <numerusform>%n Episode ausgewählt</numerusform>
            <numerusform>%n Episoden ausgewählt</numerusform>
        </translation>
    </message>
    <message>
        <source>The movie is on the web</source>
        <translation>Der Film liegt im Web</translation>
    </message>
    <message>
        <source>No movie chosen yet</source>
        <translation>Noch kein Film ausgewählt</translation>
    </message>
    <message>
        <source>The movie file is missing</source>
        <translation>Die Filmdatei fehlt</translation>
    </message>
    <message>
        <source>The file is not a movie</source>
        <translation>Die Datei ist kein Film</translation>
    </message>
</context>
<context>
    <name>clipwave::RecordSheet</name>
    <message>
        <source>Recording</source>
        <translation>Aufnahme läuft</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Bereit</translation>
    </message>
    <message>
        <source>%1, no sound</source>
        <translation>%1, ohne Ton</translation>
    </message>
    <message>
        <source>%1, sound only</source>
        <translation>%1, nur Ton</translation>
    </message>
    <message>
        <source>or press R to stop</source>
        <translation>oder R drücken</translation>
    </message>
    <message>
        <source>or press R</source>
        <translation>oder R drücken</translation>
    </message>
</context>
<context>
    <name>clipwave::RecordTableModel</name>
    <message>
        <source>Untitled</source>
        <translation>Ohne Titel</translation>
    </message>
    <message>
        <source>The movie file is missing. Choose it again, or put it back in its place.</source>
        <translation>Die Filmdatei fehlt. Wählen Sie sie neu aus oder legen Sie sie an ihren Ort zurück.</translation>
    </message>
    <message>
        <source>This file cannot be opened as a movie.</source>
        <translation>Diese Datei lässt sich nicht als Film öffnen.</translation>
    </message>
    <message numerus="yes">
        <source>%n episodes</source>
        <translation>
            <numerusform>%n Episode</numerusform>
            <numerusform>%n Episoden</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>clipwave::SliderValueMirror</name>
    <message>
        <source>%1 %</source>
        <translation>%1&#xa0;%</translation>
    </message>
</context>
</TS>
