#include <KdRecord/KdRecordWidgets.h>

#include <KdRecord/KdRecordShortcut.h>
#include <KdWidgets/KdButton.h>
#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdToolButton.h>

#include <QVariant>

namespace {

constexpr QSize kTakeButtonSize(36, 36);
constexpr int kCaptionHeight = 16;
constexpr int kTimePointSize = 20;

} // namespace

KdButton* KdRecordWidgets::makeTakeButton(QWidget* parent, const QString& name)
{
    auto* const button = new KdButton(parent);
    button->setObjectName(name);
    button->setFixedSize(kTakeButtonSize);
    button->setIconSize(kTakeButtonSize);
    button->setProperty("round", true);
    QSizePolicy policy = button->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    button->setSizePolicy(policy);
    button->hide();
    return button;
}

KdButton* KdRecordWidgets::makeReRecordButton(QWidget* parent, const QString& name)
{
    auto* const button = makeTakeButton(parent, name);
    button->setIconFiles(KdToolButton::svgIconSet(QStringLiteral("icon36_reset")));
    return button;
}

KdButton* KdRecordWidgets::makePauseButton(QWidget* parent, const QString& name)
{
    auto* const button = makeTakeButton(parent, name);
    button->setCheckable(true);
    button->setIconFiles(KdToolButton::svgIconSet(QStringLiteral("icon36_player_pause")),
                         KdToolButton::svgIconSet(QStringLiteral("icon36_player_continue")));
    return button;
}

KdToolButton* KdRecordWidgets::makeStyledButton(QWidget* parent, const QString& name,
                                                const QSize& size)
{
    auto* const button =
        KdToolButton::CreateToolButton(parent, name, QStringLiteral("BasicWidget/") + name);
    button->setFixedSize(size);
    return button;
}

KdLabel* KdRecordWidgets::makeCaption(QWidget* parent, QWidget* buddy)
{
    auto* const caption = new KdLabel(parent);
    caption->setCaption(true);
    caption->setFixedHeight(kCaptionHeight);
    caption->setBuddy(buddy);
    return caption;
}

KdLabel* KdRecordWidgets::makeTimeLabel(QWidget* parent, const QString& name)
{
    auto* const time = new KdLabel(parent);
    time->setObjectName(name);
    QFont figures = time->font();
    figures.setPointSize(kTimePointSize);
    time->setFont(figures);
    // As much to the right as the blank takes on the left: the figures stand in the middle.
    time->setContentsMargins(0, 0, QFontMetrics(figures).horizontalAdvance(QLatin1Char(' ')), 0);
    return time;
}

void KdRecordWidgets::setTextAndName(KdLabel* caption, QWidget* control, const QString& text)
{
    caption->setText(text);
    control->setAccessibleName(text);
}

void KdRecordWidgets::setTipAndName(QWidget* control, const QString& text)
{
    control->setToolTip(text);
    control->setAccessibleName(text);
}

void KdRecordWidgets::showStartTip(KdToolButton* start)
{
    if (start->isChecked()) {
        showStopTip(start);
        return;
    }
    start->setToolTip(tr("Start (%1)").arg(KdRecordShortcut::text()));
    start->setProperty("WITH_SHORTCUT", true);
    start->setAccessibleName(tr("Start"));
}

void KdRecordWidgets::showStopTip(KdToolButton* stop)
{
    stop->setToolTip(tr("Stop (%1)").arg(KdRecordShortcut::text()));
    stop->setProperty("WITH_SHORTCUT", true);
    stop->setAccessibleName(tr("Stop"));
}

void KdRecordWidgets::showPauseTip(KdToolButton* pause)
{
    setTipAndName(pause, pause->isChecked() ? tr("Resume") : tr("Pause"));
}
