<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en_GB">
<context>
    <name>Editing</name>
    <message numerus="yes">
        <source>Delete %n channels?</source>
        <comment>Delete %n channel?</comment>
        <translation>
            <numerusform>Delete %n channel?</numerusform>
            <numerusform>Delete %n channels?</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Delete %n channels and their %1?</source>
        <comment>Delete %n channel and its %1?</comment>
        <translation>
            <numerusform>Delete %n channel and its %1?</numerusform>
            <numerusform>Delete %n channels and their %1?</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n episodes</source>
        <comment>%n episode</comment>
        <translation>
            <numerusform>%n episode</numerusform>
            <numerusform>%n episodes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Recording</name>
    <message numerus="yes">
        <source>%1 free, about %n hours</source>
        <comment>%1 free, about %n hour</comment>
        <translation>
            <numerusform>%1 free, about %n hour</numerusform>
            <numerusform>%1 free, about %n hours</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 free, about %n minutes</source>
        <comment>%1 free, about %n minute</comment>
        <translation>
            <numerusform>%1 free, about %n minute</numerusform>
            <numerusform>%1 free, about %n minutes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>clipwave::DesktopInterface</name>
    <message numerus="yes">
        <source>%n channels were published. Their subscription links:</source>
        <translation>
            <numerusform>%n channel was published. Its subscription link:</numerusform>
            <numerusform>%n channels were published. Their subscription links:</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>clipwave::PreviewMirror</name>
    <message numerus="yes">
        <source>%n episodes selected</source>
        <translation>
            <numerusform>%n episode selected</numerusform>
            <numerusform>%n episodes selected</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>clipwave::RecordTableModel</name>
    <message numerus="yes">
        <source>%n episodes</source>
        <translation>
            <numerusform>%n episode</numerusform>
            <numerusform>%n episodes</numerusform>
        </translation>
    </message>
</context>
</TS>
