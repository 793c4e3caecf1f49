#pragma once

#include <Support/DialogDriver.h>
#include <Support/KdTestCase.h>
#include <Support/ScriptedEngine.h>
#include <Support/WindowAnswers.h>

#include <KdRecord/KdOutputFolderCheck.h>

#include <QAbstractButton>
#include <QDateTime>
#include <QPointer>
#include <QStringList>
#include <QTranslator>
#include <QWidget>

#include <initializer_list>
#include <memory>

/** Says everything in brackets. */
class BracketingTranslator : public QTranslator
{
public:
    QString translate(const char* context, const char* source, const char* disambiguation,
                      int n) const override;
    bool isEmpty() const override { return false; }
};

/**
 * What the tests of the recording panels have in common: a scripted engine whose takes leave a
 * file, fresh settings, a folder for takes, a clock that stands still until it is moved, and a main
 * window of the host.
 */
class RecordFixture : public KdTestCase
{
    Q_OBJECT

public:
    static constexpr const char* kTooShort = "The recording is too short. Data cannot be saved.";
    static constexpr const char* kDeviceIssue = "Unable to record due to an issue with the device.";
    static constexpr const char* kPermission =
        "Please check whether you have permission to write or read on the path, or choose other "
        "path to create.";

    /** @param lines UTF-8 */
    static QStringList texts(std::initializer_list<const char*> lines);
    /** @return the signals and slots that a class declares itself, in their order. */
    static QStringList methodsOf(const QMetaObject& meta);
    static KdOutputFolderCheck withFreeSpace(qint64 megabytes);
    static void setShortcut(const QKeySequence& sequence);

protected:
    void setMicrophones(const QStringList& names);
    /** A child of the tested window, by name; null when the window is gone. */
    template <typename Widget>
    Widget* control(const char* name) const
    {
        return window ? window->findChild<Widget*>(QLatin1String(name)) : nullptr;
    }
    QAbstractButton* button(const char* name) const { return control<QAbstractButton>(name); }
    void click(const char* name, const TestPlace& place = TestPlace());
    bool isLocked() const;
    void pressKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /** The take has run for that long by the panel's clock. */
    void passTime(qint64 milliseconds) { nowMs += milliseconds; }
    /** @return the files in a folder, by name. */
    static QStringList filesIn(const QString& folder);
    /** @return the visible window of a class that is the only one of it; null without one. */
    template <typename Widget>
    static Widget* shownWindow()
    {
        for (QWidget* const top : QApplication::topLevelWidgets()) {
            auto* const found = qobject_cast<Widget*>(top);
            if (found && found->isVisible()) {
                return found;
            }
        }
        return nullptr;
    }
    /** Waits until everything that was posted by now has been delivered. */
    static void drain();

    std::unique_ptr<ScriptedEngine> engine;
    /** Here from the start: a message that no one expects would block the test. */
    std::unique_ptr<WindowAnswers> answers;
    std::unique_ptr<QWidget> mainWindow;
    QPointer<QWidget> window;
    /** The panel's signals in order, "sigStartCapture(false)". */
    QStringList signalTexts;
    QString finishedPath;
    qint64 nowMs = 0;
    QDateTime localTime;

protected Q_SLOTS:
    void init();
    void cleanup();
};
