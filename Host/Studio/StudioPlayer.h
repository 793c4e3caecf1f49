#pragma once

#include <KdWidgets/KdLiveText.h>

#include <QImage>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>

/**
 * Plays one file at a time: its sound, and its moving picture when it has one. GUI thread; no call
 * blocks on the sound server.
 */
class StudioPlayer : public QObject
{
    Q_OBJECT

public:
    enum class State
    {
        Stopped,
        Playing,
        Paused
    };

    /** @param sinkName the GStreamer element that takes the sound; the system's own choice by
     * default */
    explicit StudioPlayer(QObject* parent = nullptr, const QString& sinkName = QString());
    ~StudioPlayer() override;

    /** Another file; what plays ends. Empty: none. */
    void setFile(const QString& path);
    QString file() const { return m_file; }
    State state() const { return m_state; }
    bool isMuted() const { return m_muted; }
    /** Of the file that plays, 0 while unknown. */
    qint64 positionMs() const;

public Q_SLOTS:
    /** From the beginning, or on from the pause. Without effect when there is no file. */
    void play();
    void pause();
    void stop();
    /** While stopped, the place where play() begins. Clamped at 0. */
    void seek(qint64 milliseconds);
    /** Holds for everything that is played until it is taken back. */
    void setMuted(bool muted);

Q_SIGNALS:
    void stateChanged(StudioPlayer::State state);
    /** Many times a second while playing; also after seek() and stop(). */
    void positionChanged(qint64 milliseconds);
    void mutedChanged(bool muted);
    /** The picture that is to be seen now; null when playing ended. */
    void pictureChanged(const QImage& picture);
    /** Playing ended because of this. */
    void failed(const KdLiveText& text);

private:
    class Pipeline;

    bool ensurePipeline();
    void setState(State state);
    void poll();
    void pollPicture();
    void fail(const KdLiveText& text);

    QString m_sinkName;
    QString m_file;
    State m_state = State::Stopped;
    bool m_muted = false;
    qint64 m_startAt = 0;
    std::unique_ptr<Pipeline> m_pipeline;
    QTimer m_poll;
    QTimer m_picturePoll;
};
