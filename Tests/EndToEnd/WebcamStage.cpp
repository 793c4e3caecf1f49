#include "WebcamStage.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdCore/KdLazySingletonManager.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdRecord/KdWebcamRecorderHelper.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdDoubleSpinBox.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdZentraCore/KdUtility.h>

#include <QJsonDocument>
#include <QTest>

#include <mutex>

using DialogDriver::waitUntil;

class WebcamStage::Frames
{
public:
    void note(const QSize& size)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_size = size;
        ++m_count;
    }
    void forget()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_count = 0;
    }
    bool hasCome(const QSize& size) const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_count > 0 && (m_size == size || !size.isValid());
    }
    QSize size() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_size;
    }

private:
    mutable std::mutex m_mutex;
    QSize m_size;
    int m_count = 0;
};

WebcamStage::WebcamStage(const QString& folder)
    : m_mainWindow(std::make_unique<QWidget>()), m_frames(std::make_unique<Frames>())
{
    // What an earlier test chose would be chosen again.
    KdLazySingletonManager::instance()->releaseAll();
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    KdAppSettings::GetInstance()->Load();
    KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetCaptureFileFolder(folder);
    m_mainWindow->setObjectName(QStringLiteral("MainWindow"));
    m_mainWindow->setGeometry(40, 40, 800, 500);
    m_mainWindow->show();
    KdUtility::gSetMainWindow(m_mainWindow.get());
}

WebcamStage::~WebcamStage()
{
    delete m_view;
    KdUtility::gSetMainWindow(nullptr);
}

void WebcamStage::show()
{
    m_view = new KdWebcamRecordView(m_mainWindow.get());
    connectView();
    m_view->initDevices();
    m_view->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_view));
    setCountdown(0);
}

bool WebcamStage::open()
{
    show();
    return waitUntil([this] { return control<>(kStart)->isEnabled(); },
                     QStringLiteral("a camera in the dialog's list"), 8000) &&
           waitUntil([this] { return m_frames->size().isValid(); },
                     QStringLiteral("the camera's picture"), 8000);
}

void WebcamStage::connectView()
{
    QObject::connect(m_view, &KdWebcamRecordView::sigFinished, m_view,
                     [this](const QString& path, const QString& info, const QString& exportInfo) {
                         m_reports.append({path, QJsonDocument::fromJson(info.toUtf8()).object(),
                                           QJsonDocument::fromJson(exportInfo.toUtf8()).object()});
                     });
    QObject::connect(m_view, &KdWebcamRecordView::sigClose, m_view, [this] { ++m_closings; });
    m_helper = m_view->findChild<KdWebcamRecorderHelper*>();
    QVERIFY(m_helper);
    QObject::connect(m_helper, &KdWebcamRecorderHelper::sigRecordedTime, m_view,
                     [this](qint64 msec) { m_lastElapsed = msec; });
    QObject::connect(
        m_helper, &KdWebcamRecorderHelper::sigWebCamFrameChanged, m_helper,
        [frames = m_frames.get()](int width, int height) { frames->note(QSize(width, height)); },
        Qt::DirectConnection);
}

void WebcamStage::press(const char* name, const TestPlace& place) const
{
    DialogDriver::click(*m_view, QString::fromLatin1(name), place);
}

void WebcamStage::pressOption(const char* name, const TestPlace& place) const
{
    auto* const display = control<>(kDisplay, place);
    QTest::mouseMove(display, display->rect().center());
    auto* const button = display->findChild<QWidget*>(QString::fromLatin1(name));
    waitUntil([button] { return button && button->isVisible(); },
              QStringLiteral("the option %1").arg(QString::fromLatin1(name)), 5000, place);
    press(name, place);
}

QStringList WebcamStage::choices(const char* list) const
{
    const auto* const box = control<KdComboBox>(list);
    QStringList rows;
    for (int row = 0; row < box->count(); ++row) {
        rows.append(box->itemText(row));
    }
    return rows;
}

QString WebcamStage::choice(const char* list) const
{
    return control<KdComboBox>(list)->currentText();
}

void WebcamStage::choose(const char* list, const QString& text, const TestPlace& place) const
{
    auto* const box = control<KdComboBox>(list, place);
    if (box->findText(text) < 0) {
        DialogDriver::fail(QStringLiteral("There is no choice \"%1\"").arg(text), place);
        return;
    }
    box->setCurrentIndex(box->findText(text));
}

void WebcamStage::setCountdown(int seconds) const
{
    control<KdDoubleSpinBox>("KCameraCapture_CountdownBox")->setValue(seconds);
}

QImage WebcamStage::shownPicture() const
{
    auto* const display = control<KdWebCamDisplayLabel>(kDisplay);
    const QImage whole = display->grab().toImage();
    QRectF picture(QPointF(), QSizeF(m_frames->size()).scaled(whole.size(), Qt::KeepAspectRatio));
    picture.moveCenter(QRectF(whole.rect()).center());
    return whole.copy(picture.toAlignedRect());
}

bool WebcamStage::waitForPicture(const QSize& size, const TestPlace& place)
{
    m_frames->forget();
    return waitUntil([this, size] { return m_frames->hasCome(size); },
                     QStringLiteral("a picture of %1x%2").arg(size.width()).arg(size.height()),
                     10000, place);
}

bool WebcamStage::isRecording() const
{
    return m_helper && m_helper->curStatus() != KdVBLMODEL::fcsNoStart;
}

bool WebcamStage::startTake(const TestPlace& place)
{
    m_lastElapsed = 0;
    press(kStart, place);
    return waitUntil([this] { return isRecording(); }, QStringLiteral("the start of the take"),
                     15000, place);
}

bool WebcamStage::waitForElapsed(qint64 msec, const TestPlace& place) const
{
    return waitUntil([this, msec] { return m_lastElapsed >= msec; },
                     QStringLiteral("%1 ms of recorded time").arg(msec),
                     static_cast<int>(msec) + 10000, place);
}

bool WebcamStage::stopTake(const TestPlace& place)
{
    const int before = m_reports.size();
    press(kStart, place);
    return waitForReports(before + 1, place);
}

QString WebcamStage::recordClip(qint64 msec, const TestPlace& place)
{
    const bool isRecorded = startTake(place) && waitForElapsed(msec, place) && stopTake(place);
    return isRecorded ? lastReport().path : QString();
}

bool WebcamStage::waitForReports(int count, const TestPlace& place) const
{
    return waitUntil([this, count] { return m_reports.size() >= count; },
                     QStringLiteral("%1 finished reports").arg(count), 10000, place);
}
