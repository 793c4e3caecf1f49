#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <Support/RecorderEvents.h>

#include <QImage>
#include <QStringList>

/** What a webcam recorder reports, its frames among it. */
class WebcamEvents : public RecorderEvents
{
public:
    void onFrameChangedCallback(int width, int height, uint8_t* pixels) override;

    int frameCount() const;
    /** The latest, a copy; null before the first. */
    QImage lastFrame() const;
    QSize lastSize() const { return lastFrame().size(); }
    void clearFrames();
    /** Makes every frame callback take this long. */
    void setSlowness(int msec) { m_slownessMs = msec; }

private:
    mutable std::mutex m_mutex;
    QImage m_lastFrame;
    int m_frameCount = 0;
    std::atomic<int> m_slownessMs{0};
};

/** A real webcam recorder as its adapter has it: observed, with all its callbacks on. */
class WebcamFixture
{
public:
    WebcamFixture();
    /** Removes the observer and releases the recorder. */
    ~WebcamFixture();

    KdVBLMODEL::IKdWebcamRecorder* operator->() const { return m_recorder; }
    WebcamEvents& events() { return m_events; }

    QStringList deviceNames(KdVBLMODEL::_KdDevType type);
    /** Waits until the device is listed, and sets it as the adapter does. */
    bool choose(KdVBLMODEL::_KdDevType type, const QString& name);
    /** What an adapter does for a resolution: sets it and the first rate of it, and starts the
     * preview twice. @return whether the recorder accepted all of it. */
    bool showAt(QSize size, double frameRate = 0.0);
    /** Waits for a frame of that size that comes after this call. */
    bool showsFrame(QSize size);
    /** Chooses the camera, shows it in that size and waits for its picture. */
    bool open(const QString& name, QSize size = QSize(640, 480));

    /** Sets what a take needs, and starts it. */
    bool record(const QString& path, bool withSound = false);
    bool waitForTime(qint64 msec);
    /** Waits until that status was reported. */
    bool hears(int deviceStatus);
    int countOf(int deviceStatus) const;

private:
    Q_DISABLE_COPY(WebcamFixture)

    KdVBLMODEL::IKdWebcamRecorder* m_recorder;
    WebcamEvents m_events;
};
