#pragma once

#include <KdWidgets/KdFramelessDialog.h>
#include <KdWidgets/KdLiveText.h>

#include <QDialogButtonBox>
#include <QPair>
#include <QVector>

class KdWrapLabel;
class QPushButton;
class QScrollArea;

/**
 * Modal messages with plain text, broken into lines and scrolled where it is long. They follow the
 * language while they are open. Object names: the dialog "KOldMessageDialog", its text
 * "KOldMessageDialog_Text", its buttons "KOldMessageDialog_Ok", "_Yes" and "_No". The calls run an
 * event loop and return when the dialog was answered or destroyed (with its parent, say): whoever
 * calls must look whether it still exists itself. GUI thread.
 */
class KDWIDGETS_EXPORT KOldMessageDialog : public KdFramelessDialog
{
    Q_OBJECT

public:
    /**
     * Tells something.
     * @param text shown as it is, markup too.
     * @param parent the dialog stands over its window and goes with it; may be null.
     * @param buttons of Ok, Yes and No; without any of them there is Ok.
     * @param title empty: the application's display name.
     * @return the button pressed; Ok when the dialog was closed otherwise.
     */
    static QDialogButtonBox::StandardButton
    Infomation(const KdLiveText& text, QWidget* parent,
               QDialogButtonBox::StandardButtons buttons = QDialogButtonBox::Ok,
               const KdLiveText& title = KdLiveText());

    /**
     * Asks something.
     * @param text shown as it is, markup too.
     * @param parent the dialog stands over its window and goes with it; may be null.
     * @param safeAnswer the default button, also the answer when the dialog is closed otherwise.
     * @param title empty: the application's display name.
     * @return QDialogButtonBox::Yes or QDialogButtonBox::No.
     */
    static QDialogButtonBox::StandardButton
    Question_YesNo(const KdLiveText& text, QWidget* parent,
                   QDialogButtonBox::StandardButton safeAnswer = QDialogButtonBox::Yes,
                   const KdLiveText& title = KdLiveText());

    /** @return the message, for whoever finds the dialog by its object name. */
    QString text() const;

    void RetranslateUi() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    KOldMessageDialog(const KdLiveText& text, QWidget* parent,
                      QDialogButtonBox::StandardButtons buttons,
                      QDialogButtonBox::StandardButton safeAnswer, const KdLiveText& title);
    static QDialogButtonBox::StandardButton ask(KOldMessageDialog* dialog,
                                                QDialogButtonBox::StandardButton safeAnswer);
    QWidget* createText();
    void fitText();
    void addButton(QDialogButtonBox::StandardButton button, bool isDefault);

    KdLiveText m_text;
    KdLiveText m_title;
    KdWrapLabel* m_pText = nullptr;
    QScrollArea* m_pScroll = nullptr; ///< null for a short text
    QVector<QPair<QDialogButtonBox::StandardButton, QPushButton*>> m_buttons;
    QDialogButtonBox::StandardButton m_answer;
};
