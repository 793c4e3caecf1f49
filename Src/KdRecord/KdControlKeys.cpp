#include "KdControlKeys.h"

#include <KdWidgets/KdText.h>

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QHelpEvent>
#include <QShortcut>
#include <QTextDocument>
#include <QTextDocumentFragment>

namespace {

QString plain(const QString& tip)
{
    return Qt::mightBeRichText(tip) ? QTextDocumentFragment::fromHtml(tip).toPlainText() : tip;
}

/** What the tip says of a control without one of its own. */
QString meaning(const QWidget& control)
{
    const auto* button = qobject_cast<const QAbstractButton*>(&control);
    QString text = button ? button->text() : control.accessibleName();
    while (text.endsWith(QLatin1Char(':')) || text.endsWith(QChar(0xff1a))) {
        text.chop(1);
    }
    return text;
}

} // namespace

KdControlKeys::KdControlKeys(QWidget* panel) : QObject(panel), m_pPanel(panel) {}

KdControlKeys::~KdControlKeys() = default;

void KdControlKeys::add(QWidget* control, const QKeySequence& key)
{
    m_entries.append({control, key});
    describe(m_entries.last());
    control->installEventFilter(this);
    auto* const shortcut = new QShortcut(key, m_pPanel);
    shortcut->setAutoRepeat(false);
    connect(shortcut, &QShortcut::activated, control, [control] { use(control); });
}

void KdControlKeys::use(QWidget* control)
{
    if (!control->isEnabled() || !control->isVisible()) {
        return;
    }
    if (auto* const list = qobject_cast<QComboBox*>(control)) {
        list->showPopup();
    } else if (auto* const button = qobject_cast<QAbstractButton*>(control)) {
        button->click();
    } else {
        control->setFocus(Qt::ShortcutFocusReason);
        if (auto* const field = qobject_cast<QAbstractSpinBox*>(control)) {
            field->selectAll();
        }
    }
}

void KdControlKeys::describe(const Entry& entry)
{
    entry.control->setAccessibleDescription(entry.key.toString(QKeySequence::NativeText));
}

void KdControlKeys::showTip(const Entry& entry, const QHelpEvent* event)
{
    const QString own = plain(entry.control->toolTip());
    const QString key = entry.key.toString(QKeySequence::NativeText);
    KdText::showToolTip(event, entry.control,
                        KdText::toolTipWithShortcut(QStringLiteral("%1 (%2)").arg(
                            own.isEmpty() ? meaning(*entry.control) : own, key)));
}

bool KdControlKeys::eventFilter(QObject* watched, QEvent* event)
{
    for (const Entry& entry : qAsConst(m_entries)) {
        if (entry.control != watched) {
            continue;
        }
        if (event->type() == QEvent::ToolTip) {
            showTip(entry, static_cast<QHelpEvent*>(event));
            return true;
        }
        if (event->type() == QEvent::LanguageChange) {
            describe(entry);
        }
    }
    return QObject::eventFilter(watched, event);
}
