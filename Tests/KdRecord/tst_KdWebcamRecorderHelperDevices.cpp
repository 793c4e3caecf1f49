#include "WebcamHelperFixture.h"

#include <QPointer>

#include <functional>

using namespace KdVBLMODEL;

using Responses = QVector<int>;
using Step = std::function<void(ReadyHelper&)>;
Q_DECLARE_METATYPE(Step)

/** What the adapter makes of devices that come and go, and of the check that the panel asks for. */
class tst_KdWebcamRecorderHelperDevices : public WebcamHelperFixture
{
    Q_OBJECT

private Q_SLOTS:
    void answersADeviceEvent_data();
    void answersADeviceEvent();
    void isInATakeFromTheCountdownToItsEnd_data();
    void isInATakeFromTheCountdownToItsEnd();
    void readsTheDevicesWhenOneIsLostInATake();
    void aDeviceEventOutsideATakeReadsNothing();

    void checksBothDevices_data();
    void checksBothDevices();
    void aMissingWebcamHasNoResolutionsAndRates();
    void aDeviceIsKnownByItsIdAndItsName_data();
    void aDeviceIsKnownByItsIdAndItsName();
    void noDeviceIsNeverMissed();
    void aCheckThatCannotListDevicesFindsNone();
    void forgetsACurrentDevice_data();
    void forgetsACurrentDevice();
    void canBeDestroyedFromItsResponses_data();
    void canBeDestroyedFromItsResponses();

private:
    Responses responsesTo(ReadyHelper& helper, int status) const;
    void unplug(bool webcam, bool microphone);
};

Responses tst_KdWebcamRecorderHelperDevices::responsesTo(ReadyHelper& helper, int status) const
{
    helper.takeResponses();
    m_engine->deliverDevice(status, 0);
    QCoreApplication::processEvents();
    return helper.takeResponses();
}

void tst_KdWebcamRecorderHelperDevices::unplug(bool webcam, bool microphone)
{
    if (webcam) {
        m_engine->script().webcams.clear();
    }
    if (microphone) {
        m_engine->script().microphones.clear();
    }
}

void tst_KdWebcamRecorderHelperDevices::answersADeviceEvent_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("isInTake");
    QTest::addColumn<bool>("isWebcamGone");
    QTest::addColumn<bool>("isMicrophoneGone");
    QTest::addColumn<Responses>("expected");
    QTest::newRow("webcam added") << 1 << false << false << false << Responses{5};
    QTest::newRow("webcam removed") << 2 << false << false << false << Responses{5};
    QTest::newRow("current webcam removed") << 2 << false << true << false << Responses{5};
    QTest::newRow("microphone added") << 3 << false << false << false << Responses{6};
    QTest::newRow("microphone removed") << 4 << false << false << false << Responses{6};
    QTest::newRow("current microphone removed") << 4 << false << false << true << Responses{6};
    QTest::newRow("occupied") << 5 << false << false << false << Responses{0};

    QTest::newRow("in a take: webcam added") << 1 << true << false << false << Responses{5};
    QTest::newRow("in a take: added, but gone") << 1 << true << true << true << Responses{5};
    QTest::newRow("in a take: other webcam removed") << 2 << true << false << false << Responses{5};
    QTest::newRow("in a take: webcam gone") << 2 << true << true << false << Responses{10};
    QTest::newRow("in a take: microphone gone, told as 2")
        << 2 << true << false << true << Responses{11};
    QTest::newRow("in a take: both gone") << 2 << true << true << true << Responses{10};
    QTest::newRow("in a take: microphone added") << 3 << true << false << false << Responses{6};
    QTest::newRow("in a take: other microphone removed")
        << 4 << true << false << false << Responses{6};
    QTest::newRow("in a take: microphone gone") << 4 << true << false << true << Responses{11};
    QTest::newRow("in a take: webcam gone, told as 4")
        << 4 << true << true << false << Responses{10};
    QTest::newRow("in a take: both gone, told as 4") << 4 << true << true << true << Responses{10};
    QTest::newRow("in a take: occupied") << 5 << true << true << true << Responses{0};

    for (const int unknown : {0, -1, 6, 99}) {
        QTest::addRow("unknown: %d", unknown) << unknown << false << true << true << Responses();
        QTest::addRow("in a take: unknown: %d", unknown)
            << unknown << true << true << true << Responses();
    }
}

