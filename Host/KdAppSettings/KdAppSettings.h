#pragma once

#include <KdAppSettings/KdAppSettingsExport.h>

#include <QString>

#include <memory>

/**
 * General settings. The setters take any value and keep it; only what Load() reads is brought into
 * range. GUI thread.
 */
class KDAPPSETTINGS_EXPORT KGeneralSettings
{
public:
    /**
     * @return whether the project is silent during a voice-over, the switch of its dialog; false at
     * first.
     */
    bool isAudioRecordingCheckMult() const { return m_bAudioRecordingCheckMult; }
    /** @param check whether the project is to be silent during a voice-over. */
    void setIsAudioRecordingCheckMult(bool check) { m_bAudioRecordingCheckMult = check; }
    /** @return the countdown before a voice-over in seconds, 3 at first; 0: none. */
    int GetRecordAudioCountdown() const { return m_nRecordAudioCountdown; }
    /** @param seconds of the countdown before a voice-over; 0 to 9 survive Load(). */
    void SetRecordAudioCountdown(int seconds) { m_nRecordAudioCountdown = seconds; }
    /** @return the countdown before a webcam take in seconds, 3 at first; 0: none. */
    int GetRecordVideoCountdown() const { return m_nRecordVideoCountdown; }
    /** @param seconds of the countdown before a webcam take; 0 to 9 survive Load(). */
    void SetRecordVideoCountdown(int seconds) { m_nRecordVideoCountdown = seconds; }

private:
    bool m_bAudioRecordingCheckMult = false;
    int m_nRecordAudioCountdown = 3;
    int m_nRecordVideoCountdown = 3;
};

/**
 * Where takes go. Whether a folder exists and can be written to is looked at when a take starts,
 * not here. GUI thread.
 */
class KDAPPSETTINGS_EXPORT KFolderSettings
{
public:
    /**
     * @return the folder for voice-overs, never empty: without a choice "Recordings" in the user's
     * music folder.
     */
    QString GetRecorderVoiceFolder() const;
    /** @param path the folder for voice-overs; empty or blank takes the choice back. */
    void SetRecoderVoiceFolder(const QString& path) { m_sRecorderVoiceFolder = path; }
    /**
     * @return the folder for webcam takes, never empty: without a choice "Captures" in the user's
     * video folder.
     */
    QString GetCaptureFileFolder() const;
    /** @param path the folder for webcam takes; empty or blank takes the choice back. */
    void SetCaptureFileFolder(const QString& path) { m_sCaptureFileFolder = path; }

private:
    QString m_sRecorderVoiceFolder;
    QString m_sCaptureFileFolder;
};

/**
 * Advanced settings of voice-overs. The setters take any value and keep it; Load() lets through the
 * values named here alone. GUI thread.
 */
class KDAPPSETTINGS_EXPORT KAudioAdvanceSettings
{
public:
    /**
     * @return the codec's four-character code, first character in the lowest byte; "AAC ", the only
     * one that there is.
     */
    quint32 GetAudioEncode() const { return m_nAudioEncode; }
    /** @param fourcc the codec's four-character code, first character in the lowest byte. */
    void SetAudioEncode(quint32 fourcc) { m_nAudioEncode = fourcc; }
    /** @return the bit rate in kbit/s; 128 at first. */
    int GetBitrate() const { return m_nBitrate; }
    /** @param kbitPerSecond the bit rate; 96 to 512 survive Load(). */
    void SetBitrate(int kbitPerSecond) { m_nBitrate = kbitPerSecond; }
    /** @return 1 mono, 2 stereo; 2 at first. */
    int GetChannels() const { return m_nChannels; }
    /** @param channels 1 mono, 2 stereo. */
    void SetChannels(int channels) { m_nChannels = channels; }
    /** @return 1 VBR, 2 CBR, as KdVBLMODEL::_KdBitrateMode; 1 at first. */
    quint32 GetBitrateMode() const { return m_nBitrateMode; }
    /** @param mode 1 VBR, 2 CBR. */
    void SetBitrateMode(quint32 mode) { m_nBitrateMode = mode; }
    /** @return the sample rate in Hz; 44100 at first. */
    int GetSampleRate() const { return m_nSampleRate; }
    /** @param hertz the sample rate: 22050, 24000, 32000, 44100, 48000 or 96000. */
    void SetSampleRate(int hertz) { m_nSampleRate = hertz; }
    /** @return whether the preview window opens while recording; true at first. */
    bool GetRecordPreview() const { return m_bRecordPreview; }
    /** @param on whether the preview window opens while recording. */
    void SetRecordPreview(bool on) { m_bRecordPreview = on; }

private:
    quint32 m_nAudioEncode = 0x20434141;
    int m_nBitrate = 128;
    int m_nChannels = 2;
    quint32 m_nBitrateMode = 1;
    int m_nSampleRate = 44100;
    bool m_bRecordPreview = true;
};

/**
 * All settings objects of the host. What it hands out is never null, not the caller's, and lives as
 * long as KdAppSettings, at the same place. GUI thread.
 */
class KDAPPSETTINGS_EXPORT KSettings
{
public:
    /** @return the general settings. */
    KGeneralSettings* GetGeneralSettings() { return &m_general; }
    /** @return where takes go. */
    KFolderSettings* GetFolderSettings() { return &m_folders; }
    /** @return the advanced settings of voice-overs. */
    KAudioAdvanceSettings* GetAudioAdvanceSettings() { return &m_audioAdvance; }

private:
    KGeneralSettings m_general;
    KFolderSettings m_folders;
    KAudioAdvanceSettings m_audioAdvance;
};

/**
 * The host's settings store: one XML file, "HostSettings.xml" in the document folder. A changed
 * value is on disk after Save() and not before. GUI thread.
 */
class KDAPPSETTINGS_EXPORT KdAppSettings
{
public:
    /**
     * @return the store, made and loaded from the file on first use; never null, lives until the
     * process ends.
     */
    static KdAppSettings* GetInstance();

    /** @return the settings; never null, not the caller's. */
    KSettings* GetSettings();
    /**
     * Writes the file of the current document folder; the old one stays when that fails.
     * @return success; a failure is logged.
     */
    bool Save();
    /**
     * Returns every value to its default, then reads the file of the current document folder. The
     * objects stay where they are. A count beyond its range becomes the nearest end of the range;
     * other bad values and bad files count as absent, a bad file with a warning in the log.
     */
    void Load();

private:
    KdAppSettings();
    ~KdAppSettings();
    class Private;
    std::unique_ptr<Private> d;
};
