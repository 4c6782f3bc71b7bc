<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- The texts in the code are keys. Here stand those that English words otherwise on this desktop, and no others. -->
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>folvane::AboutView</name>
    <message>
        <source>Folvane for Mac</source>
        <translation>Folvane</translation>
    </message>
    <message>
        <source>No ads, no tracking, no account, no subscription. Everything runs on your Mac. If Folvane helps, you can support the developer with crypto.</source>
        <translation>No ads, no tracking, no account, no subscription. Everything runs on your computer. If Folvane helps, you can support the developer with crypto.</translation>
    </message>
</context>
<context>
    <name>folvane::CodesDropZone</name>
    <message>
        <source>Or copy a screenshot (⌘⌃⇧4) and paste it with ⌘V.</source>
        <translation>Or copy a screenshot and paste it with Ctrl+V.</translation>
    </message>
</context>
<context>
    <name>folvane::CodesView</name>
    <message>
        <source>Read QR codes and barcodes from pictures, screenshots and every page of a PDF. Everything is read on this Mac.</source>
        <translation>Read QR codes and barcodes from pictures, screenshots and every page of a PDF. Everything is read on this computer.</translation>
    </message>
</context>
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
    <name>folvane::NewStampMenu</name>
    <message>
        <source>Draw with Trackpad or Mouse…</source>
        <translation>Draw with Mouse, Touchpad or Pen…</translation>
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
    <name>folvane::StampLibraryPanel</name>
    <message>
        <source>Add your signature or a company seal once; it stays in Folvane on this Mac for every document.</source>
        <translation>Add your signature or a company seal once; it stays in Folvane on this computer for every document.</translation>
    </message>
    <message>
        <source>Or take a photo with your iPhone: File › Import from iPhone or iPad.</source>
        <translation>Or take a photo with your phone, then paste it here.</translation>
    </message>
</context>
<context>
    <name>folvane::StampsView</name>
    <message>
        <source>Sign a white sheet of paper or stamp it, then take a photo with your iPhone (File › Import from iPhone or iPad) or choose a scan. You can also draw with the trackpad or pick a ready stamp like PAID or APPROVED.</source>
        <translation>Sign a white sheet of paper or stamp it, then choose, drop or paste a photo or scan of it. You can also draw with mouse, touchpad or pen, or pick a ready stamp like PAID or APPROVED.</translation>
    </message>
    <message>
        <source>Your signature, initials or a company seal, with the paper removed automatically. They stay only on this Mac. Folvane puts your own images on documents; it doesn't make a signature legally binding by itself.</source>
        <translation>Your signature, initials or a company seal, with the paper removed automatically. They stay only on this computer. Folvane puts your own images on documents; it doesn't make a signature legally binding by itself.</translation>
    </message>
</context>
<context>
    <name>folvane::ToastView</name>
    <message>
        <source>Show in Finder</source>
        <translation>Show in Folder</translation>
    </message>
</context>
<context>
    <name>folvane::UpdatePanel</name>
    <message>
        <source>Folvane checks only when you ask. It reads one file on %1 and sends nothing about your Mac.</source>
        <translation>Folvane checks only when you ask. It reads one file on %1 and sends nothing about your computer.</translation>
    </message>
</context>
<context>
    <name>folvane::TellAFriendView</name>
    <message>
        <source>Folvane for Mac: free PDF tools, signatures and stamps, QR codes. Everything stays on your Mac.</source>
        <translation>Folvane: free PDF tools, signatures and stamps, QR codes. Everything stays on your computer.</translation>
    </message>
</context>
</TS>
