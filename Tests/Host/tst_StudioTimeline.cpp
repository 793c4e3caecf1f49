#include "Support/KdTestCase.h"

#include <Studio/StudioTimeline.h>

#include <QImage>
#include <QSignalSpy>

class tst_StudioTimeline : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void playableTakesLieEndToEnd();
    void unplayableTakesHaveNoPlace();
    void shortestTakeIsSeen();
    void playheadFollowsTheRecordingInProjectFrames();
    void recordingBeginsBehindTheLastClip();
    void recordingAgainBeginsAnew();
    void framesOutsideARecordingAreIgnored();
    void playheadIsPaintedWhereItsFrameIs_data();
    void playheadIsPaintedWhereItsFrameIs();
    void pressOnAClipChoosesIt();
    void longRecordingStaysInView();
    void paintsWithoutARateAndWithoutRoom();
};

namespace {

StudioTake makeTake(const QString& path, qint64 ms,
                    StudioTake::State state = StudioTake::State::Good)
{
    StudioTake take;
    take.path = path;
    take.durationMs = ms;
    take.state = state;
    return take;
}

QVector<StudioTake> twoTakes()
{
    return {makeTake(QStringLiteral("/a.m4a"), 4000), makeTake(QStringLiteral("/b.m4a"), 6000)};
}

/** The columns of a picture in which a colour is seen below the ruler. */
QVector<int> columnsOf(const QImage& picture, const QColor& color)
{
    QVector<int> columns;
    const int row = static_cast<int>(90.0 * picture.devicePixelRatio());
    for (int x = 0; x < picture.width(); ++x) {
        const QColor seen = picture.pixelColor(x, row);
        if (qAbs(seen.red() - color.red()) < 60 && qAbs(seen.green() - color.green()) < 60 &&
            qAbs(seen.blue() - color.blue()) < 60) {
            columns.append(x);
        }
    }
    return columns;
}

} // namespace

void tst_StudioTimeline::playableTakesLieEndToEnd()
{
    const QVector<StudioClip> clips = layOutClips(twoTakes(), 25.0);
    QCOMPARE(clips.size(), 2);
    QCOMPARE(clips.at(0).start, 0);
    QCOMPARE(clips.at(0).frames, 100);
    QCOMPARE(clips.at(1).start, 100);
    QCOMPARE(clips.at(1).frames, 150);
    QCOMPARE(endOfClips(clips), 250);
    QCOMPARE(endOfClips({}), 0);
}

void tst_StudioTimeline::unplayableTakesHaveNoPlace()
{
    using State = StudioTake::State;
    const QVector<StudioClip> clips =
        layOutClips({makeTake(QStringLiteral("/m"), 4000, State::Missing),
                     makeTake(QStringLiteral("/u"), 4000, State::Unreadable),
                     makeTake(QStringLiteral("/c"), 4000, State::Checking),
                     makeTake(QStringLiteral("/g"), 4000)},
                    25.0);
    QCOMPARE(clips.size(), 1);
    QCOMPARE(clips.at(0).path, QStringLiteral("/g"));
    QCOMPARE(clips.at(0).start, 0);
}

void tst_StudioTimeline::shortestTakeIsSeen()
{
    QCOMPARE(layOutClips({makeTake(QStringLiteral("/a"), 1)}, 25.0).at(0).frames, 1);
    QCOMPARE(layOutClips({makeTake(QStringLiteral("/a"), 5000)}, 0.0).at(0).frames, 1);
}

void tst_StudioTimeline::playheadFollowsTheRecordingInProjectFrames()
{
    StudioTimeline timeline;
    timeline.setFrameRate(23.97);
    timeline.beginRecording();
    QVERIFY(timeline.isRecording());
    QCOMPARE(timeline.playhead(), 0);
    for (const qint64 frames : {1, 24, 240}) {
        timeline.setRecordedFrames(frames);
        QCOMPARE(timeline.playhead(), frames);
    }
    timeline.endRecording();
    QVERIFY(!timeline.isRecording());
}

