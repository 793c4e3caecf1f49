#pragma once

#include <QRect>
#include <QString>
#include <QVector>

class QWidget;

namespace KdTest {

/** A text as it stands on the screen: one line, elided where it is. */
struct PaintedText
{
    QString text;
    QRect area; ///< in the widget
};

/** @return what a widget paints itself, whatever it is: its children are left out. */
QVector<PaintedText> paintedTexts(QWidget& widget);

} // namespace KdTest
