#include "VoiceOverStage.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KdAudioRecordHelper.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdDoubleSpinBox.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdToolButton.h>
#include <KdZentraCore/KdUtility.h>

#include <QDir>
#include <QJsonDocument>
#include <QTest>

using DialogDriver::waitUntil;

VoiceOverStage::VoiceOverStage(const QString& folder) : m_mainWindow(std::make_unique<QWidget>())
{
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    KdAppSettings::GetInstance()->Load();
    KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetRecoderVoiceFolder(folder);
    m_mainWindow->setObjectName(QStringLiteral("MainWindow"));
    m_mainWindow->setGeometry(40, 40, 800, 500);
    m_mainWindow->show();
    KdUtility::gSetMainWindow(m_mainWindow.get());
}

VoiceOverStage::~VoiceOverStage()
{
    delete m_view;
    KdUtility::gSetMainWindow(nullptr);
}

bool VoiceOverStage::open()
{
    show();
    return waitUntil(
        [this] { return control<>(QStringLiteral("KAudioCapture_RecorderButton"))->isEnabled(); },
        QStringLiteral("a microphone in the dialog's list"), 8000);
}

void VoiceOverStage::show()
{
    m_view = new KdAudioRecordView(m_mainWindow.get());
    connectView();
    m_view->doModal();
    QVERIFY(QTest::qWaitForWindowExposed(m_view));
    setCountdown(0);
}

void VoiceOverStage::connectView()
{
    QObject::connect(m_view, &KdAudioRecordView::sigFinished, m_view,
                     [this](const QString& path, const QString& info, const QString& exportInfo) {
                         note(path, info, exportInfo);
                     });
    QObject::connect(m_view, &KdAudioRecordView::sigStartCapture, m_view, [this](bool again) {
        ++m_starts;
        m_restarts += again ? 1 : 0;
        m_lastElapsed = 0;
        m_frames.clear();
    });
    QObject::connect(m_view, &KdAudioRecordView::sigCaptureDoing, m_view,
                     [this](qint64 frame) { m_frames.append(frame); });
    QObject::connect(m_view, &KdAudioRecordView::sigClose, m_view, [this] { ++m_closings; });
    const auto* const helper = m_view->findChild<KdAudioRecorderHelper*>();
    QVERIFY(helper);
    QObject::connect(helper, &KdAudioRecorderHelper::sigRecordedTime, m_view,
                     [this](qint64 msec) { m_lastElapsed = msec; });
}

void VoiceOverStage::note(const QString& path, const QString& fileInfo,
                          const QString& fileExportInfo)
{
    m_reports.append(
        {path, QJsonDocument::fromJson(fileInfo.toUtf8()).object(), fileInfo, fileExportInfo});
}

void VoiceOverStage::press(const QString& name, const TestPlace& place) const
{
    DialogDriver::click(*m_view, name, place);
}

void VoiceOverStage::pressRecord(const TestPlace& place) const
{
    press(QStringLiteral("KAudioCapture_RecorderButton"), place);
}

QString VoiceOverStage::deviceText() const
{
    return control<KdComboBox>(QStringLiteral("KAudioCapture_DeviceBox"))->currentText();
}

void VoiceOverStage::setCountdown(int seconds) const
{
    control<KdDoubleSpinBox>(QStringLiteral("KAudioCapture_CountdownBox"))->setValue(seconds);
}

bool VoiceOverStage::startTake(const TestPlace& place)
{
    const int before = m_starts;
    pressRecord(place);
    return waitUntil([this, before] { return m_starts > before; },
                     QStringLiteral("the start of the take"), 15000, place);
}

bool VoiceOverStage::waitForElapsed(qint64 msec, const TestPlace& place) const
{
    return waitUntil([this, msec] { return m_lastElapsed >= msec; },
                     QStringLiteral("%1 ms of recorded time").arg(msec),
                     static_cast<int>(msec) + 10000, place);
}

bool VoiceOverStage::stopTake(const TestPlace& place)
{
    const int before = m_reports.size();
    pressRecord(place);
    return waitForReports(before + 1, place);
}

bool VoiceOverStage::waitForReports(int count, const TestPlace& place) const
{
    return waitUntil([this, count] { return m_reports.size() >= count; },
                     QStringLiteral("%1 finished reports").arg(count), 10000, place);
}
