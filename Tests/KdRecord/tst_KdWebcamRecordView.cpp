#include "WebcamViewFixture.h"

#include <KdRecord/KdCountCtrlVideo.h>
#include <KdRecord/KdWebcamRecorderHelper.h>
#include <KdVBLModel/KdTrackEventLog.h>
#include <KdWidgets/KdTitleBar.h>

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QScreen>
#include <QSignalSpy>

using namespace KdVBLMODEL;

/** What hosts see of the dialog while it is open, and what a take tells them. */
class tst_KdWebcamRecordView : public WebcamViewFixture
{
    Q_OBJECT

private Q_SLOTS:
    void isWhatHostsExpect();
    void sizeIsThatOfItsScreen();
    void initDevicesFillsTheListsAndShowsThePicture();
    void previewSwitchIsAnswered();
    void showingIsReportedAsAUsageEvent();

    void finishedTakeComesWithItsDescription();
    void optionsOfTheTakeAreDescribed();
    void zoomIsToldOnceTheDialogGotASize();
    void tooShortTakeIsReportedWithoutAPathAndInFull();
    void startIsToldWhenItIsAskedFor();

    void countdownFollowsTheWindow();
    void languageChangeKeepsTheTake();
};

void tst_KdWebcamRecordView::isWhatHostsExpect()
{
    showView();
    QCOMPARE(view->objectName(), QStringLiteral("KdWebcamRecordView"));
    QCOMPARE(view->windowTitle(), QStringLiteral("Capture Video"));
    QVERIFY(view->testAttribute(Qt::WA_DeleteOnClose));
    QVERIFY(view->windowFlags() & Qt::FramelessWindowHint);
    QCOMPARE(view->contentWidget(), panel.data());
    QVERIFY(view->titleBar()->isVisible());
    QVERIFY(view->titleBar()->isResizeble());
    QVERIFY(view->findChild<QWidget*>(QStringLiteral("KdResizeGrip_Right"))->isVisible());
    QCOMPARE(panel->height(), view->height() - view->titleBar()->height());
    QCOMPARE(view->property("bgColorType").toInt(), 18);
    QCOMPARE(panel->property("bgColorType").toInt(), 18);
}

void tst_KdWebcamRecordView::sizeIsThatOfItsScreen()
{
    QVERIFY(QGuiApplication::primaryScreen()->availableSize().height() >= 900);
    makeView();
    QCOMPARE(view->size(), QSize(800, 900));
}

void tst_KdWebcamRecordView::initDevicesFillsTheListsAndShowsThePicture()
{
    makeView();
    QVERIFY(!engine->isPreviewing());
    view->initDevices();
    QVERIFY(engine->isPreviewing());
    QCOMPARE(choices(kCamera), texts({"Cam A", "Cam B"}));
}

void tst_KdWebcamRecordView::previewSwitchIsAnswered()
{
    makeView();
    auto* const box = control<QCheckBox>(kPreview);
    for (const bool on : {true, false}) {
        box->setChecked(on);
        QCOMPARE(view->isRecordPreview(), on);
    }
}

void tst_KdWebcamRecordView::showingIsReportedAsAUsageEvent()
{
    KdTrackEventLog::clear();
    makeView();
    QVERIFY(KdTrackEventLog::records().isEmpty());
    view->show();
    QCOMPARE(KdTrackEventLog::records().size(), 1);
    const KdTrackEventRecord record = KdTrackEventLog::records().first();
    QCOMPARE(record.name, QStringLiteral("record_video_screen_tool_bar_expose"));
    QCOMPARE(record.properties.size(), 1);
    QCOMPARE(record.properties.first().first, QStringLiteral("record_type"));
    QCOMPARE(record.properties.first().second.toString(), QStringLiteral("camera_record"));
}

void tst_KdWebcamRecordView::finishedTakeComesWithItsDescription()
{
    showView();
    const QSignalSpy finished(view, &KdWebcamRecordView::sigFinished);
    const QString path = startTake();
    engine->deliverTime(10400);
    drain();
    passTime(10400);
    stopTake();
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().at(0).toString(), path);
    QCOMPARE(finished.first().at(1).toString(),
             QStringLiteral("{\n"
                            "    \"camera_record_backgroud\": \"\",\n"
                            "    \"camera_record_shape\": \"square\",\n"
                            "    \"device_name\": \"Cam A\",\n"
                            "    \"file_duration\": 10,\n"
                            "    \"frame_rate\": \"30fps\",\n"
                            "    \"is_camera_zoom\": true,\n"
                            "    \"is_use_mirror\": false,\n"
                            "    \"record_type\": \"camera_record\",\n"
                            "    \"video_resolution\": \"1920x1080\"\n"
                            "}\n"));
    QCOMPARE(finished.first().at(2).toString(), QStringLiteral("{\n"
                                                               "    \"file_format\": \"MP4\",\n"
                                                               "    \"file_type\": \"video\",\n"
                                                               "    \"video_codec\": \"H264\",\n"
                                                               "    \"video_muxer\": \"MP4\"\n"
                                                               "}\n"));
}

