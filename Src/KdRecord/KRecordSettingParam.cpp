#include <KdRecord/KRecordSettingParam.h>

#include <KCore/KCoreDirs.h>
#include <KdCore/KdBaseLog.h>
#include <KdCore/KdDomDocument.h>
#include <KdCore/KdSafeFile.h>
#include <KdCore/KdXmlScan.h>

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <QVariant>

namespace {

QString settingsPath()
{
    return getZentraDocumentDir() + QStringLiteral("/Settingdatas.xml");
}

QString documentTag()
{
    return QStringLiteral("SettingDatas");
}

void logSaving(const char* message)
{
    KdBaseLog::write(KdBaseLog::Info,
                     {"Src/KdRecord/KRecordSettingParam", "KRecordSettingParam::saveXml"}, "%s",
                     message);
}

/** An empty document when the file cannot be read or its content must not be given to the DOM. */
QDomDocument readDocument(const QString& path)
{
    QDomDocument document;
    const std::optional<QByteArray> content = KdSafeFile::read(path, KdXmlScan::kMaxBytes);
    const QString text = content ? QString::fromUtf8(*content) : QString();
    if (KdXmlScan::isAcceptable(text)) {
        document.setContent(text);
    }
    return document;
}

QDomElement appendElement(QDomDocument& document, QDomElement parent, const QString& tag)
{
    QDomElement element = document.createElement(tag);
    parent.appendChild(element);
    return element;
}

/** The first element of that name anywhere beneath parent, made as its last child where there is
 * none. */
QDomElement elementBeneath(QDomDocument& document, const QDomElement& parent, const QString& tag)
{
    const QDomElement found = KdDomDocument::getElementByTagName(parent, tag);
    return found.isNull() ? appendElement(document, parent, tag) : found;
}

void setValue(QDomDocument& document, const QDomElement& parent, const QString& tag,
              const QVariant& value)
{
    QDomElement element = elementBeneath(document, parent, tag);
    while (element.hasChildNodes()) {
        element.removeChild(element.firstChild());
    }
    // A device may have any name; one with control characters would make the whole file unreadable.
    const QString text = KdXmlScan::withoutForbiddenCharacters(value.toString());
    element.appendChild(document.createTextNode(text));
}

} // namespace

KRecordSettingParam::KRecordSettingParam()
    : m_sRecorderRoot(QStringLiteral("RecorderData"))
    , m_sCameraGroup(QStringLiteral("Camera"))
    , m_sCountdown(QStringLiteral("RecordScreenCountdown"))
    , m_sCameraDevice(QStringLiteral("m_sSelectedCameraDeviceName"))
    , m_sCameraWidth(QStringLiteral("CameraResoulutionW"))
    , m_sCameraHeight(QStringLiteral("CameraResoulutionH"))
    , m_sAudioGroup(QStringLiteral("Audio"))
    , m_sAudioDevice(QStringLiteral("m_sSelectedAudioDeviceName"))
    , m_sDesktop(QStringLiteral("Destop"))
    , m_sFrameRate(QStringLiteral("FrameRate"))
    , m_sAudioInput(QStringLiteral("AudioInput"))
    , m_sAudioSavePath(QStringLiteral("AudioSavePath"))
    , m_sAudioMuteProject(QStringLiteral("AudioMuteProject"))
    , m_sRecordPreview(QStringLiteral("WebRecordRecordPreview"))
    , m_sFilePath(settingsPath())
{
    m_lastModified = QFileInfo(m_sFilePath).lastModified();
    loadFromFile();
}

KRecordSettingParam::~KRecordSettingParam() = default;

KRecordSettingData KRecordSettingParam::data()
{
    Q_ASSERT(QThread::currentThread() == thread());
    const QDateTime modified = QFileInfo(m_sFilePath).lastModified();
    if (modified != m_lastModified) {
        m_lastModified = modified;
        loadFromFile();
    }
    return m_values;
}

