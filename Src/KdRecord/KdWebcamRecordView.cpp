#include <KdRecord/KdWebcamRecordView.h>

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KdWebcamRecordPanel.h>
#include <KdRecord/KdWebcamTakeReport.h>
#include <KdRecord/KdWebcamViewSize.h>
#include <KdVBLModel/KdGeneralEvent.h>
#include <KdWidgets/KdTitleBar.h>
#include <KdWidgets/KdUIStyle.h>

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>

namespace {

/** The ground of windows. */
constexpr int kGround = 18;

void sendShown()
{
    KdGeneralEvent event(QStringLiteral("record_video_screen_tool_bar_expose"));
    event.add(QStringLiteral("record_type"), QStringLiteral("camera_record"));
    event.sendEvent();
}

} // namespace

KdWebcamRecordView::KdWebcamRecordView(QWidget* parent) : KdFramelessDialog(parent, false, true, 1)
{
    setObjectName(QStringLiteral("KdWebcamRecordView"));
    initWidgets();
    initConnects();
    titleBar()->SetResizeble(true);
}

KdWebcamRecordView::~KdWebcamRecordView() = default;

void KdWebcamRecordView::initWidgets()
{
    setAttribute(Qt::WA_DeleteOnClose);
    KdWebcamRecordView::RetranslateUi();
    resize(wantedSize());
    m_pPanel = new KdWebcamRecordPanel(this);
    setContentWidget(m_pPanel);
    setButtonBarVisible(false);
    KdUIStyle::SetBGColorType(this, kGround);
    KdUIStyle::SetBGColorType(m_pPanel, kGround);
}

void KdWebcamRecordView::initConnects()
{
    using Panel = KdWebcamRecordPanel;
    using View = KdWebcamRecordView;
    connect(m_pPanel, &Panel::sigClose, this, &QWidget::close);
    connect(m_pPanel, &Panel::sigStartRecordBtnClick, this, &View::sigStartRecordBtnClick);
    connect(m_pPanel, &Panel::sigCaptureFinished, this, &View::reportFinished);
}

QSize KdWebcamRecordView::wantedSize() const
{
    const QScreen* const ofParent = parentWidget() ? parentWidget()->window()->screen() : nullptr;
    const QScreen* const screen = ofParent ? ofParent : QGuiApplication::primaryScreen();
    return KdWebcamViewSize::forScreen(screen ? screen->availableSize() : QSize());
}

int KdWebcamRecordView::doModal()
{
    if (m_bModal) {
        return 1;
    }
    const QPointer<KdWebcamRecordView> self(this);
    m_bModal = true;
    exec();
    if (self) {
        m_bModal = false;
    }
    return 1;
}

void KdWebcamRecordView::initDevices()
{
    if (m_pPanel) {
        m_pPanel->InitUI();
    }
}

bool KdWebcamRecordView::isRecordPreview() const
{
    return m_pPanel && m_pPanel->isRecordPreview();
}

void KdWebcamRecordView::RetranslateUi()
{
    SetTitleName(tr("Capture Video"));
}

void KdWebcamRecordView::reportFinished(const QString& filePath, const QSize& resolution,
                                        double frame_rate, int file_duration,
                                        const QString& deviceName)
{
    KdWebcamTakeReport::Values values;
    values.resolution = resolution;
    values.frameRate = frame_rate;
    values.fileDuration = file_duration;
    values.deviceName = deviceName;
    values.background = m_pPanel->aiEffectType();
    values.shape = m_pPanel->recordDisplayShape();
    values.isMirrored = m_pPanel->isRecordFlipped();
    values.isZoomed = m_bZoomed;
    Q_EMIT sigFinished(filePath, KdWebcamTakeReport::fileInfo(values),
                       KdWebcamTakeReport::fileExportInfo());
}

void KdWebcamRecordView::showEvent(QShowEvent* event)
{
    m_closing.reopen();
    sendShown();
    KdFramelessDialog::showEvent(event);
}

void KdWebcamRecordView::moveEvent(QMoveEvent* event)
{
    KdFramelessDialog::moveEvent(event);
    if (m_pPanel) {
        m_pPanel->placeCountdown();
    }
}

void KdWebcamRecordView::resizeEvent(QResizeEvent* event)
{
    if (!event->size().isEmpty()) {
        m_bZoomed = true;
    }
    KdFramelessDialog::resizeEvent(event);
}

void KdWebcamRecordView::closeEvent(QCloseEvent* event)
{
    if (m_closing.isUnderway()) {
        // From inside what the closing has brought about: the first closing goes on.
        event->ignore();
        return;
    }
    const QPointer<KdWebcamRecordView> self(this);
    KdAppSettings::GetInstance()->Save();
    if (!leave()) {
        return;
    }
    hide();
    if (self && parentWidget()) {
        parentWidget()->activateWindow();
    }
    if (self) {
        KdFramelessDialog::closeEvent(event);
    }
}

void KdWebcamRecordView::reject()
{
    if (!m_closing.isUnderway() && leave()) {
        KdFramelessDialog::reject();
    }
}

bool KdWebcamRecordView::leave()
{
    if (!m_closing.begin()) {
        return true;
    }
    const QPointer<KdWebcamRecordView> self(this);
    if (m_pPanel) {
        m_pPanel->AbordRecorder();
    }
    if (self) {
        Q_EMIT sigClose();
    }
    if (self) {
        m_closing.finish();
    }
    return self;
}