void tst_KdWebcamRecorderHelperDevices::answersADeviceEvent()
{
    QFETCH(int, status);
    QFETCH(bool, isInTake);
    QFETCH(bool, isWebcamGone);
    QFETCH(bool, isMicrophoneGone);
    QFETCH(Responses, expected);
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.slotSetCurrentAudioDevice(0);
    if (isInTake) {
        helper.order(KdWebcamOrder::StartTake);
    }
    unplug(isWebcamGone, isMicrophoneGone);
    QCOMPARE(responsesTo(helper, status), expected);
}

void tst_KdWebcamRecorderHelperDevices::isInATakeFromTheCountdownToItsEnd_data()
{
    QTest::addColumn<Step>("step");
    QTest::addColumn<int>("expected");
    const auto order = [](int number) {
        return Step([number](ReadyHelper& helper) {
            helper.setCountCtrl();
            helper.order(number);
        });
    };
    QTest::newRow("at first") << Step([](ReadyHelper&) {}) << 5;
    QTest::newRow("countdown") << Step([](ReadyHelper& helper) { helper.setCountCtrl(); }) << 10;
    QTest::newRow("take") << Step([](ReadyHelper& helper) {
        helper.order(KdWebcamOrder::StartTake);
    }) << 10;
    QTest::newRow("pause") << order(KdWebcamOrder::PauseTake) << 10;
    QTest::newRow("resume") << order(KdWebcamOrder::ResumeTake) << 10;
    QTest::newRow("preview started") << order(KdWebcamOrder::StartPreview) << 10;
    QTest::newRow("preview stopped") << order(KdWebcamOrder::StopPreview) << 10;
    QTest::newRow("stop") << order(KdWebcamOrder::StopTake) << 5;
    QTest::newRow("stop of everything") << order(KdWebcamOrder::StopEverything) << 5;
    QTest::newRow("microphone forgotten") << Step([](ReadyHelper& helper) {
        helper.setCountCtrl();
        helper.clearCurrentDeviceInfo(false);
    }) << 5;
    QTest::newRow("webcam forgotten") << Step([](ReadyHelper& helper) {
        helper.setCountCtrl();
        helper.clearCurrentDeviceInfo(true);
    }) << 5;
}

void tst_KdWebcamRecorderHelperDevices::isInATakeFromTheCountdownToItsEnd()
{
    QFETCH(Step, step);
    QFETCH(int, expected);
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    step(helper);
    unplug(true, false);
    QCOMPARE(responsesTo(helper, fcdWebcamRemoved), Responses{expected});
}

void tst_KdWebcamRecorderHelperDevices::readsTheDevicesWhenOneIsLostInATake()
{
    ReadyHelper helper;
    helper.setCountCtrl();
    m_engine->clearCalls();
    unplug(true, true);
    responsesTo(helper, fcdAudioInputRemoved);
    QCOMPARE(m_engine->calls(),
             QStringList({QStringLiteral("getDevices(2)"), QStringLiteral("getDevices(8)")}));
    QVERIFY(helper.getWebcamDevices().isEmpty());
    QVERIFY(helper.getAudioDevices().isEmpty());
}

void tst_KdWebcamRecorderHelperDevices::aDeviceEventOutsideATakeReadsNothing()
{
    ReadyHelper helper;
    m_engine->clearCalls();
    for (const int status : {1, 2, 3, 4, 5}) {
        responsesTo(helper, status);
    }
    QVERIFY(m_engine->calls().isEmpty());
}

void tst_KdWebcamRecorderHelperDevices::checksBothDevices_data()
{
    QTest::addColumn<bool>("isWebcamGone");
    QTest::addColumn<bool>("isMicrophoneGone");
    QTest::addColumn<Responses>("expected");
    QTest::newRow("both there") << false << false << Responses{7, 8};
    QTest::newRow("webcam gone") << true << false << Responses{3, 8};
    QTest::newRow("microphone gone") << false << true << Responses{7, 4};
    QTest::newRow("both gone") << true << true << Responses{3, 4};
}

