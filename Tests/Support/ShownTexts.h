#pragma once

#include <QString>
#include <QVector>

class QObject;
class QWidget;

namespace KdTest {

/** A text that a user can read or hear, and where. */
struct ShownText
{
    QString where; ///< "KdToolButton KAudioCapture_RecorderButton toolTip"
    QString text;
};

/**
 * @return every text of a window and of what belongs to it, hidden for now or not: labels, captions
 * of controls, choices, rows, tabs, titles, menus, tool tips, placeholders, and names and
 * descriptions for assistive technology.
 */
QVector<ShownText> shownTexts(const QWidget& window);

/** @return those, and each line that a widget which is seen paints of no text that it tells. */
QVector<ShownText> readableTexts(QWidget& window);

/** @return "KdToolButton KAudioCapture_RecorderButton" */
QString nameOf(const QObject& object);

} // namespace KdTest
