#pragma once

#include <KdWidgets/KdFramelessDialog.h>

#include <QDialogButtonBox>

/**
 * Modal messages with plain text, broken into lines and scrolled where it is long. Object names:
 * the dialog "KOldMessageDialog", its text "KOldMessageDialog_Text", its buttons
 * "KOldMessageDialog_Ok", "_Yes" and "_No". The calls run an event loop and return when the dialog
 * was answered or destroyed (with its parent, say): whoever calls must look whether it still exists
 * itself. GUI thread.
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
    Infomation(const QString& text, QWidget* parent,
               QDialogButtonBox::StandardButtons buttons = QDialogButtonBox::Ok,
               const QString& title = QString());

    /**
     * Asks something.
     * @param text shown as it is, markup too.
     * @param parent the dialog stands over its window and goes with it; may be null.
     * @param safeAnswer the default button, also the answer when the dialog is closed otherwise.
     * @param title empty: the application's display name.
     * @return QDialogButtonBox::Yes or QDialogButtonBox::No.
     */
    static QDialogButtonBox::StandardButton
    Question_YesNo(const QString& text, QWidget* parent,
                   QDialogButtonBox::StandardButton safeAnswer = QDialogButtonBox::Yes,
                   const QString& title = QString());

    /** @return the message, for whoever finds the dialog by its object name. */
    QString text() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    KOldMessageDialog(const QString& text, QWidget* parent,
                      QDialogButtonBox::StandardButtons buttons,
                      QDialogButtonBox::StandardButton safeAnswer, const QString& title);
    static QDialogButtonBox::StandardButton ask(KOldMessageDialog* dialog,
                                                QDialogButtonBox::StandardButton safeAnswer);
    QWidget* createText();
    void addButton(QDialogButtonBox::StandardButton button, bool isDefault);

    QString m_sText;
    QDialogButtonBox::StandardButton m_answer;
};