void tst_KdWebcamRecorderHelperDevices::checksBothDevices()
{
    QFETCH(bool, isWebcamGone);
    QFETCH(bool, isMicrophoneGone);
    QFETCH(Responses, expected);
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.slotSetCurrentAudioDevice(0);
    unplug(isWebcamGone, isMicrophoneGone);
    helper.takeResponses();
    m_engine->clearCalls();
    helper.order(KdWebcamOrder::CheckDevices);
    QCOMPARE(helper.takeResponses(), expected);
    QCOMPARE(m_engine->calls(),
             QStringList({QStringLiteral("getDevices(2)"), QStringLiteral("getDevices(8)")}));
    QCOMPARE(helper.getCurrentWebCamDeviceInfo().name, QStringLiteral("Webcam"));
    QCOMPARE(helper.getCurrentAudioDeviceInfo().name, QStringLiteral("Microphone"));
}

void tst_KdWebcamRecorderHelperDevices::aMissingWebcamHasNoResolutionsAndRates()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.order(KdWebcamOrder::CheckDevices);
    QCOMPARE(helper.resolutions(), m_engine->script().resolutions);
    QCOMPARE(helper.frameRates(), m_engine->script().frameRates);
    unplug(true, false);
    QList<QSize> seen{QSize(1, 1)};
    connect(&helper, &KdWebcamRecorderHelper::sigRecorderResponeType, &helper,
            [&](int) { seen += helper.resolutions(); });
    helper.order(KdWebcamOrder::CheckDevices);
    QCOMPARE(seen, QList<QSize>{QSize(1, 1)}); // emptied before anybody is told
    QVERIFY(helper.frameRates().isEmpty());
}

void tst_KdWebcamRecorderHelperDevices::aDeviceIsKnownByItsIdAndItsName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("isSame");
    const QString name = QStringLiteral("Webcam");
    const QString id = QStringLiteral("webcam-id");
    QTest::newRow("both") << name << id << true;
    QTest::newRow("same name, other id") << name << QStringLiteral("other") << false;
    QTest::newRow("same id, other name") << QStringLiteral("Other") << id << false;
    QTest::newRow("same but for case") << name.toUpper() << id << false;
}

void tst_KdWebcamRecorderHelperDevices::aDeviceIsKnownByItsIdAndItsName()
{
    QFETCH(QString, name);
    QFETCH(QString, id);
    QFETCH(bool, isSame);
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    // Another place in the list is no other device.
    m_engine->script().webcams = {device(kdtWebcam, 0, QStringLiteral("New")),
                                  {kdtWebcam, 1, name, id}};
    helper.takeResponses();
    helper.order(KdWebcamOrder::CheckDevices);
    QCOMPARE(helper.takeResponses().first(), isSame ? 7 : 3);
}

void tst_KdWebcamRecorderHelperDevices::noDeviceIsNeverMissed()
{
    unplug(true, true);
    ReadyHelper helper;
    helper.order(KdWebcamOrder::CheckDevices);
    QCOMPARE(helper.takeResponses(), Responses({7, 8}));
    helper.setCountCtrl();
    QCOMPARE(responsesTo(helper, fcdWebcamRemoved), Responses{5});
}

void tst_KdWebcamRecorderHelperDevices::aCheckThatCannotListDevicesFindsNone()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.slotSetCurrentAudioDevice(0);
    m_engine->fail("getDevices");
    expectLog(QStringLiteral("Failed to get webcam devicesInfo"));
    expectLog(QStringLiteral("Failed to get audioinput devicesInfo"));
    helper.takeResponses();
    helper.order(KdWebcamOrder::CheckDevices);
    QCOMPARE(helper.takeResponses(), Responses({3, 4}));
}

void tst_KdWebcamRecorderHelperDevices::forgetsACurrentDevice_data()
{
    QTest::addColumn<bool>("webcam");
    QTest::newRow("webcam") << true;
    QTest::newRow("microphone") << false;
}

