#include <KdVBLModel/KdAudioConverter.h>

#include <Support/KdTestCase.h>

#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;

KdGstCapsPtr caps(const char* format, int rate, int channels)
{
    return KdGstCapsPtr(gst_caps_new_simple(
        "audio/x-raw", "format", G_TYPE_STRING, format, "layout", G_TYPE_STRING, "interleaved",
        "rate", G_TYPE_INT, rate, "channels", G_TYPE_INT, channels, nullptr));
}

/** A sine at half of full scale, equal on all channels. */
std::vector<float> sine(double frequency, int rate, int channels, int frames)
{
    std::vector<float> samples;
    for (int i = 0; i < frames; ++i) {
        const double value = 0.5 * std::sin(2.0 * kPi * frequency * i / rate);
        samples.insert(samples.end(), static_cast<size_t>(channels), static_cast<float>(value));
    }
    return samples;
}

template <typename Sample>
void append(std::vector<Sample>* all, const KdGstBufferPtr& buffer)
{
    GstMapInfo map;
    if (buffer && gst_buffer_map(buffer.get(), &map, GST_MAP_READ)) {
        const auto* samples = reinterpret_cast<const Sample*>(map.data);
        all->insert(all->end(), samples, samples + map.size / sizeof(Sample));
        gst_buffer_unmap(buffer.get(), &map);
    }
}

} // namespace

class tst_KdAudioConverter : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { gst_init(nullptr, nullptr); }
    void everyOfferedRateKeepsLengthPitchAndLevel_data();
    void everyOfferedRateKeepsLengthPitchAndLevel();
    void equalFormatsPassSampleBySample();
    void bothChannelsGoIntoOne();
    void theSmallestBlocksGiveTheSameAsOne_data();
    void theSmallestBlocksGiveTheSameAsOne();
    void drainingWithoutSoundGivesNothing();
    void whatIsNoFixedAudioIsRefused();
};

void tst_KdAudioConverter::everyOfferedRateKeepsLengthPitchAndLevel_data()
{
    QTest::addColumn<int>("rate");
    for (const int rate : {22050, 24000, 32000, 44100, 48000, 64000, 88200, 96000}) {
        QTest::newRow(qPrintable(QString::number(rate))) << rate;
    }
}

void tst_KdAudioConverter::everyOfferedRateKeepsLengthPitchAndLevel()
{
    QFETCH(int, rate);
    const auto converter =
        KdAudioConverter::create(caps("F32LE", 48000, 2).get(), caps("S16LE", rate, 2).get());
    QVERIFY(converter);
    const std::vector<float> input = sine(1000.0, 48000, 2, 48000);
    std::vector<qint16> output;
    for (int at = 0; at < 48000; at += 480) {
        append(&output, converter->convert(&input[size_t(2) * size_t(at)], 480));
    }
    append(&output, converter->drain());

    const int frames = static_cast<int>(output.size() / 2);
    QVERIFY2(std::abs(frames - rate) <= rate / 500, qPrintable(QString::number(frames)));
    double error = 0.0;
    for (int i = rate / 10; i < rate * 9 / 10; ++i) {
        const double expected = 0.5 * std::sin(2.0 * kPi * 1000.0 * i / rate);
        error = std::max(error, std::abs(output[size_t(2) * size_t(i)] / 32768.0 - expected));
    }
    // A hundredth of a millisecond off would be 0.03.
    QVERIFY2(error < 0.02, qPrintable(QString::number(error)));
}

void tst_KdAudioConverter::equalFormatsPassSampleBySample()
{
    const auto converter =
        KdAudioConverter::create(caps("F32LE", 48000, 2).get(), caps("F32LE", 48000, 2).get());
    const std::vector<float> input = sine(440.0, 48000, 2, 1000);
    std::vector<float> output;
    append(&output, converter->convert(input.data(), 1));
    append(&output, converter->convert(input.data() + 2, 999));
    append(&output, converter->drain());
    QCOMPARE(output, input);
}

void tst_KdAudioConverter::bothChannelsGoIntoOne()
{
    const auto converter =
        KdAudioConverter::create(caps("F32LE", 48000, 2).get(), caps("F32LE", 48000, 1).get());
    const std::vector<float> input = {0.5F, 0.1F, -0.25F, -0.25F};
    std::vector<float> output;
    append(&output, converter->convert(input.data(), 2));
    QCOMPARE(output.size(), size_t(2));
    QVERIFY(std::abs(output[0] - 0.3F) < 0.001F);
    QVERIFY(std::abs(output[1] + 0.25F) < 0.001F);
}

void tst_KdAudioConverter::theSmallestBlocksGiveTheSameAsOne_data()
{
    everyOfferedRateKeepsLengthPitchAndLevel_data();
}

void tst_KdAudioConverter::theSmallestBlocksGiveTheSameAsOne()
{
    QFETCH(int, rate);
    const std::vector<float> input = sine(1000.0, 48000, 2, 4800);
    std::vector<qint16> whole;
    std::vector<qint16> inPieces;
    const auto once =
        KdAudioConverter::create(caps("F32LE", 48000, 2).get(), caps("S16LE", rate, 2).get());
    append(&whole, once->convert(input.data(), 4800));
    append(&whole, once->drain());
    const auto often =
        KdAudioConverter::create(caps("F32LE", 48000, 2).get(), caps("S16LE", rate, 2).get());
    int at = 0;
    for (int size = 0; at + size <= 4800; size = (size + 1) % 9) {
        append(&inPieces, often->convert(&input[size_t(2) * size_t(at)], size));
        at += size;
    }
    append(&inPieces, often->convert(&input[size_t(2) * size_t(at)], 4800 - at));
    append(&inPieces, often->drain());
    QCOMPARE(inPieces.size(), whole.size());
    QVERIFY(std::equal(whole.begin(), whole.end(), inPieces.begin(),
                       [](qint16 a, qint16 b) { return std::abs(a - b) <= 2; }));
}

void tst_KdAudioConverter::drainingWithoutSoundGivesNothing()
{
    const auto converter =
        KdAudioConverter::create(caps("F32LE", 48000, 2).get(), caps("S16LE", 44100, 2).get());
    QVERIFY(!converter->drain());
}

void tst_KdAudioConverter::whatIsNoFixedAudioIsRefused()
{
    const KdGstCapsPtr good = caps("F32LE", 48000, 2);
    const KdGstCapsPtr video(gst_caps_new_empty_simple("video/x-raw"));
    QVERIFY(!KdAudioConverter::create(good.get(), video.get()));
    QVERIFY(!KdAudioConverter::create(video.get(), good.get()));
    QVERIFY(!KdAudioConverter::create(nullptr, good.get()));
    QVERIFY(!KdAudioConverter::create(good.get(), nullptr));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioConverter>(argc, argv);
}

#include "tst_KdAudioConverter.moc"
