#pragma once

#include <KdVBLModel/KdGst.h>
#include <KdVBLModel/KdWebcamTake.h>

#include <QVector>

#include <functional>

/**
 * A camera and a microphone for a take that is tested without devices: they flash and beep in step,
 * on a clock of their own that runs as fast as the take can follow.
 */
class ClipFeeder
{
public:
    ClipFeeder(KdWebcamTake& take, const KdWebcamTakeFormat& format);

    /** Lets seconds pass, in which sound and pictures come. */
    void run(double seconds);

    /** Sound from now on comes at once when so much time has passed, as when a machine did
     * something else meanwhile. */
    void holdSoundUp(qint64 ns) { m_heldUpUntilNs = m_nowNs + ns; }

    double second() const { return static_cast<double>(m_nowNs - m_beginNs) * 1e-9; }
    qint64 nowNs() const { return m_nowNs; }

    // To be changed at any time.
    bool hasSound;                   ///< whether the microphone gives any
    bool hasPictures = true;         ///< whether the camera does
    double cameraRate;               ///< pictures per second
    double soundRate = 48000;        ///< frames in a second of the pictures' clock
    qint64 cameraDelayNs = 40000000; ///< from a picture's capture to its arrival
    qint64 jitterNs = 0;             ///< by how much the time of a picture may be wrong

    QVector<qint64> times; ///< that the feeds gave
    int picturesGiven = 0;

private:
    void giveSound();
    void givePicture();
    void wait() const;

    KdWebcamTake& m_take;
    QSize m_size;
    qint64 m_beginNs = 5000000000;
    qint64 m_nowNs = m_beginNs;
    double m_soundNs; ///< when the next block is complete
    qint64 m_heldUpUntilNs = 0;
    double m_pictureNs; ///< when the next picture is taken
    unsigned m_random = 1;
    KdGstBufferPtr m_bright;
    KdGstBufferPtr m_dark;
};

/** Pictures for tests, in I420. */
namespace TestPicture {

/** One colour all over. */
KdGstBufferPtr plain(QSize size, int y, int u = 128, int v = 128);
/** Every pixel as the function says, its colour by that of the first of four. */
KdGstBufferPtr painted(QSize size, const std::function<int(int plane, int x, int y)>& value);

} // namespace TestPicture
