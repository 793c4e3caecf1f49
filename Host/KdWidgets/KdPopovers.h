#pragma once

#include <KdWidgets/KdBubble.h>

#include <QString>
#include <QWidget>

#include <functional>

class QLabel;
class QVBoxLayout;

/** Small windows anchored at a control. Object name "KdPopovers". */
class KDWIDGETS_EXPORT KdPopovers : public QWidget
{
    Q_OBJECT

public:
    struct ConfirmTexts
    {
        QString text;
        QString cancel;
        QString confirm;
    };

    /**
     * Asks beside anchor, in plain text. The buttons are named "KdPopovers_Cancel" (the default)
     * and "KdPopovers_Confirm".
     * @param answered called once with the answer, false also when the popover is closed otherwise:
     * by Escape, by a press outside, by a modal dialog, by the anchor's window going. Called from
     * the event loop, when the popover is gone from the screen, so that it may destroy anchor or
     * ask on; not called when anchor is destroyed before. The popover deletes itself.
     */
    static KdPopovers* showConfirm(QWidget* anchor, const ConfirmTexts& texts,
                                   std::function<void(bool confirmed)> answered);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    KdPopovers(QWidget* anchor, const ConfirmTexts& texts, std::function<void(bool)> answered);
    void addButtons(QVBoxLayout* column, const ConfirmTexts& texts);
    void place(const QWidget* anchor);
    void answer(bool confirmed);

    KdBubble m_bubble;
    bool m_bConfirmed = false;
    std::function<void(bool)> m_answered;
};
