#include <Support/ScriptedEngine.h>

#include <KdEngineContractTests/KdEngineContractTests.h>

#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>

#include <atomic>
#include <thread>

namespace {

/** The time of the engine, on a thread beside that of the tests. */
class Clock
{
public:
    explicit Clock(ScriptedEngine& engine) : m_thread([this, &engine] { run(engine); }) {}
    ~Clock()
    {
        m_isOver = true;
        m_thread.join();
    }

private:
    void run(ScriptedEngine& engine)
    {
        for (qint64 elapsed = 20; !m_isOver; elapsed += 20) {
            engine.deliverTime(elapsed);
            engine.deliverVolume(50);
            const QSize size = engine.pictureSize();
            QImage picture(size.isEmpty() ? QSize(640, 480) : size, QImage::Format_ARGB32);
            picture.fill(Qt::blue);
            engine.deliverFrame(picture);
        }
    }

    std::atomic<bool> m_isOver{false};
    std::thread m_thread; ///< last: it uses the above
};

} // namespace

// The engine of the unit tests keeps the contract that every engine keeps.
int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const QTemporaryDir folder;
    ScriptedEngine engine;
    engine.script().take = "a take";
    engine.script().isStrict = true;
    KdEngineContractStage stage;
    stage.folder = folder.path();
    const Clock clock(engine);
    return KdEngineContractTests::run(stage, argc, argv);
}
