#include <KdWidgets/KdPopovers.h>

#include <KdWidgets/KdPushButton.h>
#include <KdWidgets/KdWindowShape.h>
#include <KdWidgets/KdWindowWatch.h>
#include <KdWidgets/KdWrapLabel.h>

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace {
constexpr int kPadding = 16;
constexpr int kWidestText = 264;
constexpr int kMostLines = 12;
constexpr int kScreenMargin = 5;
constexpr int kGap = 4;
} // namespace

KdPopovers::KdPopovers(QWidget* anchor, const ConfirmTexts& texts,
                       std::function<void(bool)> answered)
    : QWidget(anchor, Qt::Popup | Qt::FramelessWindowHint)
    , m_texts(texts)
    , m_pText(new KdWrapLabel(QString(), kWidestText, kMostLines, this))
    , m_pCancel(KdPushButton::CreatePrimaryButton(this))
    , m_pConfirm(KdPushButton::CreateSecondaryButton(this))
    , m_answered(std::move(answered))
{
    setObjectName(QStringLiteral("KdPopovers"));
    setAttribute(Qt::WA_DeleteOnClose);
    KdWindowShape::prepare(this);
    auto* column = new QVBoxLayout(this);
    column->setSpacing(12);
    m_pText->setObjectName(QStringLiteral("KdPopovers_Text"));
    column->addWidget(m_pText);
    column->addLayout(createButtons());
    retranslate();
    if (anchor) {
        anchor->window()->installEventFilter(this);
    }
}

KdPopovers* KdPopovers::showConfirm(QWidget* anchor, const ConfirmTexts& texts,
                                    std::function<void(bool confirmed)> answered)
{
    auto* popover = new KdPopovers(anchor, texts, std::move(answered));
    popover->show();
    return popover;
}

QBoxLayout* KdPopovers::createButtons()
{
    m_pCancel->setObjectName(QStringLiteral("KdPopovers_Cancel"));
    m_pConfirm->setObjectName(QStringLiteral("KdPopovers_Confirm"));
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addStretch();
    row->addWidget(m_pCancel);
    row->addWidget(m_pConfirm);
    setTabOrder(m_pCancel, m_pConfirm);
    m_pCancel->setFocus();
    connect(m_pCancel, &QPushButton::clicked, this, [this] { answer(false); });
    connect(m_pConfirm, &QPushButton::clicked, this, [this] { answer(true); });
    return row;
}

void KdPopovers::retranslate()
{
    m_pText->setText(m_texts.text.now());
    m_pCancel->setText(m_texts.cancel.now());
    m_pConfirm->setText(m_texts.confirm.now());
    setAccessibleName(m_pText->text());
    place();
}

void KdPopovers::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    }
    QWidget::changeEvent(event);
}

void KdPopovers::place()
{
    const QWidget* const anchor = parentWidget();
    // The arrow takes the same room above as below.
    layout()->setContentsMargins(kPadding, kPadding + KdBubble::kArrow, kPadding, kPadding);
    const QSize size = sizeHint();
    const QRect around(anchor ? anchor->mapToGlobal(QPoint()) : QPoint(),
                       anchor ? anchor->size() : QSize());
    const QRect area = KdWindowWatch::availableArea(around.center())
                           .adjusted(kScreenMargin, kScreenMargin, -kScreenMargin, -kScreenMargin);
    const QPoint below(around.center().x(), around.bottom() + kGap);
    const QPoint above(around.center().x(), around.top() - kGap);
    const auto hasRoom = [&area](const KdBubble& bubble) {
        return bubble.geometry.top() >= area.top() && bubble.geometry.bottom() <= area.bottom();
    };
    m_bubble = KdBubble::placed(size, below, false, -1, area);
    const KdBubble other = KdBubble::placed(size, above, true, -1, area);
    if (!hasRoom(m_bubble) && hasRoom(other)) {
        m_bubble = other;
    }
    const int arrowAbove = m_bubble.arrowDown ? 0 : KdBubble::kArrow;
    layout()->setContentsMargins(kPadding, kPadding + arrowAbove, kPadding,
                                 kPadding + KdBubble::kArrow - arrowAbove);
    m_bubble.applyTo(this);
}

bool KdPopovers::event(QEvent* event)
{
    if (event->type() == QEvent::WindowBlocked) {
        close();
        return true;
    }
    return QWidget::event(event);
}

bool KdPopovers::eventFilter(QObject* watched, QEvent* event)
{
    if (isVisible() && KdWindowWatch::isLeaving(watched, event)) {
        close();
    }
    return false;
}

void KdPopovers::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    // Not from in here: the callback may destroy the anchor and this popover with it, or open a
    // dialog while the popover still holds the mouse.
    const auto answered = std::exchange(m_answered, nullptr);
    QObject* context = parentWidget() ? static_cast<QObject*>(parentWidget()) : qApp;
    if (answered) {
        QTimer::singleShot(0, context,
                           [answered, confirmed = m_bConfirmed] { answered(confirmed); });
    }
}

void KdPopovers::paintEvent(QPaintEvent* /*event*/)
{
    m_bubble.paint(this);
}

void KdPopovers::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

void KdPopovers::answer(bool confirmed)
{
    m_bConfirmed = confirmed;
    close();
}