void tst_StudioTimeline::recordingBeginsBehindTheLastClip()
{
    StudioTimeline timeline;
    timeline.setFrameRate(25.0);
    timeline.setClips(layOutClips(twoTakes(), 25.0));
    timeline.beginRecording();
    QCOMPARE(timeline.playhead(), 250);
    timeline.setRecordedFrames(30);
    QCOMPARE(timeline.playhead(), 280);
}

void tst_StudioTimeline::recordingAgainBeginsAnew()
{
    StudioTimeline timeline;
    timeline.beginRecording();
    timeline.setRecordedFrames(100);
    timeline.beginRecording();
    QCOMPARE(timeline.playhead(), 0);
    timeline.setRecordedFrames(3);
    QCOMPARE(timeline.playhead(), 3);
}

void tst_StudioTimeline::framesOutsideARecordingAreIgnored()
{
    StudioTimeline timeline;
    timeline.setPlayhead(7);
    timeline.setRecordedFrames(500);
    QCOMPARE(timeline.playhead(), 7);
    timeline.setPlayhead(-3);
    QCOMPARE(timeline.playhead(), 0);
}

void tst_StudioTimeline::playheadIsPaintedWhereItsFrameIs_data()
{
    QTest::addColumn<qint64>("frame");
    QTest::newRow("start") << qint64(0);
    QTest::newRow("middle") << qint64(125);
    QTest::newRow("end") << qint64(250);
}

void tst_StudioTimeline::playheadIsPaintedWhereItsFrameIs()
{
    QFETCH(qint64, frame);
    StudioTimeline timeline;
    timeline.resize(800, timeline.height());
    timeline.setFrameRate(25.0);
    timeline.setPlayhead(frame);
    const QImage picture = timeline.grab().toImage();
    // The dark skin's text on its ground; the playhead alone reaches below the track.
    const QVector<int> columns = columnsOf(picture, QColor(0xF1, 0xF3, 0xF5));
    QVERIFY(!columns.isEmpty());
    const double scale = picture.devicePixelRatio();
    const int expected = static_cast<int>(timeline.scale().toPixel(frame) * scale);
    for (const int column : columns) {
        QVERIFY2(qAbs(column - expected) <= 2, qPrintable(QString::number(column)));
    }
}

void tst_StudioTimeline::pressOnAClipChoosesIt()
{
    StudioTimeline timeline;
    timeline.resize(800, timeline.height());
    timeline.setFrameRate(25.0);
    timeline.setClips(layOutClips(twoTakes(), 25.0));
    QSignalSpy clicked(&timeline, &StudioTimeline::clipClicked);
    const int middle = timeline.height() / 2;
    QTest::mouseClick(&timeline, Qt::LeftButton, {}, {timeline.scale().toPixel(180), middle});
    QCOMPARE(clicked.value(0).value(0).toString(), QStringLiteral("/b.m4a"));
    QTest::mouseClick(&timeline, Qt::LeftButton, {}, {timeline.width() - 2, middle});
    QCOMPARE(clicked.count(), 1);
}

void tst_StudioTimeline::longRecordingStaysInView()
{
    StudioTimeline timeline;
    timeline.resize(800, timeline.height());
    timeline.setFrameRate(60.0);
    timeline.beginRecording();
    for (qint64 frames = 1; frames < qint64(60) * 3600 * 12; frames *= 7) {
        timeline.setRecordedFrames(frames);
        QVERIFY(timeline.scale().toPixel(timeline.playhead()) < timeline.width());
        QVERIFY(!timeline.grab().isNull());
    }
}

void tst_StudioTimeline::paintsWithoutARateAndWithoutRoom()
{
    StudioTimeline timeline;
    timeline.setFrameRate(0.0);
    timeline.setClips(layOutClips(twoTakes(), 0.0));
    for (const int width : {1, 10, 40, 3000}) {
        timeline.resize(width, timeline.height());
        timeline.beginRecording();
        QVERIFY(!timeline.grab().isNull());
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioTimeline>(argc, argv);
}

#include "tst_StudioTimeline.moc"
