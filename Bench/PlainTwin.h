#pragma once

#include <QByteArray>
#include <QSize>

class QDialog;
class QWidget;

/** A plain Qt dialog, as large as another one and with as many widgets of the same kinds: what any
 * dialog like that costs. */
namespace PlainTwin {

/** What a twin takes from a dialog; can be handed to another process. */
struct Pattern
{
    QByteArray kinds; ///< a letter for each widget
    QSize size;
};

Pattern of(const QWidget& dialog);

/** @return the twin; the caller's. */
QDialog* make(const Pattern& pattern);

} // namespace PlainTwin
