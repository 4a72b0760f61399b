<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en_GB">
<context>
    <name>About</name>
    <message>
        <source>About Clipwave</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clipwave’s icon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Makes video podcasts from your movies and publishes them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version&#xa0;3. It comes with no warranty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Account</name>
    <message>
        <source>Over plain http anyone on the way can read the password. Use https, or allow plain http first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please enter the server and the member name first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An address has no blanks around it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The secret service refused.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An address begins with http:// or https:// and the name of a host.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An address with a user name or a password in it is not kept; say the address without them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An address holds no “?” and no “#”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The address holds characters that no address can hold.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Alerts</name>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CaptureSettings</name>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Volume</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Devices</name>
    <message>
        <source>The System’s Sound Input</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Test Pattern</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Test Tone</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Documents</name>
    <message>
        <source>The property list cannot be read: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text stands between the elements of “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The key “%1” has no value.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A value has no key.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” is no kind of value.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The root element is “%1”, not “plist”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It holds %1 values instead of one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document&apos;s bytes do not fit its encoding.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document is too large.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is not enough memory for the document.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A tag carries too many attributes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document type is too long.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What begins here has no end.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is a control character.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document holds too many elements.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The elements are nested too deeply.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document holds too many different names.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The entity “%1” is not known.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document type declares attribute values.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is a character that XML cannot carry.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document is not XML.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document holds no element.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document is no XML that could be repaired.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” is no integer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” is no number.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” is no date.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” is no data.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>EditActions</name>
    <message>
        <source>&amp;Undo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Typing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Editing</name>
    <message>
        <source>The channel&apos;s movie folder cannot be named &quot;%1&quot;. Please select a different channel name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Delete %n channels?</source>
        <comment>Delete %n channel?</comment>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Delete %n channels and their %1?</source>
        <comment>Delete %n channel and its %1?</comment>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>Delete the channel without a title?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete the channel without a title and its %1?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete the channel “%1”?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete the channel “%1” and its %2?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The movie files stay where they are.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Each movie becomes an episode of a new channel.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n episodes</source>
        <comment>%n episode</comment>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FeedURL</name>
    <message>
        <source>Import feed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import a feed from the web as a new channel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;URL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Import</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Files</name>
    <message>
        <source>“%1” could not be read: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” could not be written: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” could not be created: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” could not be removed: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” could not be moved: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” could not be used: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>its folder does not exist</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it does not exist</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>you do not have permission</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>something with that name exists already</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>your share of the disk is used up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the disk is read-only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it is a folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a part of its path is not a folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>its name is too long</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>its links lead round in a circle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>too many files are open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it would be too large</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the disk reported an error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” is not a file that can be loaded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no home folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it holds no dictionary.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The settings in “%1” could not be read: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ImageProperties</name>
    <message>
        <source>Artwork images</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Images</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No images yet.
