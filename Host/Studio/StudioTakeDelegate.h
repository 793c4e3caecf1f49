#pragma once

#include <QStyledItemDelegate>

/** Paints a row of the take list: a small waveform or picture, the name, and a line about the take.
 */
class StudioTakeDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
