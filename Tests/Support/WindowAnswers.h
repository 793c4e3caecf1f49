#pragma once

#include "DialogDriver.h"

#include <QDialogButtonBox>
#include <QHash>
#include <QList>
#include <QObject>
#include <QStringList>

#include <functional>

/**
 * Answers windows that a test cannot answer itself, because showing them blocks it: message boxes
 * above all. Announce the answers before the step that brings the windows up; they are used in the
 * order announced, one for each window. While this object lives
 * - a message box that was not announced fails the test with its text and is closed,
 * - an announced window that does not come fails the test when this object goes.
 * A window is answered when it is on the screen, with real clicks.
 */
class WindowAnswers : public QObject
{
    Q_OBJECT

public:
    WindowAnswers();
    ~WindowAnswers() override;

    /** Presses this button of the next message box. @param button Ok, Yes or No */
    void answerMessage(QDialogButtonBox::StandardButton button,
                       const TestPlace& place = TestPlace());
    /** Presses "Confirm" or "Cancel" of the next confirm popover. */
    void answerPopover(bool confirm, const TestPlace& place = TestPlace());
    /** Runs action on the next window with this object name; it has to see to it that the window
     * closes. */
    void handle(const QString& windowName, std::function<void(QWidget&)> action,
                const TestPlace& place = TestPlace());

    /** The texts of the message boxes that came, in their order. */
    QStringList messages() const;
    QStringList popovers() const;
    /** @return how many announced windows have not come. */
    int pending() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Answer
    {
        std::function<void(QWidget&)> action;
        TestPlace place;
    };

    void answerOnScreen(QWidget* window);
    void answer(QWidget& window);

    QHash<QString, QList<Answer>> m_answers;
    QHash<QString, QStringList> m_texts;
};
