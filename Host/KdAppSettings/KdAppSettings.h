#pragma once

#include <KdAppSettings/KdAppSettingsExport.h>

#include <QString>

#include <memory>

/** General settings. GUI thread. */
class KDAPPSETTINGS_EXPORT KGeneralSettings
{
public:
    bool isAudioRecordingCheckMult() const { return m_bAudioRecordingCheckMult; }
    void setIsAudioRecordingCheckMult(bool check) { m_bAudioRecordingCheckMult = check; }
    /** Countdowns before a take in seconds. */
    int GetRecordAudioCountdown() const { return m_nRecordAudioCountdown; }
    void SetRecordAudioCountdown(int seconds) { m_nRecordAudioCountdown = seconds; }
    int GetRecordVideoCountdown() const { return m_nRecordVideoCountdown; }
    void SetRecordVideoCountdown(int seconds) { m_nRecordVideoCountdown = seconds; }

private:
    bool m_bAudioRecordingCheckMult = false;
    int m_nRecordAudioCountdown = 3;
    int m_nRecordVideoCountdown = 3;
};

/** Where takes go. GUI thread. */
class KDAPPSETTINGS_EXPORT KFolderSettings
{
public:
    /** Never empty: without a choice the user's music folder for recordings. */
    QString GetRecorderVoiceFolder() const;
    void SetRecoderVoiceFolder(const QString& path) { m_sRecorderVoiceFolder = path; }
    /** Never empty: without a choice the user's video folder for captures. */
    QString GetCaptureFileFolder() const;
    void SetCaptureFileFolder(const QString& path) { m_sCaptureFileFolder = path; }

private:
    QString m_sRecorderVoiceFolder;
    QString m_sCaptureFileFolder;
};

/** Advanced audio settings. GUI thread. */
class KDAPPSETTINGS_EXPORT KAudioAdvanceSettings
{
public:
    /** Four-character code, first character in the lowest byte. */
    quint32 GetAudioEncode() const { return m_nAudioEncode; }
    void SetAudioEncode(quint32 fourcc) { m_nAudioEncode = fourcc; }
    /** kbit/s */
    int GetBitrate() const { return m_nBitrate; }
    void SetBitrate(int kbitPerSecond) { m_nBitrate = kbitPerSecond; }
    int GetChannels() const { return m_nChannels; }
    void SetChannels(int channels) { m_nChannels = channels; }
    /** 1 VBR, 2 CBR */
    quint32 GetBitrateMode() const { return m_nBitrateMode; }
    void SetBitrateMode(quint32 mode) { m_nBitrateMode = mode; }
    /** Hz */
    int GetSampleRate() const { return m_nSampleRate; }
    void SetSampleRate(int hertz) { m_nSampleRate = hertz; }
    bool GetRecordPreview() const { return m_bRecordPreview; }
    void SetRecordPreview(bool on) { m_bRecordPreview = on; }

private:
    quint32 m_nAudioEncode = 0x20434141;
    int m_nBitrate = 128;
    int m_nChannels = 2;
    quint32 m_nBitrateMode = 1;
    int m_nSampleRate = 44100;
    bool m_bRecordPreview = true;
};

/** All settings objects of the host; they live as long as KdAppSettings. */
class KDAPPSETTINGS_EXPORT KSettings
{
public:
    KGeneralSettings* GetGeneralSettings() { return &m_general; }
    KFolderSettings* GetFolderSettings() { return &m_folders; }
    KAudioAdvanceSettings* GetAudioAdvanceSettings() { return &m_audioAdvance; }

private:
    KGeneralSettings m_general;
    KFolderSettings m_folders;
    KAudioAdvanceSettings m_audioAdvance;
};

/** The host's settings store: one XML file in the document folder. GUI thread. */
class KDAPPSETTINGS_EXPORT KdAppSettings
{
public:
    /** Made and loaded from the file on first use; never null. */
    static KdAppSettings* GetInstance();

    KSettings* GetSettings();
    /** Writes the file; the old one stays when that fails. @return success; a failure is logged. */
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
