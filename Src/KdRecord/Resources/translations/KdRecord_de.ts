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
    <name>KComboboxExt</name>
    <message>
        <source>Explanation</source>
        <translation>Erklärung</translation>
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
    <name>KRecordPreViewSettingRadiusWidget</name>
    <message>
        <source>Switch to Square</source>
        <translation>Zu Quadrat wechseln</translation>
    </message>
    <message>
        <source>Switch to Circle</source>
        <translation>Zu Kreis wechseln</translation>
    </message>
    <message>
        <source>Blur Background</source>
        <translation>Hintergrund weichzeichnen</translation>
    </message>
    <message>
        <source>Remove Background</source>
        <translation>Hintergrund entfernen</translation>
    </message>
    <message>
        <source>Flip</source>
        <translation>Spiegeln</translation>
    </message>
    <message>
        <source>Selected</source>
        <translation>Ausgewählt</translation>
    </message>
</context>
<context>
    <name>KVideoSettings</name>
    <message>
        <source>Video</source>
        <translation>Video</translation>
    </message>
    <message>
        <source>Encoder</source>
        <translation>Encoder</translation>
    </message>
    <message>
        <source>Frame Rate</source>
        <translation>Bildrate</translation>
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
        <source>Quality</source>
        <translation>Qualität</translation>
    </message>
    <message>
        <source>H264</source>
        <translation>H264</translation>
    </message>
    <message>
        <source>%1 fps</source>
        <translation>%1 fps</translation>
    </message>
    <message>
        <source>VBR</source>
        <translation>VBR</translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1&#xa0;%</translation>
    </message>
</context>
<context>
    <name>KdAnnouncer</name>
    <message>
        <source>Countdown stopped</source>
        <translation>Countdown abgebrochen</translation>
    </message>
    <message>
        <source>Recording started</source>
        <translation>Aufnahme gestartet</translation>
    </message>
    <message>
        <source>Recording resumed</source>
        <translation>Aufnahme fortgesetzt</translation>
    </message>
    <message>
        <source>Recording stopped</source>
        <translation>Aufnahme beendet</translation>
    </message>
    <message>
        <source>No device is connected</source>
        <translation>Kein Gerät ist angeschlossen</translation>
    </message>
</context>
<context>
    <name>KdAudioDeviceBoxes</name>
    <message>
        <source>Input Audio</source>
        <translation>Audioeingang</translation>
    </message>
    <message>
        <source>Connect a microphone and press Refresh Device</source>
        <translation>Schließen Sie ein Mikrofon an und drücken Sie „Geräte aktualisieren“</translation>
    </message>
</context>
<context>
    <name>KdAudioRecordPanelUi</name>
    <message>
        <source>Record Time</source>
        <translation>Aufnahmezeit</translation>
    </message>
    <message>
        <source>Input level</source>
        <translation>Eingangspegel</translation>
    </message>
    <message>
        <source>Audio Device</source>
        <translation>Audiogerät</translation>
    </message>
    <message>
        <source>Input</source>
        <translation>Eingang</translation>
    </message>
    <message>
        <source>Save to</source>
        <translation>Speichern in</translation>
    </message>
    <message>
        <source>Count Down</source>
        <translation>Countdown</translation>
    </message>
    <message>
        <source>sec</source>
        <translation>Sek.</translation>
    </message>
    <message>
        <source>Mute Project</source>
        <translation>Projekt stumm</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Advanced</source>
        <translation>Erweitert</translation>
    </message>
    <message>
        <source>Refresh Device</source>
        <translation>Geräte aktualisieren</translation>
    </message>
    <message>
        <source>Re-record</source>
        <translation>Neu aufnehmen</translation>
    </message>
</context>
<context>
    <name>KdAudioRecordView</name>
    <message>
        <source>Record Audio</source>
        <translation>Audio aufnehmen</translation>
    </message>
    <message>
        <source>Open recorder</source>
        <translation>Rekorder öffnen</translation>
    </message>
    <message>
        <source>Quit recorder</source>
        <translation>Rekorder beenden</translation>
    </message>
    <message>
        <source>Stop recording</source>
        <translation>Aufnahme beenden</translation>
    </message>
    <message>
        <source>Resume recording</source>
        <translation>Aufnahme fortsetzen</translation>
    </message>
    <message>
        <source>Start recording</source>
        <translation>Aufnahme starten</translation>
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
    <name>KdCountCtrl</name>
    <message>
        <source>Recording starts in %1</source>
        <translation>Aufnahme beginnt in %1</translation>
    </message>
