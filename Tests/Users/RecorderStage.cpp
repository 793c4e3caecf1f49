#include "RecorderScenes.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KRecordSettingParam.h>
#include <KdZentraCore/KdUtility.h>

#include <Support/DialogDriver.h>

#include <QApplication>
#include <QDoubleSpinBox>
#include <QTest>

using namespace KdVBLMODEL;

RecorderStage::RecorderStage(bool withDevices)
{
    KRecordSettingParam::instance()->release();
    KdAppSettings::GetInstance()->Load();
    auto* const folders = KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings();
    folders->SetRecoderVoiceFolder(m_folder.path());
    folders->SetCaptureFileFolder(m_folder.path());
    EngineScript& script = m_engine.script();
    script.take = QByteArrayLiteral("take");
    script.microphones.clear();
    script.webcams.clear();
    if (withDevices) {
        script.microphones = {{kdtMicrophone, 0, QStringLiteral("Mic A"), QStringLiteral("m1")},
                              {kdtMicrophone, 1, QStringLiteral("Mic B"), QStringLiteral("m2")}};
        script.webcams = {{kdtWebcam, 0, QStringLiteral("Cam A"), QStringLiteral("c1")},
                          {kdtWebcam, 1, QStringLiteral("Cam B"), QStringLiteral("c2")}};
    }
    script.resolutions = {QSize(1280, 720), QSize(640, 480)};
    KdUtility::gSetMainWindow(&m_host);
}

RecorderStage::~RecorderStage()
{
    delete m_view;
    KdUtility::gSetMainWindow(nullptr);
}

void RecorderStage::setView(QWidget* view)
{
    m_view = view;
    show(view);
}

void RecorderStage::show(QWidget* window)
{
    window->show();
    if (!QTest::qWaitForWindowActive(window)) {
        DialogDriver::fail(QStringLiteral("The window does not get the keyboard"));
    }
}

void RecorderStage::press(const char* button)
{
    DialogDriver::click(*m_view, QLatin1String(button));
}

void RecorderStage::setCountdown(const char* box, int seconds)
{
    m_view->findChild<QDoubleSpinBox*>(QLatin1String(box))->setValue(seconds);
}

void RecorderStage::record(const char* start, const char* countdown)
{
    setCountdown(countdown, 0);
    press(start);
    DialogDriver::waitUntil([this] { return m_engine.count("start") > 0; },
                            QStringLiteral("the take"));
    m_engine.deliverTime(83000);
    m_engine.deliverVolume(64);
    QCoreApplication::processEvents();
}

void RecorderStage::waitForWindow(const char* className)
{
    const auto isShown = [className] {
        const QVector<QWidget*> windows = windowsOnScreen();
        return std::any_of(windows.cbegin(), windows.cend(), [className](const QWidget* window) {
            return window->inherits(className);
        });
    };
    DialogDriver::waitUntil(isShown, QLatin1String(className));
}
