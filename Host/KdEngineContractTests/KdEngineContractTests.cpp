#include "KdEngineContractTests.h"

#include "KdEngineContract.h"

#include <QSet>

using namespace KdContract;
using namespace KdVBLMODEL;

void KdEngineContract::aNewRecorderHasNotStarted()
{
    QCOMPARE(Owned<IKdAudioRecorder>(createAudioRecorder(nullptr))->curStatus(), fcsNoStart);
    QCOMPARE(Owned<IKdWebcamRecorder>(createWebcamRecorder())->curStatus(), fcsNoStart);
}

void KdEngineContract::stoppingWithoutATakeSucceeds()
{
    QVERIFY(audio()->stop());
}

void KdEngineContract::pausingWithoutATakeChangesNothing()
{
    const auto recorder = audio();
    recorder->pause();
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    recorder->resume();
    QCOMPARE(recorder->curStatus(), fcsNoStart);
}

void KdEngineContract::checkNumbers(const QList<_KdCaptureDevInf>& devices, _KdDevType type)
{
    QVERIFY2(!devices.isEmpty(), "the tests need a device");
    QSet<QString> ids;
    for (int i = 0; i < devices.size(); ++i) {
        QCOMPARE(devices.at(i).index, i);
        QCOMPARE(devices.at(i).devType, static_cast<qint32>(type));
        QVERIFY(!devices.at(i).name.isEmpty());
        QVERIFY(!devices.at(i).id.isEmpty());
        ids.insert(devices.at(i).id);
    }
    QCOMPARE(ids.size(), devices.size());
}

void KdEngineContract::microphonesAreNumberedByTheirPlace()
{
    const auto recorder = audio();
    QList<_KdCaptureDevInf> devices;
    recorder->getDevices(&devices);
    checkNumbers(devices, kdtMicrophone);
}

void KdEngineContract::anUnknownIndexDoesNotStart_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("none") << -1;
    QTest::newRow("below") << -2;
    QTest::newRow("above") << 1000;
}

void KdEngineContract::anUnknownIndexDoesNotStart()
{
    QFETCH(int, index);
    const auto recorder = audio(index);
    QVERIFY(!recorder->start());
    QCOMPARE(recorder->curStatus(), fcsNoStart);
}

void KdEngineContract::anUnusableFileDoesNotStart()
{
    const auto recorder = audio();
    recorder->setOutputFile(QDir(m_stage.folder).filePath(QStringLiteral("missing/take.m4a")));
    QVERIFY(!recorder->start());
    QCOMPARE(recorder->curStatus(), fcsNoStart);
}

void KdEngineContract::aStrangersFileIsNotOverwritten()
{
    checkStrangersFileIsKept(*audio());
}

void KdEngineContract::theOwnLastTakeIsRecordedAgain()
{
    KdContractObserver observer;
    const auto recorder = audio();
    listen(*recorder, observer);
    const QString file = newFile(QStringLiteral("m4a"));
    for (int take = 0; take < 2; ++take) {
        const int before = observer.times();
        recorder->setOutputFile(file);
        QVERIFY(recorder->start());
        QVERIFY(comes([&] { return observer.times() > before + 1; }));
        QVERIFY(recorder->stop());
        QVERIFY(isFile(file));
    }
    recorder->removeEventObserver(&observer);
}

void KdEngineContract::startingInMidTakeEndsTheRunningTake()
{
    KdContractObserver observer;
    const auto recorder = audio();
    listen(*recorder, observer);
    const QString first = recorder->getOutputFile();
    QVERIFY(recorder->start());
    QVERIFY(comes([&] { return observer.times() > 1; }));
    const QString second = newFile(QStringLiteral("m4a"));
    recorder->setOutputFile(second);
    QVERIFY(recorder->start());
    QVERIFY(isFile(first));
    QCOMPARE(recorder->getOutputFile(), second);
    QCOMPARE(recorder->curStatus(), fcsRecording);
    QVERIFY(recorder->stop());
    recorder->removeEventObserver(&observer);
}

void KdEngineContract::nothingIsIgnored()
{
    const auto recorder = audio();
    recorder->setAudioFormat(nullptr);
    recorder->getDevices(nullptr);
    recorder->addEventObserver(nullptr);
    recorder->removeEventObserver(nullptr);
    KdContractObserver stranger;
    recorder->removeEventObserver(&stranger);
    QCOMPARE(recorder->curStatus(), fcsNoStart);
}

void KdEngineContract::aTakeGoesThroughItsStatesAndLeavesAFile()
{
    KdContractObserver observer;
    const auto recorder = audio();
    listen(*recorder, observer);
    QVERIFY(recorder->start());
    QCOMPARE(recorder->curStatus(), fcsRecording);
    QVERIFY(comes([&] { return observer.lastTime() > 0; }));
    recorder->pause();
    QCOMPARE(recorder->curStatus(), fcsPaused);
    recorder->resume();
    QCOMPARE(recorder->curStatus(), fcsRecording);
    QVERIFY(recorder->stop());
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    QVERIFY(isFile(recorder->getOutputFile()));
    recorder->removeEventObserver(&observer);
}

