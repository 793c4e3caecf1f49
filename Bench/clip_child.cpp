// Records clips of pictures that are read from a file, and of a made-up sound, in a process of its
// own, and prints, as "name value" lines, what it saw:
//   clip_child FRAMES WIDTH HEIGHT FOLDER SECONDS TAKES real|fast
// "real" feeds the pictures when a camera would, "fast" as soon as they are taken. Every take after
// the first is a warm one.

#include <KdVBLModel/KdAudioChain.h>
#include <KdVBLModel/KdMonotonicTime.h>
#include <KdVBLModel/KdWebcamTake.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <thread>

#include <gst/gst.h>

namespace {

constexpr double kRate = 30.0;
constexpr qint64 kBlock = 480;
constexpr qint64 kBlockNs = 10000000;

struct Job
{
    QString frames;
    QSize size;
    QString folder;
    double seconds = 0.0;
    int takes = 0;
    bool isReal = false;
};

void print(const char* name, int take, double value)
{
    std::printf("%s_%s %.3f\n", take == 0 ? "cold" : "warm", name, value);
}

double elapsedMs(const QElapsedTimer& timer)
{
    return static_cast<double>(timer.nsecsElapsed()) * 1e-6;
}

KdGstBufferPtr allocate(qint64 bytes)
{
    return KdGstBufferPtr(gst_buffer_new_allocate(nullptr, static_cast<gsize>(bytes), nullptr));
}

/** A block of a chord, which costs an encoder what music does. */
KdGstBufferPtr soundBlock(qint64 first)
{
    KdGstBufferPtr buffer = allocate(kBlock * KdAudioChain::kBytesPerFrame);
    GstMapInfo map;
    gst_buffer_map(buffer.get(), &map, GST_MAP_WRITE);
    auto* samples = reinterpret_cast<float*>(map.data);
    for (qint64 i = first; i < first + kBlock; ++i) {
        const double angle = 6.283185307179586 * static_cast<double>(i) / KdAudioChain::kSamplerate;
        const double value =
            std::sin(220.0 * angle) + std::sin(277.2 * angle) + std::sin(1318.5 * angle);
        *samples++ = static_cast<float>(0.2 * value);
        *samples++ = static_cast<float>(0.2 * value);
    }
    gst_buffer_unmap(buffer.get(), &map);
    return buffer;
}

/** Feeds one take. */
class Camera
{
public:
    Camera(KdWebcamTake& take, const Job& job)
        : m_take(take), m_job(job), m_file(job.frames), m_picture(allocate(pictureBytes()))
    {
        m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    void run()
    {
        const auto begin = std::chrono::steady_clock::now();
        m_beginNs = kdMonotonicNs();
        const auto blocks = static_cast<qint64>(m_job.seconds * 1e9) / kBlockNs;
        for (qint64 block = 0; block < blocks; ++block) {
            const qint64 ns = (block + 1) * kBlockNs;
            if (m_job.isReal) {
                std::this_thread::sleep_until(begin + std::chrono::nanoseconds(ns));
            }
            m_take.feedSound(soundBlock(block * kBlock).get(), m_beginNs + ns);
            givePictures(ns);
        }
    }

    int given() const { return m_given; }

private:
    qint64 pictureBytes() const { return qint64(m_job.size.width()) * m_job.size.height() * 3 / 2; }

    void givePictures(qint64 nowNs)
    {
        for (qint64 at = takenNs(); at <= nowNs; at = takenNs()) {
            while (!m_job.isReal && (m_take.waitingPictures() > 4 ||
                                     m_take.backlog() > std::chrono::milliseconds(1500))) {
                // The take has no signal for room in its queue: a real camera never waits for it.
                std::this_thread::sleep_for(std::chrono::microseconds(200));
            }
            readPicture();
            m_take.feedPicture(m_picture.get(), m_beginNs + at);
            ++m_given;
        }
    }

    qint64 takenNs() const { return static_cast<qint64>(m_given * 1e9 / kRate); }

    void readPicture()
    {
        if (m_file.size() - m_file.pos() < pictureBytes()) {
            m_file.seek(0);
        }
        GstMapInfo map;
        gst_buffer_map(m_picture.get(), &map, GST_MAP_WRITE);
        m_file.read(reinterpret_cast<char*>(map.data), pictureBytes());
        gst_buffer_unmap(m_picture.get(), &map);
    }

    KdWebcamTake& m_take;
    const Job& m_job;
    QFile m_file;
    KdGstBufferPtr m_picture;
    qint64 m_beginNs = 0;
    int m_given = 0;
};

bool record(const Job& job, int number)
{
    KdWebcamTakeFormat format;
    format.size = job.size;
    format.frameRate = kRate;
    format.hasSound = true;
    format.sound.samplerate = KdAudioChain::kSamplerate;
    const QString path = job.folder + QStringLiteral("/take%1.mp4").arg(number);
    QElapsedTimer start;
    start.start();
    KdWebcamTake take;
    if (!take.open(path, format, 100)) {
        return false;
    }
    print("open_ms", number, elapsedMs(start));
    Camera camera(take, job);
    camera.run();
    QElapsedTimer stop;
    stop.start();
    const bool isKept = take.finish();
    print("stop_ms", number, elapsedMs(stop));
    print("given", number, camera.given());
    print("lost", number, static_cast<double>(take.lostPictures()));
    return isKept;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() != 8) {
        std::fprintf(stderr,
                     "usage: clip_child FRAMES WIDTH HEIGHT FOLDER SECONDS TAKES real|fast\n");
        return 2;
    }
    gst_init(nullptr, nullptr);
    const Job job{words.at(1),         QSize(words.at(2).toInt(), words.at(3).toInt()),
                  words.at(4),         words.at(5).toDouble(),
                  words.at(6).toInt(), words.at(7) == QLatin1String("real")};
    for (int take = 0; take < job.takes; ++take) {
        if (!record(job, take)) {
            return 1;
        }
    }
    return 0;
}
