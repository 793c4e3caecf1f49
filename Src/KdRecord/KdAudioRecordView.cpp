#include <KdRecord/KdAudioRecordView.h>

#include <KdCore/KdBaseLog.h>
#include <KdRecord/KdAudioRecordPanel.h>
#include <KdRecord/KdAudioTakeReport.h>
#include <KdWidgets/KdTitleBar.h>
#include <KdZentraCore/KdUtility.h>

#include <QAction>
#include <QCloseEvent>
#include <QMenu>
#include <QPointer>
#include <QSystemTrayIcon>

namespace {

constexpr QSize kViewSize(480, 448);
constexpr int kTrayMenuWidth = 240;

void logTriggered(const char* message)
{
    KdBaseLog::write(KdBaseLog::Info,
                     {"Src/KdRecord/KdAudioRecordView", "KdAudioRecordView::initConnects"}, "%s",
                     message);
}

} // namespace

KdAudioRecordView::KdAudioRecordView(QWidget* parent) : KdFramelessDialog(parent)
{
    setObjectName(QStringLiteral("KdAudioRecordView"));
    initWidgets();
    initConnects();
}

KdAudioRecordView::~KdAudioRecordView()
{
    // Later: it may be the menu that is being used.
    m_pTrayMenu->deleteLater();
}

void KdAudioRecordView::initWidgets()
{
    m_pPanel = new KdAudioRecordPanel(this);
    setFixedSize(kViewSize);
    setContentWidget(m_pPanel);
    setButtonBarVisible(false);
    setAttribute(Qt::WA_DeleteOnClose);
    setTitleBarButtons(KdTitleBar::MinimizeToTrayAndClose);
    SetMinimizedEnable(false);
    initTray();
    KdAudioRecordView::RetranslateUi();
    updateTrayIcon();
}

void KdAudioRecordView::initTray()
{
    m_iconIdle = QIcon(QStringLiteral(":/Resource/icon16_audiorecord-nostart.png"));
    m_iconRunning = QIcon(QStringLiteral(":/Resource/icon16_audiorecord-running.png"));
    m_pTrayIcon = new QSystemTrayIcon(this);
    // Hosts ship this text; it is not ours to correct.
    m_pTrayIcon->setToolTip(QStringLiteral("Piprop Download and Installation"));
    m_pTrayMenu = new QMenu;
    m_pTrayMenu->setFixedWidth(kTrayMenuWidth);
    m_pActOpen = new QAction(m_pTrayMenu);
    m_pActStartOrStop = new QAction(m_pTrayMenu);
    m_pActQuit = new QAction(m_pTrayMenu);
    m_pTrayMenu->addActions({m_pActOpen, m_pActStartOrStop, m_pActQuit});
    m_pTrayIcon->setContextMenu(m_pTrayMenu);
    m_pTrayIcon->hide();
}

void KdAudioRecordView::initConnects()
{
    connectPanel();
    connectTray();
    connect(titleBar(), &KdTitleBar::ButtonClick, this, [this](int id) {
        if (id == KdTitleBar::MinimizeButton) {
            minimizeToTray();
        }
    });
}

void KdAudioRecordView::connectPanel()
{
    using Panel = KdAudioRecordPanel;
    using View = KdAudioRecordView;
    connect(m_pPanel, &Panel::sigClose, this, &QWidget::close);
    connect(m_pPanel, &Panel::sigCaptureFinished, this, &View::reportFinished);
    connect(m_pPanel, &Panel::sigStartCapture, this, [this](bool bReStart) {
        updateTrayIcon();
        Q_EMIT sigStartCapture(bReStart);
    });
    connect(m_pPanel, &Panel::sigEndCapture, this, [this] {
        updateTrayIcon();
        Q_EMIT sigEndCapture();
    });
    connect(m_pPanel, &Panel::sigStartCaptureFailed, this, &View::sigStartCaptureFailed);
    connect(m_pPanel, &Panel::sigStartRecordBtnClick, this, &View::sigStartRecordBtnClick);
    connect(m_pPanel, &Panel::sigCaptureDoing, this, &View::sigCaptureDoing);
    connect(m_pPanel, &Panel::sigMute, this, &View::sigMute);
    // Queued: the status changes after the signal.
    connect(m_pPanel, &Panel::sigPause, this, &View::updateTrayMenu, Qt::QueuedConnection);
    connect(m_pPanel, &Panel::sigResume, this, &View::updateTrayMenu, Qt::QueuedConnection);
    connect(m_pPanel, &Panel::sigPause, this, &View::sigPause);
    connect(m_pPanel, &Panel::sigResume, this, &View::sigResume);
}

