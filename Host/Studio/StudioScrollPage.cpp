#include <Studio/StudioScrollPage.h>

#include <QApplication>
#include <QEvent>
#include <QScrollBar>

namespace {

/** Two rows of settings, so that the next control can be seen to be there. */
constexpr int kLeastHeight = 120;
/** Of what is above a control that comes into view: its caption. */
constexpr int kAround = 32;

} // namespace

StudioScrollPage::StudioScrollPage(QWidget* page, int width, QWidget* parent)
    : QScrollArea(parent), m_width(width)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setFixedWidth(width);
    setWidget(page);
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget* /*before*/, const QWidget* now) { bringIntoView(now); });
}

StudioScrollPage::~StudioScrollPage() = default;

QSize StudioScrollPage::sizeHint() const
{
    return {m_width, heightOfPage(m_width)};
}

QSize StudioScrollPage::minimumSizeHint() const
{
    return {m_width, kLeastHeight};
}

int StudioScrollPage::heightOfPage(int width) const
{
    return widget()->hasHeightForWidth() ? widget()->heightForWidth(width)
                                         : widget()->sizeHint().height();
}

/** A page would rather shrink to its least height than be scrolled. */
void StudioScrollPage::keepHeightOfPage()
{
    widget()->setMinimumHeight(heightOfPage(viewport()->width()));
}

void StudioScrollPage::resizeEvent(QResizeEvent* event)
{
    keepHeightOfPage();
    QScrollArea::resizeEvent(event);
}

bool StudioScrollPage::event(QEvent* event)
{
    // The page's content wants another height.
    if (event->type() == QEvent::LayoutRequest && widget()) {
        keepHeightOfPage();
        updateGeometry();
    }
    return QScrollArea::event(event);
}

/** The base brings only a part of some controls into view, and none that is reached from outside.
 */
bool StudioScrollPage::focusNextPrevChild(bool next)
{
    return QWidget::focusNextPrevChild(next); // NOLINT(bugprone-parent-virtual-call): see above
}

void StudioScrollPage::bringIntoView(const QWidget* control)
{
    if (!control || !widget()->isAncestorOf(control)) {
        return;
    }
    const int top = control->mapTo(widget(), QPoint()).y() - kAround;
    const int bottom = top + control->height() + 2 * kAround;
    QScrollBar* const bar = verticalScrollBar();
    if (top < bar->value()) {
        bar->setValue(top);
    } else if (bottom > bar->value() + viewport()->height()) {
        bar->setValue(bottom - viewport()->height());
    }
}
