#include <Studio/StudioMessageWatch.h>

#include <Studio/StudioMouse.h>

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace {

QString textOf(const QDialog* message)
{
    const auto* const own = message->findChild<QLabel*>(QStringLiteral("KOldMessageDialog_Text"));
    if (own) {
        return own->text();
    }
    QStringList texts;
    const QList<QLabel*> labels = message->findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        if (!label->text().isEmpty()) {
            texts.append(label->text());
        }
    }
    return texts.isEmpty() ? message->windowTitle() : texts.join(QLatin1Char(' '));
}

QPushButton* safeButton(const QDialog* message)
{
    const QList<QPushButton*> buttons = message->findChildren<QPushButton*>();
    const auto isDefault = [](const QPushButton* button) {
        return button->isDefault() && button->isVisible();
    };
    const auto found = std::find_if(buttons.cbegin(), buttons.cend(), isDefault);
    return found == buttons.cend() ? nullptr : *found;
}

} // namespace

StudioMessageWatch::StudioMessageWatch(std::function<bool(const QDialog*)> isMessage,
                                       QObject* parent)
    : QObject(parent), m_isMessage(std::move(isMessage))
{
    qApp->installEventFilter(this);
}

StudioMessageWatch::~StudioMessageWatch() = default;

bool StudioMessageWatch::eventFilter(QObject* watched, QEvent* event)
{
    auto* const dialog = event->type() == QEvent::Show ? qobject_cast<QDialog*>(watched) : nullptr;
    if (dialog && dialog->isModal() && (!m_isMessage || m_isMessage(dialog))) {
        // Only once its own loop runs can it be answered.
        QTimer::singleShot(0, this, [this, message = QPointer<QDialog>(dialog)] {
            if (message) {
                answer(message);
            }
        });
    }
    return false;
}

void StudioMessageWatch::answer(QDialog* message)
{
    const QPointer<QDialog> guard(message);
    Q_EMIT messageShown(textOf(message));
    if (!guard) {
        return;
    }
    QPushButton* const button = safeButton(message);
    if (button && StudioMouse::obstacle(button).isEmpty()) {
        StudioMouse::click(button);
    } else {
        message->reject();
    }
}
