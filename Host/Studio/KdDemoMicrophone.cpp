#include <Studio/KdDemoMicrophone.h>

#include <KdCore/KdBaseLog.h>
#include <Studio/StudioPipeWire.h>
#include <Studio/StudioSoundCheck.h>
#include <Studio/StudioSpeech.h>
#include <Studio/StudioTools.h>

namespace {

constexpr int kCommandTimeoutMs = 3000;
constexpr int kDeviceTimeoutMs = 5000;
constexpr int kLinkTimeoutMs = 5000;
constexpr int kSoundTimeoutMs = 6000;
constexpr int kRelinkMs = 50;

QString voiceName()
{
    return QStringLiteral("kdrecord_demo_voice");
}

QByteArray createNodeCommand()
{
    return QStringLiteral("create-node adapter { factory.name=support.null-audio-sink node.name=%1 "
                          "node.description=\"%2\" media.class=Audio/Source/Virtual "
                          "audio.position=[ FL FR ] }\n")
        .arg(KdDemoMicrophone::nodeName(), KdDemoMicrophone::displayName())
        .toUtf8();
}

} // namespace

KdDemoMicrophone::KdDemoMicrophone(QObject* parent) : QObject(parent)
{
    m_relink.setInterval(kRelinkMs);
    connect(&m_relink, &QTimer::timeout, this, [this] {
        if (link()) {
            m_relink.stop();
        }
    });
}

KdDemoMicrophone::~KdDemoMicrophone()
{
    if (m_voice) {
        m_voice->disconnect(this);
    }
}

QString KdDemoMicrophone::nodeName()
{
    return QStringLiteral("kdrecord_demo_microphone");
}

QString KdDemoMicrophone::displayName()
{
    return QStringLiteral("Demo Microphone");
}

bool KdDemoMicrophone::isMicrophoneThere()
{
    return StudioPipeWire::hasMicrophone(StudioTools::pipeWireDump());
}

QString KdDemoMicrophone::start()
{
    using Step = QString (KdDemoMicrophone::*)();
    for (const Step step :
         {&KdDemoMicrophone::checkTools, &KdDemoMicrophone::makeDevice, &KdDemoMicrophone::speak}) {
        QString error = (this->*step)();
        if (!error.isEmpty()) {
            return error;
        }
    }
    const QString silence = StudioSoundCheck::listen(nodeName(), kSoundTimeoutMs);
    return silence.isEmpty()
               ? QString()
               : QStringLiteral("The demonstration microphone does not work. %1").arg(silence);
}

QString KdDemoMicrophone::checkTools()
{
    return StudioTools::whatIsMissing({QStringLiteral("pw-cli"), QStringLiteral("pw-dump"),
                                       QStringLiteral("pw-link"), QStringLiteral("pw-play")},
                                      QStringLiteral("pipewire-bin"));
}

QString KdDemoMicrophone::makeDevice()
{
    m_device = std::make_unique<StudioTools::BoundProcess>();
    // The device lives as long as the tool, and the tool as long as it may expect further commands.
    m_device->setStandardOutputFile(QProcess::nullDevice());
    m_device->start(QStringLiteral("pw-cli"), QStringList());
    m_device->write(createNodeCommand());
    if (!m_device->waitForBytesWritten(kCommandTimeoutMs)) {
        return QStringLiteral(
            "The demonstration microphone could not be made: pw-cli does not start.");
    }
    const bool made = StudioTools::until(kDeviceTimeoutMs, [this] {
        return m_device->state() == QProcess::NotRunning ||
               StudioPipeWire::hasNode(StudioTools::pipeWireDump(), nodeName());
    });
    if (!made || m_device->state() == QProcess::NotRunning) {
        return QStringLiteral(
            "The demonstration microphone could not be made: no PipeWire server answers.");
    }
    return {};
}

QString KdDemoMicrophone::speak()
{
    m_folder = std::make_unique<QTemporaryDir>();
    const QString file = m_folder->filePath(QStringLiteral("speech.wav"));
    if (!m_folder->isValid() || !StudioSpeech::write(file)) {
        return QStringLiteral(
            "The demonstration's speech could not be written to a temporary folder.");
    }
    m_voice = std::make_unique<StudioTools::BoundProcess>();
    m_voice->setProgram(QStringLiteral("pw-play"));
    m_voice->setArguments(
        {QStringLiteral("-P"),
         QStringLiteral("{ node.name=%1 node.autoconnect=false }").arg(voiceName()), file});
    m_voice->start();
    if (!StudioTools::until(kLinkTimeoutMs, [this] { return link(); })) {
        return QStringLiteral(
            "The demonstration's speech could not be connected to its microphone.");
    }
    connect(m_voice.get(), QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &KdDemoMicrophone::speakAgain);
    return {};
}

bool KdDemoMicrophone::link()
{
    bool linked = true;
    for (const char* channel : {"FL", "FR"}) {
        const QString input =
            QStringLiteral("%1:input_%2").arg(nodeName(), QString::fromLatin1(channel));
        const StudioTools::Result result = StudioTools::run(
            QStringLiteral("pw-link"), {voiceName() + QStringLiteral(":output_MONO"), input});
        linked = linked && (result.done || result.errors.contains("File exists"));
    }
    return linked;
}

void KdDemoMicrophone::speakAgain()
{
    KdBaseLog::write(KdBaseLog::Debug,
                     {"Host/Studio/KdDemoMicrophone", "KdDemoMicrophone::speakAgain"},
                     "The demonstration's speech begins again");
    m_voice->start();
    m_relink.start();
}
