#include <KdWidgets/KdToast.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QTimer>

namespace {
constexpr int kShownMs = 3000;
} // namespace

KdToast::KdToast(const QString& text, QWidget* window, const QPixmap& pixmap, int bottomMargin)
    : QWidget(window, Qt::ToolTip | Qt::FramelessWindowHint)
    , m_sText(text)
    , m_nBottomMargin(bottomMargin)
{
    setObjectName(QStringLiteral("KdToast"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_StyledBackground);
    auto* row = new QHBoxLayout(this);
    auto* icon = new QLabel(this);
    icon->setPixmap(pixmap);
    icon->setVisible(!pixmap.isNull());
    auto* label = new QLabel(text, this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    row->addWidget(icon);
    row->addWidget(label, 1);
}

KdToast* KdToast::creatToast(const QString& text, QWidget* parent, const QPixmap& pixmap,
                             int bottomMargin)
{
    return new KdToast(text, parent ? parent->window() : nullptr, pixmap, bottomMargin);
}

KdToast* KdToast::showToast(QWidget* parent, const QString& text, const QPixmap& pixmap,
                            int bottomMargin)
{
    KdToast* toast = creatToast(text, parent, pixmap, bottomMargin);
    if (QWidget* window = toast->parentWidget()) {
        const auto former = window->findChildren<KdToast*>(QString(), Qt::FindDirectChildrenOnly);
        for (KdToast* other : former) {
            if (other != toast && other->isVisible()) {
                other->close();
            }
        }
    }
    toast->setAttribute(Qt::WA_DeleteOnClose);
    toast->show();
    return toast;
}

void KdToast::showEvent(QShowEvent* event)
{
    place();
    QTimer::singleShot(kShownMs, this, [this] { close(); });
    QWidget::showEvent(event);
}

void KdToast::place()
{
    adjustSize();
    if (const QWidget* window = parentWidget()) {
        const QPoint bottom = window->mapToGlobal(QPoint(window->width() / 2, window->height()));
        move(bottom.x() - width() / 2, bottom.y() - m_nBottomMargin - height());
    }
}
