#include <KdWidgets/KdComboBox.h>

#include <QListView>
#include <QWheelEvent>

KdComboBox::KdComboBox(QWidget* parent) : QComboBox(parent)
{
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
}

void KdComboBox::showPopup()
{
    Q_EMIT sigShowPopUp();
    QComboBox::showPopup();
}

void KdComboBox::hidePopup()
{
    const bool wasVisible = isPopupVisible();
    QComboBox::hidePopup();
    if (wasVisible) {
        Q_EMIT sigHidePopUp();
    }
}

bool KdComboBox::isPopupVisible() const
{
    return view()->isVisible();
}

bool KdComboBox::isRowHidden(int row) const
{
    const auto* list = qobject_cast<QListView*>(view());
    return list && row >= 0 && row < count() && list->isRowHidden(row);
}

void KdComboBox::setRowHidden(int row, bool hidden)
{
    if (auto* list = qobject_cast<QListView*>(view())) {
        list->setRowHidden(row, hidden);
    }
}

void KdComboBox::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}