</context>
<context>
    <name>KdDeviceBox</name>
    <message>
        <source>No Device</source>
        <translation>Kein Gerät</translation>
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
    <name>KdRecordNotices</name>
    <message>
        <source>No Device</source>
        <translation>Kein Gerät</translation>
    </message>
    <message>
        <source>Unable to record due to an issue with the device.</source>
        <translation>Wegen eines Problems mit dem Gerät kann nicht aufgenommen werden.</translation>
    </message>
    <message>
        <source>Audio device %1 connection lost.</source>
        <translation>Die Verbindung zum Audiogerät %1 wurde unterbrochen.</translation>
    </message>
    <message>
        <source>Recording is paused. Click Resume to continue recording.</source>
        <translation>Die Aufnahme ist angehalten. Klicken Sie auf „Fortsetzen“, um weiter aufzunehmen.</translation>
    </message>
    <message>
        <source>Your audio has been added to the timeline and media library.</source>
        <translation>Ihre Aufnahme wurde der Zeitleiste und der Medienbibliothek hinzugefügt.</translation>
    </message>
    <message>
        <source>Re-recording will overwrite the already recorded content, are you sure?</source>
        <translation>Eine neue Aufnahme überschreibt das bereits Aufgenommene. Sind Sie sicher?</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Re-record</source>
        <translation>Neu aufnehmen</translation>
    </message>
    <message>
        <source>The recording has ended because the disk is full. What was recorded until then has been saved.</source>
        <translation>Die Aufnahme wurde beendet, weil der Datenträger voll ist. Was bis dahin aufgenommen war, ist gespeichert.</translation>
    </message>
    <message>
        <source>The Camera %1 is lost.</source>
        <translation>Die Kamera %1 ist nicht mehr verfügbar.</translation>
    </message>
    <message>
        <source>Webcam is being used by another application, please close other application and try again.</source>
        <translation>Die Webcam wird von einem anderen Programm verwendet. Schließen Sie es und versuchen Sie es erneut.</translation>
    </message>
</context>
<context>
    <name>KdRecordWidgets</name>
    <message>
        <source>Stop (%1)</source>
        <translation>Stopp (%1)</translation>
    </message>
    <message>
        <source>Start (%1)</source>
        <translation>Start (%1)</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
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
<context>
    <name>KdWebcamFormatChoice</name>
    <message>
        <source>%1 fps</source>
        <translation>%1 fps</translation>
    </message>
</context>
<context>
    <name>KdWebcamRecordPanel</name>
    <message>
        <source>Live Record</source>
        <translation>Live-Aufnahme</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Aufnahme läuft</translation>
    </message>
    <message>
        <source>No Device</source>
        <translation>Kein Gerät</translation>
    </message>
    <message>
        <source>Close the Recording Preview Window</source>
        <translation>Vorschaufenster schließen</translation>
    </message>
    <message>
        <source>Open the Recording Preview Window</source>
        <translation>Vorschaufenster öffnen</translation>
    </message>
</context>
<context>
    <name>KdWebcamRecordPanelUi</name>
    <message>
        <source>Record Time:</source>
        <translation>Aufnahmezeit:</translation>
    </message>
    <message>
        <source>Video Device:</source>
        <translation>Videogerät:</translation>
    </message>
    <message>
        <source>Audio:</source>
        <translation>Audio:</translation>
    </message>
    <message>
        <source>Resolution:</source>
        <translation>Auflösung:</translation>
    </message>
    <message>
        <source>Frame Rate:</source>
        <translation>Bildrate:</translation>
    </message>
    <message>
        <source>Count Down:</source>
        <translation>Countdown:</translation>
    </message>
    <message>
        <source>sec</source>
        <translation>Sek.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Re-record</source>
        <translation>Neu aufnehmen</translation>
    </message>
    <message>
        <source>Input level</source>
        <translation>Eingangspegel</translation>
    </message>
    <message>
        <source>Webcam picture</source>
        <translation>Webcam-Bild</translation>
    </message>
    <message>
        <source>Connect a webcam, and its picture appears here</source>
        <translation>Schließen Sie eine Webcam an – ihr Bild erscheint hier</translation>
    </message>
</context>
<context>
    <name>KdWebcamRecordView</name>
    <message>
        <source>Capture Video</source>
        <translation>Video aufnehmen</translation>
    </message>
</context>
<context>
    <name>KdWebcamTakeReport</name>
    <message>
        <source>remove</source>
        <translation>entfernt</translation>
    </message>
    <message>
        <source>blur</source>
        <translation>unscharf</translation>
    </message>
    <message>
        <source>circle</source>
        <translation>Kreis</translation>
    </message>
    <message>
        <source>square</source>
        <translation>Rechteck</translation>
    </message>
