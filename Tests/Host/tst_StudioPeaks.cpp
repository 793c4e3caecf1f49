#include "Support/KdTestCase.h"

#include <Studio/StudioPeaks.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

class tst_StudioPeaks : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void noSoundHasNoPeaks();
    void loudnessOfKnownSounds_data();
    void loudnessOfKnownSounds();
    void memoryStaysBoundedHoweverLongTheSound();
    void loudPlaceStaysWhereItIs();
    void cuttingTheSoundElsewhereChangesNothing();
    void notANumberCountsAsSilence();
    void foldsOntoColumns_data();
    void foldsOntoColumns();
    void foldingKeepsEveryPeak();
};

void tst_StudioPeaks::noSoundHasNoPeaks()
{
    const StudioPeakFolder folder;
    QVERIFY(folder.peaks().isEmpty());
    QCOMPARE(folder.sampleCount(), 0);
    QVERIFY(foldPeaks({}, 10).isEmpty());
}

void tst_StudioPeaks::loudnessOfKnownSounds_data()
{
    QTest::addColumn<float>("amplitude");
    QTest::addColumn<bool>("square");
    QTest::addColumn<float>("peak");
    QTest::addColumn<float>("rms");
    QTest::newRow("silence") << 0.0F << true << 0.0F << 0.0F;
    QTest::newRow("square") << 0.5F << true << 0.5F << 0.5F;
    QTest::newRow("sine") << 0.8F << false << 0.8F << 0.5657F;
    QTest::newRow("too loud") << 3.0F << true << 1.0F << 1.0F;
}

void tst_StudioPeaks::loudnessOfKnownSounds()
{
    QFETCH(float, amplitude);
    QFETCH(bool, square);
    QFETCH(float, peak);
    QFETCH(float, rms);
    std::vector<float> samples;
    for (int i = 0; i < 6400; ++i) {
        const double wave =
            square ? (i % 2 == 0 ? 1.0 : -1.0) : std::sin(2.0 * 3.14159265358979 * i / 64.0);
        samples.push_back(amplitude * static_cast<float>(wave));
    }
    StudioPeakFolder folder;
    folder.add(samples.data(), samples.size());
    const StudioPeaks peaks = folder.peaks();
    QCOMPARE(peaks.size(), 100);
    for (const StudioPeak& stretch : peaks) {
        QVERIFY(std::abs(stretch.peak - peak) < 0.01F);
        QVERIFY(std::abs(stretch.rms - rms) < 0.01F);
    }
}

void tst_StudioPeaks::memoryStaysBoundedHoweverLongTheSound()
{
    StudioPeakFolder folder(256);
    const std::vector<float> block(10007, 0.25F);
    for (int i = 0; i < 150; ++i) {
        folder.add(block.data(), block.size());
        QVERIFY(folder.peaks().size() <= 256);
    }
    QCOMPARE(folder.sampleCount(), qint64(10007) * 150);
    QVERIFY(folder.peaks().size() >= 128);
    QCOMPARE(folder.peaks().constFirst().rms, 0.25F);
    QCOMPARE(folder.peaks().constLast().rms, 0.25F);
}

void tst_StudioPeaks::loudPlaceStaysWhereItIs()
{
    std::vector<float> samples(1000000, 0.0F);
    samples.at(750000) = -0.9F;
    StudioPeakFolder folder(500);
    folder.add(samples.data(), samples.size());
    const StudioPeaks peaks = folder.peaks();
    for (int i = 0; i < peaks.size(); ++i) {
        const bool isThere = std::abs(static_cast<double>(i) / peaks.size() - 0.75) < 0.01;
        QVERIFY(peaks.at(i).peak < 0.01F || (isThere && peaks.at(i).peak > 0.89F));
    }
    const auto loud = std::count_if(peaks.cbegin(), peaks.cend(),
                                    [](const StudioPeak& p) { return p.peak > 0.0F; });
    QCOMPARE(loud, 1);
}

void tst_StudioPeaks::cuttingTheSoundElsewhereChangesNothing()
{
    std::vector<float> samples;
    samples.reserve(50000);
    for (int i = 0; i < 50000; ++i) {
        samples.push_back(static_cast<float>(i % 977) / 977.0F);
    }
    StudioPeakFolder atOnce(100);
    atOnce.add(samples.data(), samples.size());
    StudioPeakFolder inPieces(100);
    for (std::size_t i = 0; i < samples.size(); i += 313) {
        inPieces.add(samples.data() + i, std::min<std::size_t>(313, samples.size() - i));
    }
    const StudioPeaks left = atOnce.peaks();
    const StudioPeaks right = inPieces.peaks();
    QCOMPARE(left.size(), right.size());
    for (int i = 0; i < left.size(); ++i) {
        QCOMPARE(left.at(i).peak, right.at(i).peak);
        QCOMPARE(left.at(i).rms, right.at(i).rms);
    }
}

void tst_StudioPeaks::notANumberCountsAsSilence()
{
    const std::vector<float> samples{std::numeric_limits<float>::quiet_NaN(),
                                     std::numeric_limits<float>::infinity(), 0.5F};
    StudioPeakFolder folder;
    folder.add(samples.data(), samples.size());
    QCOMPARE(folder.peaks().size(), 1);
    QCOMPARE(folder.peaks().first().peak, 0.5F);
    QVERIFY(folder.peaks().first().rms < 0.5F);
}

void tst_StudioPeaks::foldsOntoColumns_data()
{
    QTest::addColumn<int>("peaks");
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("expected");
    QTest::newRow("fewer columns") << 1000 << 30 << 30;
    QTest::newRow("as many") << 30 << 30 << 30;
    QTest::newRow("more columns") << 7 << 30 << 30;
    QTest::newRow("one") << 1000 << 1 << 1;
    QTest::newRow("none") << 1000 << 0 << 0;
    QTest::newRow("negative") << 1000 << -5 << 0;
}

void tst_StudioPeaks::foldsOntoColumns()
{
    QFETCH(int, peaks);
    QFETCH(int, columns);
    QFETCH(int, expected);
    const StudioPeaks folded = foldPeaks(StudioPeaks(peaks, {0.5F, 0.25F}), columns);
    QCOMPARE(folded.size(), expected);
    for (const StudioPeak& column : folded) {
        QCOMPARE(column.peak, 0.5F);
        QCOMPARE(column.rms, 0.25F);
    }
}

void tst_StudioPeaks::foldingKeepsEveryPeak()
{
    for (int place = 0; place < 101; ++place) {
        StudioPeaks peaks(101, StudioPeak());
        peaks[place].peak = 1.0F;
        const StudioPeaks folded = foldPeaks(peaks, 17);
        QVERIFY(std::any_of(folded.cbegin(), folded.cend(),
                            [](const StudioPeak& p) { return p.peak == 1.0F; }));
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioPeaks>(argc, argv);
}

#include "tst_StudioPeaks.moc"
