<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
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
