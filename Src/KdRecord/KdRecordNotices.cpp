#include <KdRecord/KdRecordNotices.h>

#include <KdCore/KdDir.h>
#include <KdRecord/KdMinimumTake.h>
#include <KdRecord/KdOutputFolderCheck.h>
#include <KdRecord/KdScreenPixmap.h>
#include <KdWidgets/KOldMessageDialog.h>
#include <KdWidgets/KdPopovers.h>
#include <KdWidgets/KdText.h>
#include <KdWidgets/KdTipWidget.h>
#include <KdWidgets/KdToast.h>

#include <QApplication>
#include <QFileInfo>
#include <QKeyEvent>

namespace {

constexpr int kToastBottomMargin = 104;
constexpr int kTipBelowButton = 10;
constexpr int kTipScreenMargin = 5;
constexpr int kLongestShownName = 120;

/** A device may call itself anything; a message must stay readable all the same. */
QString shownName(const QString& name)
{
    const QString line = KdText::singleLine(name);
    return line.size() > kLongestShownName ? line.left(kLongestShownName) + QChar(0x2026) : line;
}

/** A line for each device that was lost. */
QString lossText(const std::optional<QString>& camera, const std::optional<QString>& microphone)
{
    QStringList lines;
    if (camera) {
        lines.append(KdRecordNotices::tr("The Camera %1 is lost.").arg(shownName(*camera)));
    }
    if (microphone) {
        lines.append(
            KdRecordNotices::tr("Audio device %1 connection lost.").arg(shownName(*microphone)));
    }
    return lines.join(QLatin1Char('\n'));
}

/** An open list would lie over the message and have the keyboard. */
void closePopup(const QWidget* panel)
{
    QWidget* const popup = QApplication::activePopupWidget();
    for (const QWidget* widget = popup; widget; widget = widget->parentWidget()) {
        if (widget == panel) {
            QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
            QApplication::sendEvent(popup, &escape);
            return;
        }
    }
}

} // namespace

/** Counts an open message; the panel, and the count with it, may go meanwhile. */
class KdRecordNotices::MessageScope
{
public:
    explicit MessageScope(KdRecordNotices& notices) : m_panel(notices.m_pPanel), m_notices(notices)
    {
        ++m_notices.m_nOpenMessages;
        closePopup(m_panel);
    }

    ~MessageScope()
    {
        if (m_panel) {
            --m_notices.m_nOpenMessages;
            m_notices.tellWhatWaits();
        }
    }

private:
    Q_DISABLE_COPY(MessageScope)

    QPointer<QWidget> m_panel;
    KdRecordNotices& m_notices;
};

KdRecordNotices::KdRecordNotices(QWidget* panel) : m_pPanel(panel) {}

int KdRecordNotices::runModal(const std::function<int()>& modal)
{
    const MessageScope scope(*this);
    return modal();
}

void KdRecordNotices::inform(const KdLiveText& text)
{
    const MessageScope scope(*this);
    KOldMessageDialog::Infomation(text, m_pPanel);
}

void KdRecordNotices::tellNoDevice()
{
    inform([] { return tr("No Device"); });
}

void KdRecordNotices::tellStartFailed()
{
    inform([] { return tr("Unable to record due to an issue with the device."); });
}

void KdRecordNotices::tellTooShort()
{
    const MessageScope scope(*this);
    KdMinimumTake::tellTooShort(m_pPanel);
}

void KdRecordNotices::tellNotSaved(const QString& path)
{
    if (KdDir::IsPathWriteAndReadable(QFileInfo(path).path())) {
        tellStartFailed();
        return;
    }
    const MessageScope scope(*this);
    KdOutputFolderCheck::tellNoPermission(m_pPanel);
}

void KdRecordNotices::tellDeviceLost(const QString& name)
{
    tellDevicesLost(std::nullopt, name);
}

void KdRecordNotices::tellTakeEnded(bool isDiskFull)
{
    if (!isDiskFull) {
        tellStartFailed();
        return;
    }
    inform([] {
        return tr("The recording has ended because the disk is full. What was recorded until then "
                  "has been saved.");
    });
}

void KdRecordNotices::tellDevicesLost(const std::optional<QString>& camera,
                                      const std::optional<QString>& microphone)
{
    if (camera || microphone) {
        inform([camera, microphone] { return lossText(camera, microphone); });
    }
}

void KdRecordNotices::tellWebcamOccupied()
{
    if (m_bTellsOccupied) {
        return;
    }
    if (isAsking()) {
        m_bOccupiedWaits = true;
        return;
    }
    const QPointer<QWidget> panel(m_pPanel);
    m_bOccupiedWaits = false;
    m_bTellsOccupied = true;
    inform([] {
        return tr("Webcam is being used by another application, please close other application "
                  "and try again.");
    });
    if (panel) {
        m_bTellsOccupied = false;
    }
}

// Not from inside the message that is being closed: whoever asked for that goes on first.
void KdRecordNotices::tellWhatWaits()
{
    if (m_bOccupiedWaits && !isAsking()) {
        QMetaObject::invokeMethod(
            m_pPanel,
            [this] {
                if (m_bOccupiedWaits) {
                    tellWebcamOccupied();
                }
            },
            Qt::QueuedConnection);
    }
}

void KdRecordNotices::showPaused(bool isPaused)
{
    if (m_pPaused) {
        m_pPaused->close();
    }
    if (isPaused) {
        const QString icon = QStringLiteral(":/Resource/icon24_toast_info.png");
        m_pPaused = KdToast::showToast(
            m_pPanel, [] { return tr("Recording is paused. Click Resume to continue recording."); },
            KdScreenPixmap::load(icon, m_pPanel->devicePixelRatioF()), kToastBottomMargin);
    }
}

void KdRecordNotices::showAdded(const QWidget* button)
{
    auto* const tip = KdTipWidget::creatTipWidget(
        KdTipWidget::InfoTip, KdTipWidget::ArrowUp, m_pPanel,
        [] { return tr("Your audio has been added to the timeline and media library."); }, 0);
    tip->setAttribute(Qt::WA_DeleteOnClose);
    tip->transToArrowPos(button->mapToGlobal(QPoint(0, button->height() + kTipBelowButton)));
    tip->OnShow(kTipScreenMargin);
}

void KdRecordNotices::askReRecord(QWidget* anchor, const std::function<void()>& confirmed)
{
    if (m_pReRecord) {
        return;
    }
    const KdPopovers::ConfirmTexts texts{[] {
                                             return tr("Re-recording will overwrite the already "
                                                       "recorded content, are you sure?");
                                         },
                                         [] { return tr("Cancel"); },
                                         [] { return tr("Re-record"); }};
    m_pReRecord = KdPopovers::showConfirm(anchor, texts, [confirmed](bool isConfirmed) {
        if (isConfirmed) {
            confirmed();
        }
    });
}

void KdRecordNotices::closeTakeNotices()
{
    showPaused(false);
    if (m_pReRecord) {
        m_pReRecord->close();
    }
}