void KdEngineContract::aRecorderMakesOneTakeAfterTheOther()
{
    KdContractObserver observer;
    const auto recorder = audio();
    listen(*recorder, observer);
    for (int take = 0; take < 3; ++take) {
        const QString file = newFile(QStringLiteral("m4a"));
        const int before = observer.times();
        recorder->setOutputFile(file);
        QVERIFY(recorder->start());
        QVERIFY(comes([&] { return observer.times() > before + 1; }));
        QVERIFY(recorder->stop());
        QVERIFY(isFile(file));
    }
    recorder->removeEventObserver(&observer);
}

void KdEngineContract::theNextFileIsForTheNextTake()
{
    KdContractObserver observer;
    const auto recorder = audio();
    listen(*recorder, observer);
    const QString first = newFile(QStringLiteral("m4a"));
    const QString second = newFile(QStringLiteral("m4a"));
    recorder->setOutputFile(first);
    QVERIFY(recorder->start());
    QVERIFY(comes([&] { return observer.times() > 1; }));
    recorder->setOutputFile(second);
    QCOMPARE(recorder->getOutputFile(), first);
    QVERIFY(recorder->stop());
    QVERIFY(isFile(first));
    QVERIFY(!QFileInfo::exists(second));
    recorder->removeEventObserver(&observer);
}

void KdEngineContract::releasingEndsTheTake()
{
    KdContractObserver observer;
    auto recorder = audio();
    listen(*recorder, observer);
    const QString file = newFile(QStringLiteral("m4a"));
    recorder->setOutputFile(file);
    QVERIFY(recorder->start());
    QVERIFY(comes([&] { return observer.times() > 1; }));
    recorder->removeEventObserver(&observer);
    recorder.reset();
    QVERIFY(isFile(file));
}

void KdEngineContract::timeAndLevelAreReportedOnOtherThreads()
{
    KdContractObserver observer;
    const auto recorder = audio();
    listen(*recorder, observer);
    QVERIFY(recorder->start());
    QVERIFY(comes([&] { return observer.times() > 3 && observer.volumes() > 3; }));
    QVERIFY(recorder->stop());
    recorder->removeEventObserver(&observer);
    QVERIFY(!observer.wasCalledOnTheMainThread());
    QVERIFY(!observer.hasHeardNonsense());
}

void KdEngineContract::switchesTurnReportsOff()
{
    KdContractObserver observer;
    const auto recorder = audio();
    listen(*recorder, observer);
    recorder->setCallbackSwitch2(false);
    QVERIFY(recorder->start());
    QVERIFY(comes([&] { return observer.volumes() > 3; }));
    QCOMPARE(observer.times(), 0);
    QVERIFY(recorder->stop());
    recorder->removeEventObserver(&observer);
}

void KdEngineContract::removingAnObserverIsABarrier()
{
    const auto recorder = audio();
    KdContractObserver stays;
    listen(*recorder, stays);
    QVERIFY(recorder->start());
    for (int round = 0; round < kRounds; ++round) {
        KdContractObserver goes;
        recorder->addEventObserver(&goes);
        QVERIFY(comes([&] { return goes.times() + goes.volumes() > 0; }));
        recorder->removeEventObserver(&goes);
        goes.setRemoved();
        const int before = stays.times();
        QVERIFY(comes([&] { return stays.times() > before; }));
        QVERIFY(!goes.wasCalledAfterRemoval());
    }
    QVERIFY(recorder->stop());
    recorder->removeEventObserver(&stays);
}

void KdEngineContract::noCallTakesLongerThanPromised()
{
    KdContractObserver observer;
    const auto recorder = audio();
    QVERIFY(isOver(kCallMs, [&] { listen(*recorder, observer); }));
    QVERIFY(isOver(kCallMs, [&] { QVERIFY(recorder->start()); }));
    QVERIFY(comes([&] { return observer.times() > 1; }));
    QVERIFY(isOver(kCallMs, [&] { recorder->pause(); }));
    QVERIFY(isOver(kCallMs, [&] { recorder->resume(); }));
    QVERIFY(isOver(kStopMs, [&] { QVERIFY(recorder->stop()); }));
    QVERIFY(isOver(kCallMs, [&] { recorder->removeEventObserver(&observer); }));
}

int KdEngineContractTests::run(const KdEngineContractStage& stage, int argc, char** argv)
{
    KdEngineContract contract(stage);
    return QTest::qExec(&contract, argc, argv);
}