</context>
<context>
    <name>StudioAudioSettingsDialog</name>
    <message>
        <source>Audio settings</source>
        <translation>Audio-Einstellungen</translation>
    </message>
</context>
<context>
    <name>StudioDevicePane</name>
    <message>
        <source>%1 (current)</source>
        <translation>%1 (gewählt)</translation>
    </message>
    <message>
        <source>%1 (disconnected)</source>
        <translation>%1 (getrennt)</translation>
    </message>
    <message>
        <source>%1 was connected.</source>
        <translation>%1 wurde angeschlossen.</translation>
    </message>
    <message>
        <source>%1 was disconnected.</source>
        <translation>%1 wurde getrennt.</translation>
    </message>
    <message>
        <source>Another program is using the camera.</source>
        <translation>Ein anderes Programm benutzt die Kamera.</translation>
    </message>
    <message>
        <source>Press one to make it the current one.</source>
        <translation>Ein Klick wählt ein Gerät.</translation>
    </message>
    <message>
        <source>Connect a camera: it appears here by itself.</source>
        <translation>Angeschlossene Kameras erscheinen hier.</translation>
    </message>
    <message>
        <source>Connect a microphone: it appears here by itself.</source>
        <translation>Angeschlossene Mikrofone erscheinen hier.</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>Kameras</translation>
    </message>
    <message>
        <source>Microphones</source>
        <translation>Mikrofone</translation>
    </message>
</context>
<context>
    <name>StudioDevicesDialog</name>
    <message>
        <source>Devices</source>
        <translation>Geräte</translation>
    </message>
    <message>
        <source>What is current here is for this window alone: each recorder keeps its own choice.</source>
        <translation>Die Wahl gilt nur für dieses Fenster: Jeder Rekorder behält seine eigene.</translation>
    </message>
</context>
<context>
    <name>StudioEmptyState</name>
    <message>
        <source>Choose a take</source>
        <translation>Aufnahme wählen</translation>
    </message>
    <message>
        <source>Click one in the list to see and hear it.</source>
        <translation>Klicken Sie eine in der Liste an, um sie zu sehen und zu hören.</translation>
    </message>
    <message>
        <source>Record your first take</source>
        <translation>Erste Aufnahme machen</translation>
    </message>
    <message>
        <source>Press “Record voice-over” and speak, or “Record webcam” and show yourself. The take appears in the list and on the timeline.</source>
        <translation>Wählen Sie „Sprachaufnahme“ und sprechen Sie, oder „Webcam aufnehmen“ und zeigen Sie sich. Die Aufnahme erscheint in der Liste und auf der Zeitleiste.</translation>
    </message>
</context>
<context>
    <name>StudioHeader</name>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>Use the light skin</source>
        <translation>Helle Darstellung verwenden</translation>
    </message>
    <message>
        <source>Use the dark skin</source>
        <translation>Dunkle Darstellung verwenden</translation>
    </message>
    <message>
        <source>Devices and settings</source>
        <translation>Geräte und Einstellungen</translation>
    </message>
    <message>
        <source>Devices</source>
        <translation>Geräte</translation>
    </message>
    <message>
        <source>Audio settings</source>
        <translation>Audio-Einstellungen</translation>
    </message>
    <message>
        <source>Video settings</source>
        <translation>Video-Einstellungen</translation>
    </message>
</context>
<context>
    <name>StudioMediaProbe</name>
    <message>
        <source>Its length is unknown.</source>
        <translation>Ihre Länge ist unbekannt.</translation>
    </message>
    <message>
        <source>The media framework cannot look into files.</source>
        <translation>Das Medien-Framework kann keine Dateien untersuchen.</translation>
    </message>
    <message>
        <source>There is no such file.</source>
        <translation>Diese Datei gibt es nicht.</translation>
    </message>
    <message>
        <source>It may not be read.</source>
        <translation>Sie darf nicht gelesen werden.</translation>
    </message>
    <message>
        <source>It is empty.</source>
        <translation>Sie ist leer.</translation>
    </message>
    <message>
        <source>The media framework cannot be started.</source>
        <translation>Das Medien-Framework lässt sich nicht starten.</translation>
    </message>
    <message>
        <source>There is neither sound nor a moving picture in it.</source>
        <translation>Sie enthält weder Ton noch ein bewegtes Bild.</translation>
    </message>
    <message>
        <source>It is neither sound nor a clip.</source>
        <translation>Sie ist weder eine Tondatei noch ein Clip.</translation>
    </message>