void KdAudioRecordView::connectTray()
{
    connect(m_pTrayIcon, &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger) {
                    restore();
                }
            });
    connect(m_pTrayMenu, &QMenu::aboutToShow, this, &KdAudioRecordView::updateTrayIcon);
    connect(m_pActOpen, &QAction::triggered, this, [this] {
        logTriggered("audioRecording m_pActOpen, &QAction::triggered");
        restore();
    });
    connect(m_pActStartOrStop, &QAction::triggered, this, [this] {
        logTriggered("audioRecording m_pActStartOrStop, &QAction::triggered");
        if (m_pPanel->status() == KdVBLMODEL::fcsRecording) {
            m_pPanel->stopFromOutside();
        } else {
            m_pPanel->startFromOutside();
        }
    });
    connect(m_pActQuit, &QAction::triggered, this, [this] {
        logTriggered("audioRecording m_pActQuit, &QAction::triggered");
        close();
    });
}

int KdAudioRecordView::doModal()
{
    setWindowModality(Qt::NonModal);
    show();
    return 1;
}

bool KdAudioRecordView::isMuted() const
{
    return m_pPanel->isMuted();
}

void KdAudioRecordView::RetranslateUi()
{
    SetTitleName(tr("Record Audio"));
    m_pActOpen->setText(tr("Open recorder"));
    m_pActQuit->setText(tr("Quit recorder"));
    updateTrayMenu();
}

void KdAudioRecordView::updateTrayIcon()
{
    const bool isRecording = m_pPanel->status() == KdVBLMODEL::fcsRecording;
    m_pTrayIcon->setIcon(isRecording ? m_iconRunning : m_iconIdle);
    m_pActQuit->setEnabled(!isRecording);
    updateTrayMenu();
}

void KdAudioRecordView::updateTrayMenu()
{
    switch (m_pPanel->status()) {
    case KdVBLMODEL::fcsRecording:
        m_pActStartOrStop->setText(tr("Stop recording"));
        break;
    case KdVBLMODEL::fcsPaused:
        m_pActStartOrStop->setText(tr("Resume recording"));
        break;
    default:
        m_pActStartOrStop->setText(tr("Start recording"));
        break;
    }
}

void KdAudioRecordView::showOrHiddenViewMinimized(bool minimized)
{
    if (minimized) {
        minimizeToTray();
    } else {
        restore();
    }
}

void KdAudioRecordView::minimizeToTray()
{
    updateTrayIcon();
    m_pTrayIcon->show();
    showMinimized();
}

void KdAudioRecordView::restore()
{
    KdUtility::moveWidgetToCenter(this);
    raise();
    show();
    setWindowState(Qt::WindowNoState);
    activateWindow();
    m_pTrayIcon->hide();
}

void KdAudioRecordView::changeEvent(QEvent* event)
{
    KdFramelessDialog::changeEvent(event);
    // Brought back by the window system, where there is no tray say.
    if (event->type() == QEvent::WindowStateChange && isVisible() && !isMinimized()) {
        m_pTrayIcon->hide();
    }
}

void KdAudioRecordView::reportFinished(const QString& filePath, int audio_channels,
                                       int sampling_rate, int file_duration,
                                       const QString& deviceName)
{
    updateTrayIcon();
    Q_EMIT sigFinished(
        filePath,
        KdAudioTakeReport::fileInfo({audio_channels, sampling_rate, file_duration, deviceName}),
        KdAudioTakeReport::fileExportInfo());
}

void KdAudioRecordView::closeEvent(QCloseEvent* event)
{
    if (m_closing.isUnderway()) {
        // From inside a message that closing has brought up: the first closing goes on.
        event->ignore();
        return;
    }
    const QPointer<KdAudioRecordView> self(this);
    leave();
    if (self) {
        KdFramelessDialog::closeEvent(event);
    }
}

void KdAudioRecordView::reject()
{
    if (m_closing.isUnderway()) {
        return;
    }
    const QPointer<KdAudioRecordView> self(this);
    leave();
    if (self) {
        KdFramelessDialog::reject();
    }
}

void KdAudioRecordView::leave()
{
    if (!m_closing.begin()) {
        return;
    }
    const QPointer<KdAudioRecordView> self(this);
    Q_EMIT sigClose();
    if (!self) {
        return;
    }
    m_pTrayIcon->hide();
    m_pPanel->close();
    if (self) {
        m_closing.finish();
    }
}
