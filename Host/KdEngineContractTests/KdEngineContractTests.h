#pragma once

#include <QString>

#include <functional>

/** What the tests of the contract need from the surroundings of an engine. */
struct KdEngineContractStage
{
    QString folder;        ///< an empty folder for takes, that can be written to
    bool hasWebcam = true; ///< whether the engine has a webcam to show; its tests are left out else
    int slowdown = 1;      ///< how much longer than promised everything may take on this machine
    /**
     * Called again and again on the main thread while a test waits for callbacks, for an engine
     * that has to be driven. May be empty.
     */
    std::function<void()> drive;
};

/**
 * The contract of <KdRecord/KdCaptureEngine.h> as tests, of whichever engine's factories the
 * program is linked with. The engine needs one microphone at least, and a webcam unless the stage
 * says otherwise, that are there from the start and stay.
 */
namespace KdEngineContractTests {

/**
 * Runs the tests. Needs an application object. Main thread.
 * @param stage the engine's surroundings
 * @param argc as main() has it
 * @param argv as main() has it; the options are those of Qt Test
 * @return the number of tests that failed, 0 when the engine keeps the contract
 */
int run(const KdEngineContractStage& stage, int argc, char** argv);

} // namespace KdEngineContractTests
