#pragma once

#include <QObject>

/** Shows the tool tip that is open again when the language has changed, whosever it is. Qt leaves
 * it in the language that it came in. */
class KdToolTipRefresh : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /** For all of the application, which owns it. GUI thread. */
    static void install();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void customEvent(QEvent* event) override;
};
