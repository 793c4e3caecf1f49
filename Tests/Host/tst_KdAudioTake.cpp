#include <KdVBLModel/KdAudioChain.h>
#include <KdVBLModel/KdAudioTake.h>

#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>

#include <QDir>
#include <QFile>

#include <cmath>
#include <thread>

using namespace KdVBLMODEL;

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr qint64 kBlock = 480;
constexpr qint64 kBlockNs = 10000000;

/** An input that gives blocks of 10 ms as fast as they are asked for, at its own pace of time. */
class Input
{
public:
    explicit Input(KdAudioTake& take) : m_take(take) {}

    /** A sweep from 400 Hz, rising by 100 Hz each second: its pitch tells when a sound was made. */
    void give(int blocks)
    {
        for (int i = 0; i < blocks; ++i) {
            const KdGstBufferPtr buffer = block();
            m_nowNs += kBlockNs;
            if (const auto due = m_take.feed(buffer.get(), m_nowNs)) {
                times.append(*due);
            }
        }
    }

    qint64 nowNs() const { return m_nowNs; }

    QVector<qint64> times;

private:
    KdGstBufferPtr block()
    {
        KdGstBufferPtr buffer(gst_buffer_new_allocate(
            nullptr, static_cast<gsize>(kBlock) * KdAudioChain::kBytesPerFrame, nullptr));
        GstMapInfo map;
        gst_buffer_map(buffer.get(), &map, GST_MAP_WRITE);
        auto* samples = reinterpret_cast<float*>(map.data);
        for (int i = 0; i < kBlock; ++i, ++m_frame) {
            const double t = static_cast<double>(m_frame) / KdAudioChain::kSamplerate;
            const double value = 0.5 * std::sin(2.0 * kPi * (400.0 * t + 50.0 * t * t));
            *samples++ = static_cast<float>(value);
            *samples++ = static_cast<float>(value);
        }
        gst_buffer_unmap(buffer.get(), &map);
        return buffer;
    }

    KdAudioTake& m_take;
    qint64 m_frame = 0;
    qint64 m_nowNs = 0;
};

KdAudioFormat format(int samplerate = 48000)
{
    KdAudioFormat format;
    format.samplerate = samplerate;
    return format;
}

} // namespace

class tst_KdAudioTake : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { gst_init(nullptr, nullptr); }
    void theFileHoldsWhatTheInputGave_data();
    void theFileHoldsWhatTheInputGave();
    void theTimeIsToldOnceAnInterval();
    void aPauseIsInNeitherFileNorTime();
    void tenPausesWithinBlocksAddUpToTheSample();
    void nothingEntersAfterTheClose();
    void aTakeWithoutSoundLeavesNoFile();
    void aTakeThatIsPausedToItsEndKeepsWhatWasBefore();
    void finishingTwiceGivesTheSameAnswer();
    void anExistingFileIsRefusedAndKept();
    void aFolderDeletedInMidTakeIsNoSuccess();
    void waitingForSoundEndsWithTheFirst();
};

void tst_KdAudioTake::theFileHoldsWhatTheInputGave_data()
{
    QTest::addColumn<int>("samplerate");
    QTest::newRow("48000 Hz, as it comes") << 48000;
    QTest::newRow("44100 Hz") << 44100;
}

void tst_KdAudioTake::theFileHoldsWhatTheInputGave()
{
    QFETCH(int, samplerate);
    const QString path = temporaryPath(QStringLiteral("take.m4a"));
    KdAudioTake take;
    QVERIFY(take.open(path, format(samplerate), 50));
    Input input(take);
    input.give(300);
    QVERIFY(std::abs(take.recordedMs() - 3000) <= 2);
    QVERIFY(take.finish());

    const MediaInfo info = MediaProbe::probe(path);
    QVERIFY2(info.isReadable, qPrintable(info.complaint));
    QCOMPARE(info.audioCodec, QStringLiteral("aac"));
    QCOMPARE(info.samplerate, samplerate);
    QVERIFY2(std::abs(info.seconds - 3.0) < 0.1, qPrintable(QString::number(info.seconds)));
    const QVector<float> samples = MediaProbe::samples(path);
    for (double second : {0.5, 1.0, 1.5, 2.0, 2.5}) {
        const double pitch = MediaProbe::pitchAt(samples, 48000, second, 0.1);
        const double expected = 400.0 + 100.0 * second;
        // The encoder's lead-in is 20 to 45 ms, which is 2 to 5 Hz here.
        QVERIFY2(std::abs(pitch - expected) < 8.0, qPrintable(QString::number(pitch - expected)));
    }
}

void tst_KdAudioTake::theTimeIsToldOnceAnInterval()
{
    KdAudioTake take;
    QVERIFY(take.open(temporaryPath(QStringLiteral("take.m4a")), format(), 50));
    Input input(take);
    input.give(23);
    QCOMPARE(input.times, QVector<qint64>({50, 100, 150, 200}));
}

