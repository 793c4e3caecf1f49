// Puts the engine through the tests of the contract:
//   FILE_ENGINE_DEVICES=folder check-engine

#include <KdEngineContractTests/KdEngineContractTests.h>

#include <QGuiApplication>
#include <QTemporaryDir>

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const QTemporaryDir folder;
    KdEngineContractStage stage;
    stage.folder = folder.path();
    stage.slowdown = 4; // not for timing, for machines that build something meanwhile
    return KdEngineContractTests::run(stage, argc, argv);
}