void tst_KdWebcamRecorderHelperDevices::forgetsACurrentDevice()
{
    QFETCH(bool, webcam);
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.slotSetCurrentAudioDevice(0);
    helper.takeResponses();
    m_engine->clearCalls();
    helper.clearCurrentDeviceInfo(webcam);
    const _KdCaptureDevInf forgotten =
        webcam ? helper.getCurrentWebCamDeviceInfo() : helper.getCurrentAudioDeviceInfo();
    const _KdCaptureDevInf kept =
        webcam ? helper.getCurrentAudioDeviceInfo() : helper.getCurrentWebCamDeviceInfo();
    QCOMPARE(forgotten.devType, 0);
    QCOMPARE(forgotten.index, -1);
    QVERIFY(forgotten.name.isEmpty() && forgotten.id.isEmpty());
    QCOMPARE(kept.index, 0);
    QVERIFY(m_engine->calls().isEmpty());
    QVERIFY(m_engine->isPreviewing());
    QCOMPARE(helper.getWebcamDevices().size(), 1);
    QCOMPARE(helper.getAudioDevices().size(), 1);
    QCOMPARE(helper.resolutions(), m_engine->script().resolutions);
    QVERIFY(helper.takeResponses().isEmpty());
}

void tst_KdWebcamRecorderHelperDevices::canBeDestroyedFromItsResponses_data()
{
    QTest::addColumn<int>("response");
    QTest::addColumn<Step>("trigger");
    const auto event = [this](int status) {
        return Step([this, status](ReadyHelper&) { m_engine->deliverDevice(status, 0); });
    };
    const auto lossInTake = [this](int status) {
        return Step([this, status](ReadyHelper& helper) {
            helper.setCountCtrl();
            unplug(status == fcdWebcamRemoved, status == fcdAudioInputRemoved);
            m_engine->deliverDevice(status, 0);
        });
    };
    const auto check = [this](bool isWebcamGone, bool isMicrophoneGone) {
        return Step([=](ReadyHelper& helper) {
            unplug(isWebcamGone, isMicrophoneGone);
            helper.order(KdWebcamOrder::CheckDevices);
        });
    };
    const Step webcam([](ReadyHelper& helper) { helper.slotSetCurrentWebCamDevice(0); });
    const Step microphone([](ReadyHelper& helper) { helper.slotSetCurrentAudioDevice(0); });
    const Step size([](ReadyHelper& helper) { helper.slotSetCurrentResolution(QSize(1, 1)); });

    QTest::newRow("occupied") << 0 << event(fcdWebcamOccupied);
    QTest::newRow("webcam switched") << 1 << webcam;
    QTest::newRow("microphone switched") << 2 << microphone;
    QTest::newRow("webcam gone") << 3 << check(true, false);
    QTest::newRow("microphone gone") << 4 << check(false, true);
    QTest::newRow("webcams changed") << 5 << event(fcdWebcamListChanged);
    QTest::newRow("microphones changed") << 6 << event(fcdAudioInputAdded);
    QTest::newRow("webcam there") << 7 << check(false, false);
    QTest::newRow("microphone there") << 8 << check(false, false);
    QTest::newRow("resolution of a switch") << 9 << webcam;
    QTest::newRow("resolution") << 9 << size;
    QTest::newRow("webcam gone in a take") << 10 << lossInTake(fcdWebcamRemoved);
    QTest::newRow("microphone gone in a take") << 11 << lossInTake(fcdAudioInputRemoved);
}

/** A receiver may open a modal message, and the host may close the dialog meanwhile. */
void tst_KdWebcamRecorderHelperDevices::canBeDestroyedFromItsResponses()
{
    QFETCH(int, response);
    QFETCH(Step, trigger);
    QPointer<ReadyHelper> helper = new ReadyHelper;
    helper->slotSetCurrentWebCamDevice(0);
    helper->slotSetCurrentAudioDevice(0);
    connect(helper, &KdWebcamRecorderHelper::sigRecorderResponeType, [&helper, response](int code) {
        if (code == response) {
            delete helper;
        }
    });
    trigger(*helper);
    QTRY_VERIFY(!helper);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecorderHelperDevices>(argc, argv);
}

#include "tst_KdWebcamRecorderHelperDevices.moc"