</context>
<context>
    <name>StudioPlayer</name>
    <message>
        <source>The sound output cannot be opened.</source>
        <translation>Die Tonausgabe lässt sich nicht öffnen.</translation>
    </message>
    <message>
        <source>The media framework cannot be started.</source>
        <translation>Das Medien-Framework lässt sich nicht starten.</translation>
    </message>
    <message>
        <source>Nothing can be played: the element &quot;%1&quot; is missing.</source>
        <translation>Es kann nichts abgespielt werden: Das Element „%1“ fehlt.</translation>
    </message>
</context>
<context>
    <name>StudioRecoveryBar</name>
    <message>
        <source>Repair</source>
        <translation>Reparieren</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>An unfinished recording was found</source>
        <translation>Eine unvollendete Aufnahme wurde gefunden</translation>
    </message>
    <message numerus="yes">
        <source>%n unfinished recordings were found</source>
        <translation>
            <numerusform>%n unvollendete Aufnahme wurde gefunden</numerusform>
            <numerusform>%n unvollendete Aufnahmen wurden gefunden</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, begun %2. It can be repaired and added to the takes.</source>
        <translation>%1, begonnen %2. Sie kann repariert und zu den Aufnahmen hinzugefügt werden.</translation>
    </message>
    <message>
        <source>%1 could not be dealt with. %2</source>
        <translation>%1 konnte nicht bearbeitet werden. %2</translation>
    </message>
    <message>
        <source>Discarding deletes what was recorded. Are you sure?</source>
        <translation>Verwerfen löscht das Aufgenommene. Sind Sie sicher?</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>The unfinished recording stays as it is and is offered again at the next start.</source>
        <translation>Die unvollendete Aufnahme bleibt, wie sie ist, und wird beim nächsten Start wieder angeboten.</translation>
    </message>
    <message>
        <source>%1 was repaired.</source>
        <translation>%1 wurde repariert.</translation>
    </message>
    <message>
        <source>Nothing had been recorded in %1 yet.</source>
        <translation>In %1 war noch nichts aufgenommen.</translation>
    </message>
    <message>
        <source>It could not be deleted.</source>
        <translation>Sie konnte nicht gelöscht werden.</translation>
    </message>
    <message>
        <source>%1 was discarded.</source>
        <translation>%1 wurde verworfen.</translation>
    </message>
    <message>
        <source>Its folder is not writable, or another program is working on it.</source>
        <translation>Ihr Ordner ist schreibgeschützt, oder ein anderes Programm arbeitet daran.</translation>
    </message>
    <message>
        <source>It is not unfinished any more.</source>
        <translation>Sie ist nicht mehr unvollendet.</translation>
    </message>
    <message>
        <source>The file cannot be opened.</source>
        <translation>Die Datei lässt sich nicht öffnen.</translation>
    </message>
    <message>
        <source>The file was not written by this program.</source>
        <translation>Die Datei stammt nicht von diesem Programm.</translation>
    </message>
    <message>
        <source>There is not enough space on the disk.</source>
        <translation>Auf dem Datenträger ist nicht genug Platz.</translation>
    </message>
    <message>
        <source>The disk refuses the change.</source>
        <translation>Der Datenträger verweigert die Änderung.</translation>
    </message>
    <message>
        <source>The file is damaged and is left as it is.</source>
        <translation>Die Datei ist beschädigt und bleibt, wie sie ist.</translation>
    </message>
    <message>
        <source>It is empty and cannot be removed.</source>
        <translation>Sie ist leer und lässt sich nicht entfernen.</translation>
    </message>
    <message>
        <source>It was interrupted.</source>
        <translation>Es wurde unterbrochen.</translation>
    </message>
</context>
<context>
    <name>StudioSettingsDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Übernehmen</translation>
    </message>
</context>
<context>
    <name>StudioTakeDetails</name>
    <message>
        <source>What the recorder reported</source>
        <translation>Was der Rekorder gemeldet hat</translation>
    </message>
    <message>
        <source>The file is no longer there. Put it back and the take can be played again.</source>
        <translation>Die Datei ist nicht mehr da. Legen Sie sie zurück, dann kann die Aufnahme wieder abgespielt werden.</translation>
    </message>
    <message>
        <source>The file cannot be read. %1</source>
        <translation>Die Datei kann nicht gelesen werden. %1</translation>
    </message>
    <message>
        <source>Looking into the file…</source>
        <translation>Die Datei wird untersucht …</translation>
    </message>
    <message>
        <source>Nothing: this take was recovered after the recorder had been interrupted.</source>
        <translation>Nichts: Diese Aufnahme wurde wiederhergestellt, nachdem der Rekorder unterbrochen worden war.</translation>
    </message>
    <message>
        <source>Picture of the clip</source>
        <translation>Bild des Clips</translation>
    </message>
