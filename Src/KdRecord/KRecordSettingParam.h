#pragma once

#include <KdRecord/KRecordSettingData.h>

#include <KdCore/KdLazySingleton.h>

#include <QDateTime>
#include <QObject>

class QDomDocument;
class QDomElement;

/**
 * Keeps the recorder choices in "Settingdatas.xml" in the host's document folder. Made on first
 * use, released by the host's singleton manager. Only making and releasing it is thread-safe;
 * everything else belongs to the GUI thread.
 *
 * Nothing is ever shown to the user. A file that is missing or no usable XML leaves the values as
 * they are; on saving such a file is replaced. What a file does not mention keeps its value in
 * memory.
 */
class KRecordSettingParam final : public QObject, public KdLazySingleton<KRecordSettingParam>
{
    Q_OBJECT

public:
    /** @return the current values, read again first when the file's time stamp is another than at
     * the last reading. */
    KRecordSettingData data();

    /**
     * Takes over what is set in settings and saves: names that are not empty, sizes and a frame
     * rate above 0, a countdown of 0 or more, and recordPreview always. To leave a value alone pass
     * an empty name or -1.
     */
    void setData(const KRecordSettingData& settings);

    /**
     * Writes the current values. Values that are not set are left out, and what an earlier save
     * wrote for them stays. When the file cannot be written the old one stays, or none when it was
     * not usable, and a line is logged.
     */
    void saveXml();

private:
    friend class KdLazySingleton<KRecordSettingParam>;
    KRecordSettingParam();
    ~KRecordSettingParam() override;

    void loadFromFile();
    void loadCamera(const QDomElement& camera);
    bool openForSaving(QDomDocument& document, const QString& path) const;
    void saveCamera(QDomDocument& document, const QDomElement& camera) const;

    // The element names of the file, misspellings included: files out in the field have them.
    const QString m_sRecorderRoot;
    const QString m_sCameraGroup;
    const QString m_sCountdown;
    const QString m_sCameraDevice;
    const QString m_sCameraWidth;
    const QString m_sCameraHeight;
    const QString m_sAudioGroup;
    const QString m_sAudioDevice;
    const QString m_sDesktop; // this one and the others below without a use are reserved
    const QString m_sFrameRate;
    const QString m_sAudioInput;
    const QString m_sAudioSavePath;
    const QString m_sAudioMuteProject;
    const QString m_sRecordPreview;

    KRecordSettingData m_values;
    QDateTime m_lastModified;
    QString m_sFilePath;
};