Add one with “+”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add an image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove the selected image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;URL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preview of the image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Revert</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take back what is being typed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture’s address on the web</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>InterfaceWiring</name>
    <message>
        <source>Change of %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Library</name>
    <message>
        <source>“%1” of a %2 cannot hold a value of this type.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A %1 has no “%2”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no kind of record named “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A %1 cannot be found by “%2”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” of a %2 is not valid.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 values of the library are not valid.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The library at %1 cannot be opened. %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no kind of store named “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another library is open in its place.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The library at %1 cannot be saved. %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is open elsewhere.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Its lock cannot be had: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is damaged or cut off at byte %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is not a library.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is not a library: it bears no version.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It was written by a newer version of this application (format %1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is damaged: its next id is missing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is damaged: there is no id left for a new record.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is damaged: there is text between its records.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is damaged: a %1 has no id or one that was never given.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is damaged: the %1 %2 holds text beside its values.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is damaged: the %1 %2 has a “%3” of an unknown encoding.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is damaged: the %1 %2 has a “%3” of an unknown type.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is damaged: the %1 %2 has two values for “%3”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is damaged: the %1 %2 has a “%3” that cannot be read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is damaged: the %1 %2 shares its id with another.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is damaged: the %1 %2 names %3 as its “%4”, and there is no such %5.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is damaged: the %1 %2 belongs to a record that does not own it.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LibraryTables</name>
    <message>
        <source>Publish</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change of Publish</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy when publishing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change of Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trouble with the movie</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Channels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Episodes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>URL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No channel is selected.
Drop movies here to begin a new one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Several channels are selected.
Choose one of them to see its episodes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No episodes yet.
Drop movies here, or press Record</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Channels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No channels yet.
Make one with “Channel”, or drop movies here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Episodes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Movie preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Publish method</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose the folder to publish to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>URL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Where the folder is found on the web</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Details</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Episode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Subtitle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Summary</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Publish date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time zone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Movie</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Movie file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open the movie in the desktop’s player</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Movie information</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose the movie of this episode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take the movie out of this episode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Publishing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In the feed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The episode is written into the channel’s feed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy the movie</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The movie is copied to the destination when you publish next</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Directory</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Explicit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The podcast directory marks the episode as explicit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide from the directory</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The podcast directory leaves the episode out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Episode details</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Author</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>E-mail</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keywords</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Separated by commas</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Category</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Subcategory</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comments</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The page where listeners comment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Description</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The subtitle serves when this is empty</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Duration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unit of the size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Media URL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The folder in which the movie is published</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Media file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The name of the published movie</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Full URL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Where subscribers find the movie</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Channel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copyright</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Language</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Website</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Feed file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Publish this channel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The channel takes part when you publish</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Artwork of the channel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Artwork</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit the artwork images</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Podcast</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Owner</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Owner’s e-mail</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The podcast directory marks the channel as explicit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The podcast directory leaves the channel out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>RSS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Managing editor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Webmaster</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Generator</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Documentation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The address that explains the format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time to live</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>minutes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last built</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last build date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip Monday</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip Tuesday</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip Wednesday</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Thu</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip Thursday</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fri</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip Friday</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sat</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip Saturday</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sun</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip Sunday</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hours</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 5</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 6</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 7</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 8</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 9</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 10</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 11</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 12</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 13</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 14</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 15</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 16</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 17</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 18</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 19</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 20</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 21</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 22</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip hour 23</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Style sheet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use a style sheet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The style sheet’s address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Publish to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Status</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Publish</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Import feed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Channel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>E&amp;pisode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Toolbar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;New channel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make a new channel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Open movies…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make a new channel from movies</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Add episodes…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Episodes…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add movies to the selected channel as episodes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Record movie…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record a new episode of the selected channel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>From &amp;file…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>From &amp;URL…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Publish</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Publish every channel that is marked for it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select &amp;all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pr&amp;eferences…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose &amp;destination…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Artwork images…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Publish on or off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Hand feeds to iTunes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hand to iTunes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hand the feeds of the last publish run to iTunes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy &amp;invitation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy invitation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy a message that invites people to subscribe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete &amp;channel…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose &amp;movie…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>C&amp;lear movie</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Open movie in player</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Play or pa&amp;use</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Copy on or off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Delete episodes…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Episode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Episode &amp;details</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Podcast</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;RSS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clipwave &amp;help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;About Clipwave</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Movies</name>
    <message>
        <source>The movie “%1” is missing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The movie “%1” may not be written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The disk of “%1” is read-only.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no more room on the disk for “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The movie “%1” could not be written: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The movie “%1” may not be read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” cannot be played as a movie.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The movie “%1” is of a kind that cannot be played.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The movie cannot be played: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The movie “%1” is damaged: it breaks off before its end.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Network</name>
    <message>
        <source>There is not enough memory for the data.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The request holds a method or a header that cannot be sent.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The user name or the password holds characters that cannot be sent.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The proxy server could not be found.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server “%1” answered %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file of trusted certificates could not be read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server “%1” did not take everything in time.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server “%1” did not send everything in time.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server “%1” could not be found.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server “%1” could not be reached.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server “%1” broke the connection off.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server “%1” redirects too often.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server “%1” redirects to an address that is neither http nor https.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server “%1” gave an answer that cannot be understood.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server “%1” has a certificate that is not trusted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server “%1” made no secure connection.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sending to “%1” failed: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Loading from “%1” failed: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The address is not a valid URL.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Addresses that begin with “%1:” cannot be loaded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The data from “%1” are larger than %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection to the server “%1” is not encrypted, so the password was not sent.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file for the server “%1” could not be read to its end.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Preferences</name>
    <message>
        <source>Preferences</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>General</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New channels and episodes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Author</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Feed file prefix</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A new channel’s feed file is this word and a number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Episode title prefix</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stands before the file’s name in the title of a new episode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Art&amp;work URL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The artwork of new channels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Microphone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Publishing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Replace published files without asking</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Without this, Clipwave asks before a file at the destination is replaced</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Updates</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>L&amp;ook for a newer version at start</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>.Mac account</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Server address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Member name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Replaces the one that is kept</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Home page URL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>E&amp;xpires</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Never</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sign-&amp;up page</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Renewal page</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Allow u&amp;nencrypted connections</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Over http everyone on the way can read your password. Allow it only in a network that you trust.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Advanced</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>List of &amp;versions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Main window</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How far the dividers between the lists and the preview can be dragged:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Smallest position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>points from the left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Largest position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>of the room, such as 0.75</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please enter a number that is not negative.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ProgramNames</name>
    <message>
        <source>New Artwork</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete Artwork</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The links are on the clipboard.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The invitation is on the clipboard.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Kept; type here to replace it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None is kept</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>First camera found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>First microphone found</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Publishing</name>
    <message>
        <source>Folder</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Record</name>
    <message>
        <source>Record</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record &amp;video</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record &amp;sound</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Full size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Half size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Quarter size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Other size…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>V&amp;ideo settings…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sou&amp;nd settings…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Low latency capture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Always use &amp;time base</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use sound &amp;clock</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Acknowledgements…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Live picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sound level</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How long the recording is</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name of the movie</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Record</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start or stop recording (R)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>or press R</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Options</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>C&amp;lose</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Recording</name>
    <message>
        <source>Nothing was recorded into “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device cannot be changed during a recording.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device is not connected any more.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” cannot be used at the moment.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The recording could not be encoded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The camera was disconnected.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The microphone was disconnected.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no file to record into.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The recording could not be started.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Video settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sound settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” cannot be used.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture cannot have this size. Choose another one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Built on FFmpeg</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clipwave’s recorder captures, compresses and writes movies with the libraries of the FFmpeg project, which come under the GNU Lesser General Public License.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” cannot be made.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 free, hardly a minute</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The movie needs a name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” exists already.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%1 free, about %n hours</source>
        <comment>%1 free, about %n hour</comment>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 free, about %n minutes</source>
        <comment>%1 free, about %n minute</comment>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Report</name>
    <message>
        <source>Published</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>These links subscribe to what was published:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Subscription links</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Copy links</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hand to &amp;iTunes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy in&amp;vitation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SingleInstance</name>
    <message>
        <source>Clipwave is already open, but it does not answer. Wait until it has finished, or end it, and try again.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SizePanel</name>
    <message>
        <source>Size of the picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>pixels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Undo</name>
    <message>
        <source>Open Movies</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change of Publish Method</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record Movie</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New Channel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete Channel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete Channels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete Episode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete Episodes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose Movie</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear Movie</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change of Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change of Publish</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Episodes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change of Destination</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>clipwave::ArtworkWell</name>
    <message>
        <source>“%1” is not the address of a picture.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no file “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture cannot be read: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No picture</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>clipwave::DateField</name>
    <message>
        <source>Has a date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Several values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No date</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>clipwave::DesktopInterface</name>
    <message>
        <source>Change of Artwork</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Under channel &amp;titles</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No channel is marked for publishing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel &amp;publishing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Publish</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n channels were published. Their subscription links:</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
</context>
<context>
    <name>clipwave::FieldMirror</name>
    <message>
        <source>Several values</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>clipwave::ImagePicker</name>
    <message>
        <source>Untitled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>clipwave::MoviePreview</name>
    <message>
        <source>Movie picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position in the movie</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mute</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No movie</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sound only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The movie is damaged and breaks off here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Movie file is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This movie cannot be played</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Turn the sound on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Turn the sound off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Play</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pause (Space)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Play (Space)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 / %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>clipwave::OpenPanelDialog</name>
    <message>
        <source>Choose a folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a movie</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Choose</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Movies</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” does not exist.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” is a folder. Choose a file in it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” is not a folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” is not a movie that can be used here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose one only.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>clipwave::PreviewMirror</name>
    <message>
        <source>No episode selected</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n episodes selected</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>The movie is on the web</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No movie chosen yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The movie file is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file is not a movie</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>clipwave::RecordSheet</name>
    <message>
        <source>Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ready</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, no sound</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, sound only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>or press R to stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>or press R</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>clipwave::RecordTableModel</name>
    <message>
        <source>Untitled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The movie file is missing. Choose it again, or put it back in its place.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This file cannot be opened as a movie.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n episodes</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
</context>
<context>
    <name>clipwave::SliderValueMirror</name>
    <message>
        <source>%1 %</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
