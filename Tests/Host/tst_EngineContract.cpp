#include <Support/VirtualCamera.h>
#include <Support/VirtualMicrophone.h>

#include <KdEngineContractTests/KdEngineContractTests.h>
#include <KdRecord/KdCaptureEngine.h>

#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <cstdlib>

namespace {

bool seesDevices()
{
    KdVBLMODEL::IKdWebcamRecorder* const recorder = KdVBLMODEL::createWebcamRecorder();
    const bool seen = QTest::qWaitFor(
        [recorder] {
            QList<KdVBLMODEL::KdCaptureDevInfo> microphones;
            QList<KdVBLMODEL::KdCaptureDevInfo> webcams;
            recorder->getDevices(KdVBLMODEL::kdtMicrophone, &microphones);
            recorder->getDevices(KdVBLMODEL::kdtWebcam, &webcams);
            return !microphones.isEmpty() && !webcams.isEmpty();
        },
        20000);
    recorder->release();
    return seen;
}

} // namespace

// The engine on GStreamer keeps the contract that every engine keeps.
int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const QTemporaryDir folder;
    VirtualMicrophone microphone;
    VirtualCamera camera;
    if (!microphone.plug() || !camera.plug() || !seesDevices()) {
        std::fputs("The virtual devices did not come.\n", stderr);
        return EXIT_FAILURE;
    }
    KdEngineContractStage stage;
    stage.folder = folder.path();
    stage.slowdown = KD_CONTRACT_SLOWDOWN;
    return KdEngineContractTests::run(stage, argc, argv);
}
