#include <KdRecord/KdAudioDriverInstaller.h>

#include <Support/KdTestCase.h>

#include <QDir>

#include <type_traits>

static_assert(std::is_empty_v<KdAudioDriverInstaller>);
static_assert(std::is_copy_assignable_v<KdAudioDriverInstaller>);
static_assert(std::is_move_assignable_v<KdAudioDriverInstaller>);

class tst_KdAudioDriverInstaller : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    // Runs without a sound server and without any device.
    void theDriverIsThereOnAMachineWithoutDevices()
    {
        QVERIFY(KdAudioDriverInstaller::isAudioDriverInstalled());
        QVERIFY(KdAudioDriverInstaller::autoInstallAudioDriver());
    }

    void installingAgainAndAgainDoesNothing()
    {
        for (int i = 0; i < 100; ++i) {
            QVERIFY(KdAudioDriverInstaller::autoInstallAudioDriver());
        }
        QVERIFY(KdAudioDriverInstaller::isAudioDriverInstalled());
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
        QVERIFY(logLines().isEmpty());
        QVERIFY(QDir(documentDir()).isEmpty());
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioDriverInstaller>(argc, argv);
}

#include "tst_KdAudioDriverInstaller.moc"
