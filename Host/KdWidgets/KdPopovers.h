#pragma once

#include <KdWidgets/KdBubble.h>
#include <KdWidgets/KdLiveText.h>

#include <QWidget>

#include <functional>

class KdWrapLabel;
class QBoxLayout;
class QPushButton;

/** Small windows anchored at a control, which follow the language while they are open. Object name
 * "KdPopovers". GUI thread. */
class KDWIDGETS_EXPORT KdPopovers : public QWidget
{
    Q_OBJECT

public:
    /** What a question says, as plain text. */
    struct ConfirmTexts
    {
        KdLiveText text;    ///< the question
        KdLiveText cancel;  ///< on the button that answers false
        KdLiveText confirm; ///< on the button that answers true
    };

    /**
     * Asks beside a control and returns at once. The buttons are named "KdPopovers_Cancel" (the
     * default) and "KdPopovers_Confirm".
     * @param anchor owns the popover, which points at it; not null.
     * @param texts of the question and its buttons.
     * @param answered called once with the answer, false also when the popover is closed otherwise:
     * by Escape, by a press outside, by a modal dialog, by the anchor's window going. Called from
     * the event loop, when the popover is gone from the screen, so that it may destroy anchor or
     * ask on; not called when anchor is destroyed before. May be null.
     * @return the popover on the screen, which deletes itself.
     */
    static KdPopovers* showConfirm(QWidget* anchor, const ConfirmTexts& texts,
                                   std::function<void(bool confirmed)> answered);

protected:
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    KdPopovers(QWidget* anchor, const ConfirmTexts& texts, std::function<void(bool)> answered);
    QBoxLayout* createButtons();
    void retranslate();
    void place();
    void answer(bool confirmed);

    ConfirmTexts m_texts;
    KdWrapLabel* m_pText = nullptr;
    QPushButton* m_pCancel = nullptr;
    QPushButton* m_pConfirm = nullptr;
    KdBubble m_bubble;
    bool m_bConfirmed = false;
    std::function<void(bool)> m_answered;
};
