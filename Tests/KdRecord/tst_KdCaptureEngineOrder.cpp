#include "Support/KdTestCase.h"

#include <KdRecord/KdCaptureEngine.h>

#include <array>
#include <cstddef>
#include <cstring>

using namespace KdVBLMODEL;

namespace {

/**
 * An engine that was built apart from this library is called by the places of its operations alone.
 * @return the place of a virtual one, counted from 0: the ABI keeps its distance in the table, plus
 * one, where the address of any other operation would be.
 */
template <typename Operation>
int placeOf(Operation operation)
{
    std::array<std::ptrdiff_t, 2> raw{};
    static_assert(sizeof(operation) == sizeof(raw), "Not the ABI that this test is made for");
    std::memcpy(raw.data(), &operation, sizeof(raw));
    return static_cast<int>((raw[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)));
}

/** What is declared next comes behind everything that a recorder has. */
class BehindAudioRecorder : public IKdAudioRecorder
{
public:
    virtual void next() = 0;

protected:
    ~BehindAudioRecorder() = default;
};

class BehindWebcamRecorder : public IKdWebcamRecorder
{
public:
    virtual void next() = 0;

protected:
    ~BehindWebcamRecorder() = default;
};

} // namespace

class tst_KdCaptureEngineOrder : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void audioRecorderKeepsItsOrder_data();
    void audioRecorderKeepsItsOrder() { comparePlaces(); }
    void webcamRecorderKeepsItsOrder_data();
    void webcamRecorderKeepsItsOrder() { comparePlaces(); }

private:
    static void addPlace(const char* name, int expected, int place);
    static void comparePlaces();
};

void tst_KdCaptureEngineOrder::addPlace(const char* name, int expected, int place)
{
    QTest::newRow(name) << place << expected;
}

void tst_KdCaptureEngineOrder::comparePlaces()
{
    QFETCH(int, place);
    QFETCH(int, expected);
    QCOMPARE(place, expected);
}

void tst_KdCaptureEngineOrder::audioRecorderKeepsItsOrder_data()
{
    using Recorder = IKdAudioRecorder;
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("expected");
    addPlace("start", 0, placeOf(&Recorder::start));
    addPlace("pause", 1, placeOf(&Recorder::pause));
    addPlace("resume", 2, placeOf(&Recorder::resume));
    addPlace("stop", 3, placeOf(&Recorder::stop));
    addPlace("setAudioFormat", 4, placeOf(&Recorder::setAudioFormat));
    addPlace("reserved6", 5, placeOf(&Recorder::reserved6));
    addPlace("setCallbackSwitch1", 6, placeOf(&Recorder::setCallbackSwitch1));
    addPlace("setCallbackSwitch2", 7, placeOf(&Recorder::setCallbackSwitch2));
    addPlace("setCallbackSwitch3", 8, placeOf(&Recorder::setCallbackSwitch3));
    addPlace("setInterval", 9, placeOf(&Recorder::setInterval));
    addPlace("getDevices", 10, placeOf(&Recorder::getDevices));
    addPlace("setDevice", 11, placeOf(&Recorder::setDevice));
    addPlace("setOutputFile", 12, placeOf(&Recorder::setOutputFile));
    addPlace("getOutputFile", 13, placeOf(&Recorder::getOutputFile));
    addPlace("curStatus", 14, placeOf(&Recorder::curStatus));
    addPlace("addEventObserver", 15, placeOf(&Recorder::addEventObserver));
    addPlace("removeEventObserver", 16, placeOf(&Recorder::removeEventObserver));
    addPlace("release", 17, placeOf(&Recorder::release));
    addPlace("nothing more", 18, placeOf(&BehindAudioRecorder::next));
}

void tst_KdCaptureEngineOrder::webcamRecorderKeepsItsOrder_data()
{
    using Recorder = IKdWebcamRecorder;
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("expected");
    addPlace("start", 0, placeOf(&Recorder::start));
    addPlace("pause", 1, placeOf(&Recorder::pause));
    addPlace("resume", 2, placeOf(&Recorder::resume));
    addPlace("stop", 3, placeOf(&Recorder::stop));
    addPlace("setResolution", 4, placeOf(&Recorder::setResolution));
    addPlace("setVideoFormat", 5, placeOf(&Recorder::setVideoFormat));
    addPlace("setAudioFormat", 6, placeOf(&Recorder::setAudioFormat));
    addPlace("getResolutions", 7, placeOf(&Recorder::getResolutions));
    addPlace("getFrameRates", 8, placeOf(&Recorder::getFrameRates));
    addPlace("setCallbackSwitch1", 9, placeOf(&Recorder::setCallbackSwitch1));
    addPlace("setCallbackSwitch2", 10, placeOf(&Recorder::setCallbackSwitch2));
    addPlace("setCallbackSwitch3", 11, placeOf(&Recorder::setCallbackSwitch3));
    addPlace("setRecordAudio", 12, placeOf(&Recorder::setRecordAudio));
    addPlace("setInterval", 13, placeOf(&Recorder::setInterval));
    addPlace("getDevices", 14, placeOf(&Recorder::getDevices));
    addPlace("setDevice", 15, placeOf(&Recorder::setDevice));
    addPlace("setOutputFile", 16, placeOf(&Recorder::setOutputFile));
    addPlace("getOutputFile", 17, placeOf(&Recorder::getOutputFile));
    addPlace("reserved19", 18, placeOf(&Recorder::reserved19));
    addPlace("startPreview", 19, placeOf(&Recorder::startPreview));
    addPlace("stopPreview", 20, placeOf(&Recorder::stopPreview));
    addPlace("curStatus", 21, placeOf(&Recorder::curStatus));
    addPlace("addEventObserver", 22, placeOf(&Recorder::addEventObserver));
    addPlace("removeEventObserver", 23, placeOf(&Recorder::removeEventObserver));
    addPlace("release", 24, placeOf(&Recorder::release));
    addPlace("setRecordDisplayShape", 25, placeOf(&Recorder::setRecordDisplayShape));
    addPlace("getRecordDisplayShape", 26, placeOf(&Recorder::getRecordDisplayShape));
    addPlace("setBackgroundMode", 27, placeOf(&Recorder::setBackgroundMode));
    addPlace("getBackgroundMode", 28, placeOf(&Recorder::getBackgroundMode));
    addPlace("reserved30", 29, placeOf(&Recorder::reserved30));
    addPlace("reserved31", 30, placeOf(&Recorder::reserved31));
    addPlace("setOnlyWebcam", 31, placeOf(&Recorder::setOnlyWebcam));
    addPlace("setRecordFlip", 32, placeOf(&Recorder::setRecordFlip));
    addPlace("getRecordFlip", 33, placeOf(&Recorder::getRecordFlip));
    addPlace("nothing more", 34, placeOf(&BehindWebcamRecorder::next));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdCaptureEngineOrder>(argc, argv);
}

#include "tst_KdCaptureEngineOrder.moc"
