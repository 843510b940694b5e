<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>AutoCompleteBadge</name>
    <message numerus="yes">
        <source>%n moves</source>
        <translation>
            <numerusform>%n move</numerusform>
            <numerusform>%n moves</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>BoardToolbar</name>
    <message numerus="yes">
        <source>%n moves</source>
        <translation>
            <numerusform>%n move</numerusform>
            <numerusform>%n moves</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>High score: %n moves</source>
        <translation>
            <numerusform>High score: %n move</numerusform>
            <numerusform>High score: %n moves</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message numerus="yes">
        <source>%n moves</source>
        <translation>
            <numerusform>%n move</numerusform>
            <numerusform>%n moves</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Zelvaine</name>
    <message numerus="yes">
        <source>You built all eight foundations in %n moves.</source>
        <translation>
            <numerusform>You built all eight foundations in %n move.</numerusform>
            <numerusform>You built all eight foundations in %n moves.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>zelvaine::Updater</name>
    <message numerus="yes">
        <source>The update server did not answer within %n second(s).</source>
        <translation>
            <numerusform>The update server did not answer within %n second.</numerusform>
            <numerusform>The update server did not answer within %n seconds.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The update server redirected more than %n time(s); the check was stopped.</source>
        <translation>
            <numerusform>The update server redirected more than %n time; the check was stopped.</numerusform>
            <numerusform>The update server redirected more than %n times; the check was stopped.</numerusform>
        </translation>
    </message>
</context>
</TS>
