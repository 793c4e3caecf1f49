#include "WindowAnswers.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWindow>

namespace {

constexpr int kPollMs = 5;
constexpr int kOnScreenMs = 5000;

QString messageName()
{
    return QStringLiteral("KOldMessageDialog");
}

QString popoverName()
{
    return QStringLiteral("KdPopovers");
}

QString buttonName(QDialogButtonBox::StandardButton button)
{
    const QString suffix = button == QDialogButtonBox::Ok    ? QStringLiteral("_Ok")
                           : button == QDialogButtonBox::Yes ? QStringLiteral("_Yes")
                                                             : QStringLiteral("_No");
    return messageName() + suffix;
}

} // namespace

WindowAnswers::WindowAnswers()
{
    qApp->installEventFilter(this);
}

WindowAnswers::~WindowAnswers()
{
    for (auto it = m_answers.cbegin(); it != m_answers.cend(); ++it) {
        for (const Answer& answer : it.value()) {
            DialogDriver::fail(it.key() + QStringLiteral(" was announced and did not come"),
                               answer.place);
        }
    }
}

void WindowAnswers::answerMessage(QDialogButtonBox::StandardButton button, const TestPlace& place)
{
    const auto press = [button, place](QWidget& window) {
        DialogDriver::click(window, buttonName(button), place);
    };
    handle(messageName(), press, place);
}

void WindowAnswers::answerPopover(bool confirm, const TestPlace& place)
{
    const QString suffix = confirm ? QStringLiteral("_Confirm") : QStringLiteral("_Cancel");
    const auto press = [suffix, place](QWidget& window) {
        DialogDriver::click(window, popoverName() + suffix, place);
    };
    handle(popoverName(), press, place);
}

void WindowAnswers::handle(const QString& windowName, std::function<void(QWidget&)> action,
                           const TestPlace& place)
{
    m_answers[windowName].append({std::move(action), place});
}

QStringList WindowAnswers::messages() const
{
    return m_texts.value(messageName());
}

QStringList WindowAnswers::popovers() const
{
    return m_texts.value(popoverName());
}

int WindowAnswers::pending() const
{
    int count = 0;
    for (const QList<Answer>& answers : m_answers) {
        count += answers.size();
    }
    return count;
}

bool WindowAnswers::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        auto* const window = static_cast<QWidget*>(watched);
        const bool isAnnounced = !m_answers.value(window->objectName()).isEmpty();
        if (window->isWindow() && (isAnnounced || window->objectName() == messageName())) {
            answerOnScreen(window);
        }
    }
    return QObject::eventFilter(watched, event);
}

void WindowAnswers::answerOnScreen(QWidget* window)
{
    // The window's child, so that it dies with a window that goes by itself.
    auto* const poll = new QTimer(window);
    const QDeadlineTimer deadline(kOnScreenMs);
    connect(poll, &QTimer::timeout, this, [this, window, poll, deadline] {
        const bool isOnScreen =
            window->isVisible() && window->windowHandle() && window->windowHandle()->isExposed();
        if (isOnScreen || deadline.hasExpired()) {
            poll->stop();
            poll->deleteLater();
            answer(*window);
        }
    });
    poll->start(kPollMs);
}

void WindowAnswers::answer(QWidget& window)
{
    const QString name = window.objectName();
    const QString text = DialogDriver::windowText(window);
    m_texts[name].append(text);
    QList<Answer>& answers = m_answers[name];
    if (answers.isEmpty()) {
        DialogDriver::fail(QStringLiteral("Unexpected ") + name + QStringLiteral(": ") + text);
        window.close();
        return;
    }
    const Answer next = answers.takeFirst();
    const QPointer<QWidget> guard = &window;
    next.action(window);
    // A message box that stays would block the test for good.
    if (guard && guard->isVisible() && name == messageName()) {
        DialogDriver::fail(name + QStringLiteral(" did not close: ") + text, next.place);
        guard->close();
    }
}
