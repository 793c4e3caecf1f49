#include "ShownTexts.h"

#include "PaintedTexts.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTabBar>
#include <QVariant>
#include <QWidget>

namespace KdTest {

namespace {

using Texts = QVector<ShownText>;

const char* const kTextProperties[] = {
    "text",      "title",         "windowTitle",      "toolTip",
    "statusTip", "whatsThis",     "accessibleName",   "accessibleDescription",
    "prefix",    "suffix",        "specialValueText", "placeholderText",
    "plainText", "windowIconText"};

void add(Texts& texts, const QObject& object, const QString& part, const QString& text)
{
    if (!text.trimmed().isEmpty()) {
        texts.append({nameOf(object) + QLatin1Char(' ') + part, text});
    }
}

void addRows(Texts& texts, const QObject& view, const QAbstractItemModel* model)
{
    for (int row = 0; model && row < model->rowCount(); ++row) {
        const QModelIndex index = model->index(row, 0);
        for (const auto role : {Qt::DisplayRole, Qt::ToolTipRole, Qt::AccessibleTextRole,
                                Qt::AccessibleDescriptionRole}) {
            add(texts, view, QStringLiteral("row %1").arg(row), index.data(role).toString());
        }
    }
}

void addTabs(Texts& texts, const QTabBar& bar)
{
    for (int tab = 0; tab < bar.count(); ++tab) {
        add(texts, bar, QStringLiteral("tab %1").arg(tab), bar.tabText(tab));
        add(texts, bar, QStringLiteral("tab %1").arg(tab), bar.tabToolTip(tab));
    }
}

void addActions(Texts& texts, const QList<QAction*>& actions)
{
    for (const QAction* action : actions) {
        add(texts, *action, QStringLiteral("text"), action->text());
        add(texts, *action, QStringLiteral("toolTip"), action->toolTip());
    }
}

void addTexts(Texts& texts, const QObject& object)
{
    for (const char* const property : kTextProperties) {
        add(texts, object, QLatin1String(property), object.property(property).toString());
    }
    if (const auto* combo = qobject_cast<const QComboBox*>(&object)) {
        addRows(texts, object, combo->model());
    } else if (const auto* view = qobject_cast<const QAbstractItemView*>(&object)) {
        addRows(texts, object, view->model());
    } else if (const auto* bar = qobject_cast<const QTabBar*>(&object)) {
        addTabs(texts, *bar);
    } else if (const auto* tray = qobject_cast<const QSystemTrayIcon*>(&object)) {
        addActions(texts, tray->contextMenu() ? tray->contextMenu()->actions() : QList<QAction*>());
    }
    if (const auto* widget = qobject_cast<const QWidget*>(&object)) {
        addActions(texts, widget->actions());
    }
}

} // namespace

QVector<ShownText> readableTexts(QWidget& window)
{
    Texts texts = shownTexts(window);
    QString told;
    for (const ShownText& text : qAsConst(texts)) {
        told += text.text.simplified().remove(QLatin1Char('&')) + QLatin1Char('\n');
    }
    const QList<QWidget*> widgets = QList<QWidget*>{&window} + window.findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        const QVector<PaintedText> lines =
            widget->isVisible() ? paintedTexts(*widget) : QVector<PaintedText>();
        for (const PaintedText& line : lines) {
            // Elided: the rest is told.
            const QString painted =
                line.text.simplified().remove(QLatin1Char('&')).remove(QChar(0x2026));
            if (!told.contains(painted)) {
                add(texts, *widget, QStringLiteral("paints"), line.text);
            }
        }
    }
    return texts;
}

QString nameOf(const QObject& object)
{
    return QString::fromLatin1(object.metaObject()->className()) + QLatin1Char(' ') +
           object.objectName();
}

QVector<ShownText> shownTexts(const QWidget& window)
{
    Texts texts;
    addTexts(texts, window);
    const QList<QObject*> children = window.findChildren<QObject*>();
    for (const QObject* child : children) {
        addTexts(texts, *child);
    }
    return texts;
}

} // namespace KdTest
