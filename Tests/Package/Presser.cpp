#include <QApplication>
#include <QGenericPlugin>
#include <QTest>
#include <QTimer>
#include <QWidget>

namespace {

constexpr int kPollMs = 100;

/** What a name begins with that is not pressed, only waited for. */
constexpr QLatin1Char kAwaited('@');

/** A button to press as soon as a person could, and how long to wait before. */
struct Press
{
    QString button; ///< object name or text; after kAwaited the choice that a list shows
    int afterMs = 0;

    bool isAwaited() const { return button.startsWith(kAwaited); }
};

bool isButton(const QWidget* widget, const QString& name)
{
    if (name.startsWith(kAwaited)) {
        return widget->property("currentText").toString() == name.mid(1);
    }
    return widget->objectName() == name || widget->property("text").toString() == name;
}

QWidget* findButton(const QString& name)
{
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget* widget : widgets) {
        if (isButton(widget, name) && widget->isVisible() && widget->isEnabled()) {
            return widget;
        }
    }
    return nullptr;
}

} // namespace

/**
 * Presses the buttons that the environment variable KD_PRESS names, one after the other, as
 * "name after-ms;name after-ms", then ends the application. Each is waited for: the test that
 * started the program knows how long it is ready to wait. "@choice after-ms" waits for a list to
 * show that choice, and presses nothing.
 */
class Presser : public QObject
{
    Q_OBJECT

public:
    Presser()
    {
        const QStringList steps =
            qEnvironmentVariable("KD_PRESS").split(QLatin1Char(';'), Qt::SkipEmptyParts);
        for (const QString& step : steps) {
            const int blank = step.lastIndexOf(QLatin1Char(' '));
            m_presses.append({step.left(blank), step.mid(blank + 1).toInt()});
        }
        m_poll.setInterval(kPollMs);
        connect(&m_poll, &QTimer::timeout, this, &Presser::tryToPress);
        // The plug-in is loaded while the application is being made.
        QMetaObject::invokeMethod(this, &Presser::next, Qt::QueuedConnection);
    }

private:
    void next()
    {
        if (m_presses.isEmpty()) {
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
            return;
        }
        QTimer::singleShot(m_presses.first().afterMs, &m_poll, qOverload<>(&QTimer::start));
    }

    void tryToPress()
    {
        QWidget* const button = findButton(m_presses.first().button);
        if (!button) {
            return;
        }
        m_poll.stop();
        const bool isAwaited = m_presses.takeFirst().isAwaited();
        // Before the press: it may open a dialog that runs until it is closed.
        QMetaObject::invokeMethod(this, &Presser::next, Qt::QueuedConnection);
        if (!isAwaited) {
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }

    QVector<Press> m_presses;
    QTimer m_poll;
};

class PresserPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "Presser.json")

public:
    QObject* create(const QString& key, const QString& arguments) override
    {
        Q_UNUSED(arguments)
        return key == QLatin1String("kdpresser") ? new Presser : nullptr; // the application's
    }
};

#include "Presser.moc"