void KRecordSettingParam::setData(const KRecordSettingData& settings)
{
    Q_ASSERT(QThread::currentThread() == thread());
    if (!settings.selectedAudioDeviceName.isEmpty()) {
        m_values.selectedAudioDeviceName = settings.selectedAudioDeviceName;
    }
    if (!settings.selectedCameraDeviceName.isEmpty()) {
        m_values.selectedCameraDeviceName = settings.selectedCameraDeviceName;
    }
    if (settings.cameraWidth > 0) {
        m_values.cameraWidth = settings.cameraWidth;
    }
    if (settings.cameraHeight > 0) {
        m_values.cameraHeight = settings.cameraHeight;
    }
    if (settings.frameRate > 0.0) {
        m_values.frameRate = settings.frameRate;
    }
    if (settings.countdown >= 0) {
        m_values.countdown = settings.countdown;
    }
    m_values.recordPreview = settings.recordPreview;
    saveXml();
}

void KRecordSettingParam::loadFromFile()
{
    const QDomDocument document = readDocument(m_sFilePath);
    const QDomElement recorder = document.documentElement().firstChildElement(m_sRecorderRoot);
    const auto find = &KdDomDocument::getElementByTagName;

    const QDomElement countdown = find(recorder, m_sCountdown);
    if (!countdown.isNull()) {
        m_values.countdown = countdown.text().toInt();
    }
    loadCamera(find(recorder, m_sCameraGroup));
    const QDomElement microphone = find(find(recorder, m_sAudioGroup), m_sAudioDevice);
    if (!microphone.isNull()) {
        m_values.selectedAudioDeviceName = microphone.text();
    }
    const QDomElement preview = find(recorder, m_sRecordPreview);
    if (!preview.isNull()) {
        m_values.recordPreview = preview.text() == QLatin1String("true");
    }
}

void KRecordSettingParam::loadCamera(const QDomElement& camera)
{
    const auto find = &KdDomDocument::getElementByTagName;
    const QDomElement width = find(camera, m_sCameraWidth);
    const QDomElement height = find(camera, m_sCameraHeight);
    if (!width.isNull() && !height.isNull()) {
        m_values.cameraWidth = width.text().toInt();
        m_values.cameraHeight = height.text().toInt();
    }
    const QDomElement device = find(camera, m_sCameraDevice);
    if (!device.isNull()) {
        m_values.selectedCameraDeviceName = device.text();
        // A frame rate belongs to a camera: without the name it does not count, with the name it
        // does even when the file has none, which is 0.
        m_values.frameRate = find(camera, m_sFrameRate).text().toDouble();
    }
}

void KRecordSettingParam::saveXml()
{
    Q_ASSERT(QThread::currentThread() == thread());
    const QString path = QDir::fromNativeSeparators(settingsPath());
    QDomDocument document;
    if (!openForSaving(document, path)) {
        logSaving("SettingDatas Error");
        return;
    }
    const QDomElement root = document.documentElement();
    QDomElement recorder = root.firstChildElement(m_sRecorderRoot);
    if (recorder.isNull()) {
        recorder = appendElement(document, root, m_sRecorderRoot);
    }
    setValue(document, recorder, m_sCountdown, m_values.countdown);
    saveCamera(document, elementBeneath(document, recorder, m_sCameraGroup));
    const QDomElement audio = elementBeneath(document, recorder, m_sAudioGroup);
    if (!m_values.selectedAudioDeviceName.isEmpty()) {
        setValue(document, audio, m_sAudioDevice, m_values.selectedAudioDeviceName);
    }
    setValue(document, recorder, m_sRecordPreview, m_values.recordPreview);
    KdDomDocument::saveXmlContent2File(document, path);
}

bool KRecordSettingParam::openForSaving(QDomDocument& document, const QString& path) const
{
    if (QFile::exists(path)) {
        if (KdDomDocument::openXmlFile(document, path, QIODevice::ReadWrite)) {
            return true;
        }
        QFile::remove(path);
        logSaving("SettingDatas remove filepath");
    }
    KdDomDocument::createXmlFile(path, documentTag());
    return KdDomDocument::openXmlFile(document, path, QIODevice::ReadWrite);
}

void KRecordSettingParam::saveCamera(QDomDocument& document, const QDomElement& camera) const
{
    if (!m_values.selectedCameraDeviceName.isEmpty()) {
        setValue(document, camera, m_sCameraDevice, m_values.selectedCameraDeviceName);
    }
    if (m_values.cameraWidth >= 1 && m_values.cameraHeight >= 1) {
        setValue(document, camera, m_sCameraWidth, m_values.cameraWidth);
        setValue(document, camera, m_sCameraHeight, m_values.cameraHeight);
    }
    if (m_values.frameRate > 0.0) {
        setValue(document, camera, m_sFrameRate, m_values.frameRate);
    }
}
