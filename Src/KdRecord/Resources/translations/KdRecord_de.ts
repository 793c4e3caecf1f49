<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>KAdvanceSettings</name>
    <message>
        <source>Advanced</source>
        <translation>Erweiterte Einstellungen</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Übernehmen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>KAudioRecordPreviewWidget</name>
    <message>
        <source>Open the Recording Preview Window</source>
        <translation>Vorschaufenster öffnen</translation>
    </message>
    <message>
        <source>Close the Recording Preview Window</source>
        <translation>Vorschaufenster schließen</translation>
    </message>
    <message>
        <source>Recording&#xa0;preview</source>
        <translation>Aufnahmevorschau</translation>
    </message>
</context>
<context>
    <name>KAudioSettings</name>
    <message>
        <source>Audio</source>
        <translation>Audio</translation>
    </message>
    <message>
        <source>Encoder</source>
        <translation>Encoder</translation>
    </message>
    <message>
        <source>Channel</source>
        <translation>Kanäle</translation>
    </message>
    <message>
        <source>Sample Rate</source>
        <translation>Abtastrate</translation>
    </message>
    <message>
        <source>Bit Rate</source>
        <translation>Bitrate</translation>
    </message>
    <message>
        <source>Bitrate Mode</source>
        <translation>Bitratenmodus</translation>
    </message>
    <message>
        <source>Bitrate mode affects audio quality and file size.Use CBR for stable streaming, VBR for better quality, and ABR for balanced control.</source>
        <translation>Der Bitratenmodus bestimmt Klangqualität und Dateigröße. CBR eignet sich für gleichmäßiges Streaming, VBR für bessere Qualität und ABR als Mittelweg.</translation>
    </message>
    <message>
        <source>AAC</source>
        <translation>AAC</translation>
    </message>
    <message>
        <source>Mono</source>
        <translation>Mono</translation>
    </message>
    <message>
        <source>Stereo</source>
        <translation>Stereo</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>VBR</source>
        <translation>VBR</translation>
    </message>
    <message>
        <source>CBR</source>
        <translation>CBR</translation>
    </message>
    <message>
        <source>CBR mode is on. We&apos;ve automatically applied the optimal settings for you.</source>
        <translation>Der CBR-Modus ist aktiv. Die Bitrate wurde automatisch angepasst.</translation>
    </message>
</context>
<context>
    <name>KOldMessageDialog</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
</context>
<context>
    <name>KdAudioVolumeWidget</name>
    <message>
        <source>Input level</source>
        <translation>Eingangspegel</translation>
    </message>
</context>
<context>
    <name>KdMinimumTake</name>
    <message>
        <source>The recording is too short. Data cannot be saved.</source>
        <translation>Die Aufnahme ist zu kurz und kann nicht gespeichert werden.</translation>
    </message>
</context>
<context>
    <name>KdOpenFileLineEdit</name>
    <message>
        <source>Choose a folder</source>
        <translation>Ordner wählen</translation>
    </message>
</context>
<context>
    <name>KdOutputFolderCheck</name>
    <message>
        <source>There is only %1MB space in the specified output directory, Would you choose another directory?</source>
        <translation>Im gewählten Ausgabeordner sind nur noch %1 MB frei. Möchten Sie einen anderen Ordner wählen?</translation>
    </message>
    <message>
        <source>Please check whether you have permission to write or read on the path, or choose other path to create.</source>
        <translation>Bitte prüfen Sie, ob Sie an diesem Ort lesen und schreiben dürfen, oder wählen Sie einen anderen Ordner.</translation>
    </message>
</context>
<context>
    <name>KdTitleBar</name>
    <message>
        <source>Minimize</source>
        <translation>Minimieren</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
</TS>
