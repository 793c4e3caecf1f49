#include <Support/ScriptedEngine.h>

#include <KdEngineContractTests/KdEngineContractTests.h>

#include <QGuiApplication>
#include <QTemporaryDir>

// The engine of the unit tests keeps the contract that every engine keeps.
int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const QTemporaryDir folder;
    ScriptedEngine engine;
    engine.script().take = "a take";
    QImage picture(engine.script().resolutions.first(), QImage::Format_ARGB32);
    picture.fill(Qt::blue);
    qint64 elapsed = 0;
    KdEngineContractStage stage;
    stage.folder = folder.path();
    stage.drive = [&] {
        elapsed += 20;
        engine.deliverTime(elapsed);
        engine.deliverVolume(50);
        engine.deliverFrame(picture);
    };
    return KdEngineContractTests::run(stage, argc, argv);
}