void tst_KdAudioTake::aPauseIsInNeitherFileNorTime()
{
    const QString path = temporaryPath(QStringLiteral("take.m4a"));
    KdAudioTake take;
    QVERIFY(take.open(path, format(), 50));
    Input input(take);
    input.give(100);
    take.pause(input.nowNs());
    input.times.clear();
    input.give(200);
    QCOMPARE(take.recordedMs(), qint64(1000));
    QVERIFY(input.times.isEmpty());
    take.resume(input.nowNs());
    input.give(100);
    QCOMPARE(take.recordedMs(), qint64(2000));
    QVERIFY(take.finish());

    const QVector<float> samples = MediaProbe::samples(path);
    QVERIFY(std::abs(samples.size() / 48000.0 - 2.0) < 0.1);
    // Source seconds 0 to 1 and 3 to 4, nothing of what lies between.
    const double before = MediaProbe::pitchAt(samples, 48000, 0.9, 0.05);
    const double after = MediaProbe::pitchAt(samples, 48000, 1.1, 0.05);
    QVERIFY2(std::abs(before - 490.0) < 10.0, qPrintable(QString::number(before)));
    QVERIFY2(std::abs(after - 710.0) < 10.0, qPrintable(QString::number(after)));
}

void tst_KdAudioTake::tenPausesWithinBlocksAddUpToTheSample()
{
    const QString path = temporaryPath(QStringLiteral("take.m4a"));
    KdAudioTake take;
    QVERIFY(take.open(path, format(), 50));
    Input input(take);
    input.give(10);
    for (int i = 0; i < 10; ++i) {
        // 3 ms after one block to 7 ms after the fifth from there: 44 ms out, 6 ms in.
        take.pause(input.nowNs() + 3000000);
        input.give(4);
        take.resume(input.nowNs() + 7000000);
        input.give(1);
    }
    QVERIFY(take.finish());
    QCOMPARE(take.recordedMs(), qint64(100 + 10 * 6));
}

void tst_KdAudioTake::nothingEntersAfterTheClose()
{
    KdAudioTake take;
    QVERIFY(take.open(temporaryPath(QStringLiteral("take.m4a")), format(), 50));
    Input input(take);
    input.give(20);
    take.close();
    input.times.clear();
    input.give(20);
    QCOMPARE(take.recordedMs(), qint64(200));
    QVERIFY(input.times.isEmpty());
    QVERIFY(take.finish());
}

void tst_KdAudioTake::aTakeWithoutSoundLeavesNoFile()
{
    const QDir folder(temporaryPath(QStringLiteral("takes")));
    QVERIFY(folder.mkpath(QStringLiteral(".")));
    KdAudioTake take;
    QVERIFY(take.open(folder.filePath(QStringLiteral("take.m4a")), format(44100), 50));
    QVERIFY(!take.hasSound());
    QVERIFY(!take.finish());
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    QCOMPARE(folder.entryList(all), QStringList());
}

void tst_KdAudioTake::aTakeThatIsPausedToItsEndKeepsWhatWasBefore()
{
    const QString path = temporaryPath(QStringLiteral("take.m4a"));
    KdAudioTake take;
    QVERIFY(take.open(path, format(), 50));
    Input input(take);
    input.give(100);
    take.pause(input.nowNs());
    input.give(50);
    QVERIFY(take.finish());
    QVERIFY(std::abs(MediaProbe::probe(path).seconds - 1.0) < 0.1);
}

void tst_KdAudioTake::finishingTwiceGivesTheSameAnswer()
{
    KdAudioTake take;
    QVERIFY(take.open(temporaryPath(QStringLiteral("take.m4a")), format(), 50));
    Input(take).give(20);
    QVERIFY(take.finish());
    QVERIFY(take.finish());
}

void tst_KdAudioTake::anExistingFileIsRefusedAndKept()
{
    expectLog(QStringLiteral("take\\.m4a"));
    const QString path = temporaryPath(QStringLiteral("take.m4a"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("precious"), qint64(8));
    file.close();
    KdAudioTake take;
    QVERIFY(!take.open(path, format(), 50));
    QVERIFY(!take.finish());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("precious"));
}

void tst_KdAudioTake::aFolderDeletedInMidTakeIsNoSuccess()
{
    expectLog(QStringLiteral("did not end well"));
    const QString folder = temporaryPath(QStringLiteral("folder"));
    QVERIFY(QDir().mkdir(folder));
    KdAudioTake take;
    QVERIFY(take.open(folder + QStringLiteral("/take.m4a"), format(), 50));
    Input input(take);
    input.give(100);
    QVERIFY(QDir(folder).removeRecursively());
    input.give(100);
    QVERIFY(!take.finish());
}

void tst_KdAudioTake::waitingForSoundEndsWithTheFirst()
{
    KdAudioTake take;
    QVERIFY(take.open(temporaryPath(QStringLiteral("take.m4a")), format(), 50));
    QVERIFY(!take.waitForSound(std::chrono::milliseconds(10)));
    std::thread source([&take] { Input(take).give(2); });
    QVERIFY(take.waitForSound(std::chrono::seconds(10)));
    source.join();
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioTake>(argc, argv);
}

#include "tst_KdAudioTake.moc"
