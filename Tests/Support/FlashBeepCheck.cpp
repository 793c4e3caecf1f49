#include "FlashBeepCheck.h"

#include "ClipProbe.h"
#include "FlashBeep.h"

#include <QStringList>
#include <QTest>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kMostApart = 0.040;

/** A flash, and how much later its beep begins. */
struct Pair
{
    double flash;
    double offset;
    double gap; ///< without a picture before the flash, beyond the usual: it may have been earlier
};

double gapBefore(const QVector<double>& pictures, double time)
{
    constexpr double kUsual = 1.0 / 30.0 + 0.002;
    const auto at = std::lower_bound(pictures.begin(), pictures.end(), time);
    return at == pictures.begin() ? 0.0 : qMax(0.0, time - *(at - 1) - kUsual);
}

/** @param cuts where pauses were, in seconds: flashes and beeps there are not whole */
QVector<Pair> wholePairs(const QString& path, const QVector<double>& cuts)
{
    constexpr double kNear = 0.3;
    const ClipInfo clip = ClipProbe::probe(path);
    const QVector<double>& pictures = clip.pictureTimes;
    const QVector<double> ends = cuts + QVector<double>{0.0, clip.pictureLength};
    const QVector<double> flashes = FlashBeep::flashes(path);
    const QVector<double> offsets = FlashBeep::offsets(path);
    QVector<Pair> pairs;
    for (int i = 0; i < qMin(flashes.size(), offsets.size()); ++i) {
        const bool isCut = std::any_of(ends.begin(), ends.end(), [&](double cut) {
            return std::abs(flashes[i] - cut) < kNear;
        });
        if (!isCut) {
            pairs.append({flashes[i], offsets[i], gapBefore(pictures, flashes[i])});
        }
    }
    return pairs;
}

QString text(const QVector<Pair>& pairs)
{
    QStringList texts;
    for (const Pair& pair : pairs) {
        texts.append(QStringLiteral("%1 ms").arg(pair.offset * 1000.0, 0, 'f', 1));
    }
    return texts.join(QStringLiteral(", "));
}

} // namespace

void FlashBeepCheck::verifyTogether(const QString& path, int least, const QVector<double>& cuts)
{
    const QVector<Pair> pairs = wholePairs(path, cuts);
    qInfo("The beeps come late by: %s", qPrintable(text(pairs)));
    QVERIFY2(pairs.size() >= least, qPrintable(text(pairs)));
    for (const Pair& pair : pairs) {
        const double late = pair.offset > 0.0 ? pair.offset : qMin(0.0, pair.offset + pair.gap);
        QVERIFY2(std::abs(late) < kMostApart, qPrintable(text(pairs)));
    }
    const ClipInfo clip = ClipProbe::probe(path);
    QCOMPARE(clip.pictureBegin, 0.0);
    QCOMPARE(clip.soundBegin, 0.0);
    QVERIFY(std::abs(clip.pictureLength - clip.soundLength) < 0.025);
}
