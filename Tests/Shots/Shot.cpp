#include "Shot.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QScreen>
#include <QTest>
#include <QTextStream>
#include <QWidget>

namespace {

bool belongsTo(const QObject* candidate, const QObject* window)
{
    while (candidate && candidate != window) {
        candidate = candidate->parent();
    }
    return candidate;
}

/** Visible windows that belong to the dialog, and so lie over it. */
QWidgetList windowsOver(const QWidget* window)
{
    QWidgetList over;
    const QWidgetList all = QApplication::topLevelWidgets();
    for (QWidget* candidate : all) {
        if (candidate != window && candidate->isVisible() && belongsTo(candidate, window)) {
            over.append(candidate);
        }
    }
    return over;
}

QPixmap onScreen(const QWidget* window, const QWidgetList& over)
{
    QRect area = window->geometry();
    for (const QWidget* other : over) {
        area |= other->geometry();
    }
    return window->screen()->grabWindow(0, area.x(), area.y(), area.width(), area.height());
}

} // namespace

Shot::Shot(const QString& folder, const QString& skin)
    : m_folder(folder)
    , m_suffix(QStringLiteral("-%1-%2.png").arg(skin).arg(qRound(qApp->devicePixelRatio() * 100.0)))
{
}

bool Shot::take(QWidget* window, const QString& name) const
{
    if (!window || !QTest::qWaitForWindowExposed(window)) {
        QTextStream(stderr) << "No window for " << name << '\n';
        return false;
    }
    // The compositor takes a moment to show what was painted.
    letPass(200);
    const QString path = QDir(m_folder).filePath(name + m_suffix);
    if (!onScreen(window, windowsOver(window)).save(path)) {
        QTextStream(stderr) << "Cannot write " << path << '\n';
        return false;
    }
    return true;
}

bool Shot::waitFor(const std::function<bool()>& condition, const char* what)
{
    const bool came = QTest::qWaitFor(condition);
    if (!came) {
        QTextStream(stderr) << "Did not come: " << what << '\n';
    }
    return came;
}

void Shot::letPass(int ms)
{
    QTest::qWait(ms);
}
