#pragma once

#include <QProcess>
#include <QString>

/**
 * A microphone that exists only in the sound server of the test's private session. It can be
 * plugged and unplugged, and hears what play() plays into it. Needs a test of label engine or e2e.
 *
 * Every operation waits until the sound server has done it, and answers false when it does not
 * within some seconds.
 */
class VirtualMicrophone
{
public:
    /** Not plugged yet. @param nodeName its identity, letters, digits, '_' @param description the
     * name that people see */
    explicit VirtualMicrophone(const QString& nodeName = QStringLiteral("usb_mic"),
                               const QString& description = QStringLiteral("USB Microphone"));
    /** Unplugs it. */
    ~VirtualMicrophone();

    bool plug();
    bool unplug();
    bool isPlugged() const;

    QString nodeName() const { return m_nodeName; }
    QString description() const { return m_description; }

    /** Plays a file into it, from its beginning, on both channels. Ends what played before. */
    bool play(const QString& soundFile);
    /** Lets it hear a stream that plays already, or another microphone, as well. @param node its
     * name */
    bool hear(const QString& node);
    void stopPlaying();
    bool isPlaying() const { return m_player.state() == QProcess::Running; }

    /** An output, whose monitor must not pass for a microphone. */
    static bool createOutput(const QString& nodeName, const QString& description);
    static bool destroyNode(const QString& nodeName);

private:
    Q_DISABLE_COPY(VirtualMicrophone)

    bool link(const QString& feeder);

    QString m_nodeName;
    QString m_description;
    QProcess m_player;
    int m_playCount = 0;
};

/** Sounds to play into a microphone, made by ffmpeg and espeak-ng as 48 kHz stereo WAV files. */
namespace TestSound {

/** A sine. @param decibel its peak below full scale @return whether the file was made */
bool writeTone(const QString& path, double frequency, double decibel, double seconds);

/** A sine whose frequency rises evenly, so that every instant can be told from its pitch. */
bool writeSweep(const QString& path, double fromFrequency, double toFrequency, double seconds);

/** Speech, repeated until it is at least this long. */
bool writeSpeech(const QString& path, const QString& text, double seconds);

} // namespace TestSound
