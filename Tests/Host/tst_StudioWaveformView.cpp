#include "Support/KdTestCase.h"

#include <Studio/StudioWaveformView.h>

#include <QImage>
#include <QSignalSpy>

#include <algorithm>

class tst_StudioWaveformView : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void positionStaysInTheTake();
    void pressAsksForThatPlace();
    void arrowKeysStepASecond();
    void withoutATakeNothingIsAskedFor();
    void loudPlacesAreHigherThanQuietOnes();
    void noticeStandsInsteadOfTheWaveform();
};

void tst_StudioWaveformView::positionStaysInTheTake()
{
    StudioWaveformView view;
    view.setDuration(5000);
    view.setPosition(9000);
    QCOMPARE(view.position(), 5000);
    view.setPosition(-1);
    QCOMPARE(view.position(), 0);
    view.setPosition(4000);
    view.setDuration(1000);
    QCOMPARE(view.position(), 1000);
    view.setDuration(-4);
    QCOMPARE(view.position(), 0);
}

void tst_StudioWaveformView::pressAsksForThatPlace()
{
    StudioWaveformView view;
    view.resize(424, 120);
    view.setDuration(10000);
    QSignalSpy asked(&view, &StudioWaveformView::seekRequested);
    QTest::mouseClick(&view, Qt::LeftButton, {}, {212, 60});
    QVERIFY(qAbs(asked.value(0).value(0).toLongLong() - 5000) < 50);
    QTest::mouseClick(&view, Qt::LeftButton, {}, {1, 60});
    QCOMPARE(asked.value(1).value(0).toLongLong(), 0);
    QTest::mouseClick(&view, Qt::LeftButton, {}, {423, 60});
    QCOMPARE(asked.value(2).value(0).toLongLong(), 10000);
}

void tst_StudioWaveformView::arrowKeysStepASecond()
{
    StudioWaveformView view;
    view.setDuration(3000);
    view.setPosition(2500);
    QSignalSpy asked(&view, &StudioWaveformView::seekRequested);
    QTest::keyClick(&view, Qt::Key_Right);
    QTest::keyClick(&view, Qt::Key_Left);
    QTest::keyClick(&view, Qt::Key_Up);
    QCOMPARE(asked.count(), 2);
    QCOMPARE(asked.at(0).at(0).toLongLong(), 3000);
    QCOMPARE(asked.at(1).at(0).toLongLong(), 1500);
}

void tst_StudioWaveformView::withoutATakeNothingIsAskedFor()
{
    StudioWaveformView view;
    QSignalSpy asked(&view, &StudioWaveformView::seekRequested);
    QTest::mouseClick(&view, Qt::LeftButton, {}, {10, 10});
    view.setDuration(4000);
    view.setNotice(QStringLiteral("The file is missing"));
    QTest::mouseClick(&view, Qt::LeftButton, {}, {10, 10});
    QTest::keyClick(&view, Qt::Key_Right);
    QVERIFY(asked.isEmpty());
}

void tst_StudioWaveformView::loudPlacesAreHigherThanQuietOnes()
{
    StudioWaveformView view;
    view.resize(600, 120);
    view.setDuration(2000);
    StudioPeaks peaks(100, {0.02F, 0.01F});
    std::fill(peaks.begin() + 50, peaks.end(), StudioPeak{0.9F, 0.6F});
    const QImage empty = view.grab().toImage();
    view.setPeaks(peaks);
    const QImage picture = view.grab().toImage();
    const auto painted = [&](int from, int to) {
        int count = 0;
        for (int x = from; x < to; ++x) {
            count += picture.pixel(x, 25) != empty.pixel(x, 25) ? 1 : 0;
        }
        return count;
    };
    QCOMPARE(painted(0, picture.width() / 2 - 10), 0);
    QVERIFY(painted(picture.width() / 2 + 10, picture.width()) > 50);
}

void tst_StudioWaveformView::noticeStandsInsteadOfTheWaveform()
{
    StudioWaveformView view;
    view.resize(600, 120);
    view.setPeaks(StudioPeaks(100, {0.9F, 0.6F}));
    const QImage waveform = view.grab().toImage();
    view.setNotice(QStringLiteral("The file is missing"));
    QVERIFY(view.grab().toImage() != waveform);
    view.setNotice(QString());
    QVERIFY(view.grab().toImage() == waveform);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioWaveformView>(argc, argv);
}

#include "tst_StudioWaveformView.moc"
