<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- The texts in the code are keys. Here stand those that English words otherwise on this desktop, and no others. -->
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>folvane::CompressSheet</name>
    <message>
        <source>Sizes are measured on this Mac: the file you save is exactly this size.</source>
        <translation>Sizes are measured on this computer: the file you save is exactly this size.</translation>
    </message>
</context>
<context>
    <name>folvane::HomeView</name>
    <message>
        <source>Folvane for Mac</source>
        <translation>Folvane</translation>
    </message>
</context>
<context>
    <name>folvane::PasswordPrompt</name>
    <message>
        <source>Enter its password to open it. The password stays on this Mac.</source>
        <translation>Enter its password to open it. The password stays on this computer.</translation>
    </message>
</context>
<context>
    <name>folvane::ToastView</name>
    <message>
        <source>Show in Finder</source>
        <translation>Show in Folder</translation>
    </message>
</context>
</TS>