</context>
<context>
    <name>StudioTakeLibrary</name>
    <message>
        <source>The takes folder &quot;%1&quot; cannot be made.</source>
        <translation>Der Aufnahmeordner „%1“ lässt sich nicht anlegen.</translation>
    </message>
    <message>
        <source>The list of takes cannot be read; it was put aside as &quot;%1&quot;.</source>
        <translation>Die Liste der Aufnahmen kann nicht gelesen werden; sie wurde als „%1“ beiseitegelegt.</translation>
    </message>
    <message>
        <source>The list of takes cannot be saved in &quot;%1&quot;.</source>
        <translation>Die Liste der Aufnahmen kann nicht in „%1“ gespeichert werden.</translation>
    </message>
</context>
<context>
    <name>StudioTakeModel</name>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>The file is missing</source>
        <translation>Die Datei fehlt</translation>
    </message>
    <message>
        <source>The file cannot be read</source>
        <translation>Die Datei ist nicht lesbar</translation>
    </message>
</context>
<context>
    <name>StudioTakePane</name>
    <message>
        <source>Takes</source>
        <translation>Aufnahmen</translation>
    </message>
    <message>
        <source>Record voice-over</source>
        <translation>Sprachaufnahme</translation>
    </message>
    <message>
        <source>Remove from list</source>
        <translation>Aus der Liste nehmen</translation>
    </message>
    <message>
        <source>Takes that you record are listed here.</source>
        <translation>Hier stehen Ihre Aufnahmen.</translation>
    </message>
    <message>
        <source>Record webcam</source>
        <translation>Webcam aufnehmen</translation>
    </message>
</context>
<context>
    <name>StudioTimeline</name>
    <message>
        <source>Timeline</source>
        <translation>Zeitleiste</translation>
    </message>
    <message>
        <source>Takes line up here</source>
        <translation>Hier reihen sich die Aufnahmen aneinander</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Aufnahme läuft</translation>
    </message>
</context>
<context>
    <name>StudioTransport</name>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Muted by the recorder</source>
        <translation>Vom Rekorder stummgeschaltet</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
</context>
<context>
    <name>StudioUsageView</name>
    <message>
        <source>Usage events</source>
        <translation>Nutzungsereignisse</translation>
    </message>
    <message>
        <source>What is used in the recorder appears here. It stays on this machine.</source>
        <translation>Hier erscheint, was im Rekorder benutzt wird. Es bleibt auf diesem Rechner.</translation>
    </message>
</context>
<context>
    <name>StudioVideoSettingsDialog</name>
    <message>
        <source>Video settings</source>
        <translation>Video-Einstellungen</translation>
    </message>
</context>
<context>
    <name>StudioWaveformView</name>
    <message>
        <source>Waveform</source>
        <translation>Wellenform</translation>
    </message>
</context>
<context>
    <name>StudioWindow</name>
    <message>
        <source>%1 was added.</source>
        <translation>%1 wurde hinzugefügt.</translation>
    </message>
    <message>
        <source>The recording was not kept; there is nothing to add.</source>
        <translation>Die Aufnahme wurde nicht behalten; es gibt nichts hinzuzufügen.</translation>
    </message>
    <message>
        <source>%1 was not added. %2</source>
        <translation>%1 wurde nicht hinzugefügt. %2</translation>
    </message>
    <message>
        <source>The recording could not begin.</source>
        <translation>Die Aufnahme konnte nicht beginnen.</translation>
    </message>
    <message>
        <source>Playing is not possible. %1</source>
        <translation>Abspielen ist nicht möglich. %1</translation>
    </message>
    <message>
        <source>Takes are kept in %1</source>
        <translation>Aufnahmen liegen in %1</translation>
    </message>
    <message>
        <source>%1 frames per second</source>
        <translation>%1 Bilder pro Sekunde</translation>
    </message>
    <message>
        <source>Recording…</source>
        <translation>Aufnahme läuft …</translation>
    </message>
    <message>
        <source>Take</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>Usage events</source>
        <translation>Nutzungsereignisse</translation>
    </message>
    <message>
        <source>The recorder is at work</source>
        <translation>Der Rekorder arbeitet</translation>
    </message>
    <message>
        <source>The project is locked until the take is over.</source>
        <translation>Das Projekt ist gesperrt, bis die Aufnahme vorbei ist.</translation>
    </message>
</context>
</TS>
