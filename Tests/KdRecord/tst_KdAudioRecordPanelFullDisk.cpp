#include "AudioRecordFixture.h"

#include <QFile>

using namespace KdVBLMODEL;

namespace {

const char* const kDiskFull = "The recording has ended because the disk is full. What was recorded "
                              "until then has been saved.";

} // namespace

/** Takes that the engine ends by itself. */
class tst_KdAudioRecordPanelFullDisk : public AudioRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void fullDiskEndsTheTakeWithTheFileAndAMessage_data();
    void fullDiskEndsTheTakeWithTheFileAndAMessage();
    void fullDiskThatLeftNoFileIsNoSuccess();
    void diskWithRoomIsNotCalledFull_data();
    void diskWithRoomIsNotCalledFull();
    void nextTakeCanBeRecorded();

private:
    /** The engine ends the take by itself, with that many megabytes left. */
    void endTake(qint64 freeMegabytes);
    void fillDisk() { endTake(0); }
};

void tst_KdAudioRecordPanelFullDisk::endTake(qint64 freeMegabytes)
{
    panel->setFolderCheck(withFreeSpace(freeMegabytes));
    engine->script().status = [](int status) {
        return status == fcsNoStart ? status : static_cast<int>(fcsEnded);
    };
}

void tst_KdAudioRecordPanelFullDisk::fullDiskEndsTheTakeWithTheFileAndAMessage_data()
{
    QTest::addColumn<QString>("state");
    for (const char* const state : {"recording", "paused", "asking"}) {
        QTest::newRow(state) << state;
    }
}

void tst_KdAudioRecordPanelFullDisk::fullDiskEndsTheTakeWithTheFileAndAMessage()
{
    QFETCH(QString, state);
    showPanel();
    reachState(state);
    passTime(2000);
    answers->answerMessage(QDialogButtonBox::Ok);
    fillDisk();
    QTRY_COMPARE(answers->messages(), texts({kDiskFull}));
    QCOMPARE(engine->count("stop"), 1);
    QCOMPARE(takes().size(), 1);
    QVERIFY(finishedPath.endsWith(takes().first()));
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!isLocked());
    QVERIFY(!button(kPause)->isVisible());
}

void tst_KdAudioRecordPanelFullDisk::fullDiskThatLeftNoFileIsNoSuccess()
{
    showPanel();
    QFile::remove(startTake());
    passTime(2000);
    answers->answerMessage(QDialogButtonBox::Ok);
    fillDisk();
    QTRY_COMPARE(answers->messages(), texts({kDeviceIssue}));
    QTRY_VERIFY(!button(kStart)->isChecked());
    QCOMPARE(finishedPath, QString());
}

void tst_KdAudioRecordPanelFullDisk::diskWithRoomIsNotCalledFull_data()
{
    QTest::addColumn<qint64>("freeMegabytes");
    QTest::newRow("plenty") << qint64(100000);
    QTest::newRow("just enough") << KdOutputFolderCheck::kEnoughMegabytes;
    QTest::newRow("unknown") << qint64(-1);
}

void tst_KdAudioRecordPanelFullDisk::diskWithRoomIsNotCalledFull()
{
    QFETCH(qint64, freeMegabytes);
    showPanel();
    startTake();
    passTime(2000);
    answers->answerMessage(QDialogButtonBox::Ok);
    endTake(freeMegabytes);
    QTRY_COMPARE(answers->messages(), texts({kDeviceIssue}));
    QCOMPARE(takes().size(), 1);
    QVERIFY(finishedPath.endsWith(takes().first()));
    QVERIFY(!button(kStart)->isChecked());
}

void tst_KdAudioRecordPanelFullDisk::nextTakeCanBeRecorded()
{
    showPanel();
    startTake();
    passTime(2000);
    answers->answerMessage(QDialogButtonBox::Ok);
    fillDisk();
    QTRY_COMPARE(answers->messages().size(), 1);
    engine->script().status = nullptr;
    panel->setFolderCheck(withFreeSpace(100000));
    localTime = localTime.addSecs(5);
    startTake();
    passTime(2000);
    stopTake();
    QCOMPARE(takes().size(), 2);
    QCOMPARE(answers->messages().size(), 1);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecordPanelFullDisk>(argc, argv);
}

#include "tst_KdAudioRecordPanelFullDisk.moc"