void tst_KdWebcamRecordView::optionsOfTheTakeAreDescribed()
{
    engine->script().frameRates = {29.97};
    showView();
    auto* const helper = panel->findChild<KdWebcamRecorderHelper*>();
    helper->setRecordDisplayShape(fcrsCircle);
    helper->setRecordFlip(true);
    const QSignalSpy finished(view, &KdWebcamRecordView::sigFinished);
    startTake();
    passTime(2000);
    stopTake();
    const QJsonObject info = object(finished.first().at(1));
    QCOMPARE(info.value(QLatin1String("frame_rate")).toString(), QStringLiteral("29.97fps"));
    QCOMPARE(info.value(QLatin1String("camera_record_shape")).toString(), QStringLiteral("circle"));
    QCOMPARE(info.value(QLatin1String("is_use_mirror")).toBool(), true);
}

void tst_KdWebcamRecordView::zoomIsToldOnceTheDialogGotASize()
{
    makeView();
    const QSignalSpy finished(view, &KdWebcamRecordView::sigFinished);
    const auto zoomed = [&] {
        Q_EMIT panel->sigCaptureFinished(QString(), QSize(1, 1), 1, 1, QString());
        return object(finished.last().at(1)).value(QLatin1String("is_camera_zoom")).toBool();
    };
    QVERIFY(!zoomed());
    QResizeEvent nothing(QSize(0, 0), QSize());
    QApplication::sendEvent(view, &nothing);
    QVERIFY(!zoomed());
    QResizeEvent something(QSize(1, 1), QSize());
    QApplication::sendEvent(view, &something);
    QVERIFY(zoomed());
    QApplication::sendEvent(view, &nothing);
    QVERIFY(zoomed());
}

void tst_KdWebcamRecordView::tooShortTakeIsReportedWithoutAPathAndInFull()
{
    showView();
    const QSignalSpy finished(view, &KdWebcamRecordView::sigFinished);
    startTake();
    answers->answerMessage(QDialogButtonBox::Ok);
    stopTake();
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().at(0).toString(), QString());
    QCOMPARE(object(finished.first().at(1)).size(), 9);
    QCOMPARE(object(finished.first().at(2)).size(), 4);
}

void tst_KdWebcamRecordView::startIsToldWhenItIsAskedFor()
{
    showView();
    const QSignalSpy pressed(view, &KdWebcamRecordView::sigStartRecordBtnClick);
    startTake();
    QCOMPARE(pressed.count(), 1);
}

void tst_KdWebcamRecordView::countdownFollowsTheWindow()
{
    showView();
    control<QDoubleSpinBox>(kSeconds)->setValue(9);
    click(kStart);
    auto* const overlay = control<KdCountCtrlVideo>(kCountdown);
    QVERIFY(overlay->isVisible());
    const auto isCentred = [this, overlay] {
        const auto* const display = control<QWidget>(kDisplay);
        const QPoint middle = display->mapToGlobal(display->rect().center());
        return (overlay->geometry().center() - middle).manhattanLength() <= 2;
    };
    QTRY_VERIFY(isCentred());
    view->move(view->pos() + QPoint(-90, -40));
    QTRY_VERIFY(isCentred());
    view->resize(view->size() - QSize(0, 60));
    QTRY_VERIFY(isCentred());
    view->close();
    QTRY_VERIFY(!view);
}

void tst_KdWebcamRecordView::languageChangeKeepsTheTake()
{
    showView();
    const QSignalSpy finished(view, &KdWebcamRecordView::sigFinished);
    const QString path = startTake();
    BracketingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    drain();
    QCOMPARE(view->windowTitle(), QStringLiteral("[Capture Video]"));
    passTime(2000);
    stopTake();
    QCOMPARE(finished.first().at(0).toString(), path);
    QCOMPARE(object(finished.first().at(1)).value(QLatin1String("camera_record_shape")).toString(),
             QStringLiteral("[square]"));
    QCoreApplication::removeTranslator(&translator);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordView>(argc, argv);
}

#include "tst_KdWebcamRecordView.moc"
