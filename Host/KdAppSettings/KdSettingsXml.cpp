#include "KdSettingsXml.h"

#include <KdCore/KdXmlScan.h>

#include <QVariant>

#include <algorithm>
#include <initializer_list>
#include <optional>

namespace {

constexpr int kMinBitrate = 96;
constexpr int kMaxBitrate = 512;
constexpr int kMaxCountdown = 9;
constexpr quint32 kAac = 0x20434141;

QDomElement child(const QDomElement& parent, const char* tag)
{
    return parent.firstChildElement(QLatin1String(tag));
}

std::optional<int> readInt(const QDomElement& group, const char* tag)
{
    bool isNumber = false;
    const int value = child(group, tag).text().trimmed().toInt(&isNumber);
    return isNumber ? std::optional<int>(value) : std::nullopt;
}

std::optional<int> readOneOf(const QDomElement& group, const char* tag,
                             std::initializer_list<int> choices)
{
    const std::optional<int> value = readInt(group, tag);
    const bool isKnown =
        value && std::find(choices.begin(), choices.end(), *value) != choices.end();
    return isKnown ? value : std::nullopt;
}

std::optional<bool> readBool(const QDomElement& group, const char* tag)
{
    const QString text = child(group, tag).text().trimmed();
    if (text == QLatin1String("true")) {
        return true;
    }
    return text == QLatin1String("false") ? std::optional<bool>(false) : std::nullopt;
}

void readGeneral(const QDomElement& group, KGeneralSettings& settings)
{
    if (const auto check = readBool(group, "AudioRecordingCheckMult")) {
        settings.setIsAudioRecordingCheckMult(*check);
    }
    if (const auto seconds = readInt(group, "RecordAudioCountdown")) {
        settings.SetRecordAudioCountdown(std::clamp(*seconds, 0, kMaxCountdown));
    }
    if (const auto seconds = readInt(group, "RecordVideoCountdown")) {
        settings.SetRecordVideoCountdown(std::clamp(*seconds, 0, kMaxCountdown));
    }
}

void readFolders(const QDomElement& group, KFolderSettings& settings)
{
    settings.SetRecoderVoiceFolder(child(group, "RecorderVoiceFolder").text());
    settings.SetCaptureFileFolder(child(group, "CaptureFileFolder").text());
}

void readAudioAdvance(const QDomElement& group, KAudioAdvanceSettings& settings)
{
    if (const auto encoder = readOneOf(group, "AudioEncode", {static_cast<int>(kAac)})) {
        settings.SetAudioEncode(static_cast<quint32>(*encoder));
    }
    if (const auto bitrate = readInt(group, "Bitrate")) {
        settings.SetBitrate(std::clamp(*bitrate, kMinBitrate, kMaxBitrate));
    }
    if (const auto channels = readOneOf(group, "Channels", {1, 2})) {
        settings.SetChannels(*channels);
    }
    if (const auto mode = readOneOf(group, "BitrateMode", {1, 2})) {
        settings.SetBitrateMode(static_cast<quint32>(*mode));
    }
    const auto rates = {22050, 24000, 32000, 44100, 48000, 96000};
    if (const auto rate = readOneOf(group, "SampleRate", rates)) {
        settings.SetSampleRate(*rate);
    }
    if (const auto preview = readBool(group, "RecordPreview")) {
        settings.SetRecordPreview(*preview);
    }
}

QDomElement append(QDomDocument& document, QDomNode parent, const char* tag)
{
    QDomElement element = document.createElement(QLatin1String(tag));
    parent.appendChild(element);
    return element;
}

void appendValue(QDomDocument& document, const QDomNode& parent, const char* tag,
                 const QVariant& value)
{
    const QString text = KdXmlScan::withoutForbiddenCharacters(value.toString());
    append(document, parent, tag).appendChild(document.createTextNode(text));
}

/** Without a choice of the user's nothing is stored, so that a default can still follow the user's
 * own folders. */
void appendFolders(QDomDocument& document, const QDomElement& root, const KFolderSettings& folders)
{
    const KFolderSettings standard;
    const QDomElement group = append(document, root, "Folders");
    if (folders.GetRecorderVoiceFolder() != standard.GetRecorderVoiceFolder()) {
        appendValue(document, group, "RecorderVoiceFolder", folders.GetRecorderVoiceFolder());
    }
    if (folders.GetCaptureFileFolder() != standard.GetCaptureFileFolder()) {
        appendValue(document, group, "CaptureFileFolder", folders.GetCaptureFileFolder());
    }
}

} // namespace

QDomDocument KdSettingsXml::toDocument(KSettings& settings)
{
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("HostSettings"));
    document.appendChild(root);

    const KGeneralSettings& general = *settings.GetGeneralSettings();
    const QDomElement generalGroup = append(document, root, "General");
    appendValue(document, generalGroup, "AudioRecordingCheckMult",
                general.isAudioRecordingCheckMult());
    appendValue(document, generalGroup, "RecordAudioCountdown", general.GetRecordAudioCountdown());
    appendValue(document, generalGroup, "RecordVideoCountdown", general.GetRecordVideoCountdown());

    appendFolders(document, root, *settings.GetFolderSettings());

    const KAudioAdvanceSettings& audio = *settings.GetAudioAdvanceSettings();
    const QDomElement audioGroup = append(document, root, "AudioAdvance");
    appendValue(document, audioGroup, "AudioEncode", audio.GetAudioEncode());
    appendValue(document, audioGroup, "Bitrate", audio.GetBitrate());
    appendValue(document, audioGroup, "Channels", audio.GetChannels());
    appendValue(document, audioGroup, "BitrateMode", audio.GetBitrateMode());
    appendValue(document, audioGroup, "SampleRate", audio.GetSampleRate());
    appendValue(document, audioGroup, "RecordPreview", audio.GetRecordPreview());
    return document;
}

void KdSettingsXml::read(const QDomDocument& document, KSettings& settings)
{
    const QDomElement root = document.documentElement();
    readGeneral(child(root, "General"), *settings.GetGeneralSettings());
    readFolders(child(root, "Folders"), *settings.GetFolderSettings());
    readAudioAdvance(child(root, "AudioAdvance"), *settings.GetAudioAdvanceSettings());
}
