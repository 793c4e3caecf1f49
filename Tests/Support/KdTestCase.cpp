#include "KdTestCase.h"

#include <KCore/KCoreDirs.h>
#include <KdCore/KdBaseLog.h>

#include <QDir>
#include <QEvent>
#include <QWidget>

#include <algorithm>

namespace {

bool isProblemOfOurs(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtDebugMsg || type == QtInfoMsg) {
        return false;
    }
    // Qt asks the X server about each window that the window manager moves, and the window may have
    // been closed by then; a window may be shown again before the server has told that it was
    // hidden. No user is that quick, tests are.
    return qstrcmp(context.category, "qt.qpa.xcb") != 0 ||
           !(message.contains(QLatin1String("XCB error: 3 (BadWindow)")) ||
             message.contains(QLatin1String("setNetWmStateOnUnmappedWindow() called on mapped")));
}

} // namespace

KdTestCase* KdTestCase::s_current = nullptr;
QtMessageHandler KdTestCase::s_previousHandler = nullptr;

KdTestCase::KdTestCase() = default;

KdTestCase::~KdTestCase() = default;

void KdTestCase::expectLog(const QString& pattern)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_expectations.append({QRegularExpression(pattern), true, false});
}

void KdTestCase::allowLog(const QString& pattern)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_expectations.append({QRegularExpression(pattern), false, false});
}

QStringList KdTestCase::logLines() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_lines;
}

QVector<KdLogRecord> KdTestCase::logRecords() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_records;
}

QString KdTestCase::documentDir() const
{
    return temporaryPath(QStringLiteral("documents"));
}

QString KdTestCase::temporaryPath(const QString& name) const
{
    return m_folder->filePath(name);
}

void KdTestCase::init()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_lines.clear();
        m_records.clear();
        m_unexpected.clear();
        m_expectations.clear();
    }
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY2(m_folder->isValid(), "No temporary folder");
    setZentraDocumentDir(documentDir());

    s_current = this;
    s_previousHandler = qInstallMessageHandler(handleQtMessage);
    KdBaseLog::defaultLogger()->setObserver([this](const KdLogRecord& logged) {
        keep(logged);
        record(QString::fromUtf8(logged.function) + QStringLiteral(": ") + logged.message,
               logged.level >= KdBaseLog::Warning);
    });
}

void KdTestCase::cleanup()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QStringList leaked;
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (const QWidget* widget : widgets) {
        // Qt keeps the frame of a combo box's closed list and the tool tip label for later use.
        if (!widget->parent() && !widget->inherits("QTipLabel")) {
            leaked.append(QString::fromLatin1(widget->metaObject()->className()) +
                          QLatin1Char(' ') + widget->objectName());
        }
    }
    KdBaseLog::defaultLogger()->setObserver(nullptr);
    qInstallMessageHandler(s_previousHandler);
    s_current = nullptr;
    m_folder.reset();

    const QStringList missing = missingLines();
    QVERIFY2(leaked.isEmpty(),
             qPrintable(QStringLiteral("Left behind: ") + leaked.join(QStringLiteral(", "))));
    QVERIFY2(m_unexpected.isEmpty(), qPrintable(QStringLiteral("Unexpected in the log: ") +
                                                m_unexpected.join(QLatin1Char('\n'))));
    QVERIFY2(missing.isEmpty(), qPrintable(QStringLiteral("Missing from the log: ") +
                                           missing.join(QStringLiteral(", "))));
}

QStringList KdTestCase::missingLines() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    QStringList missing;
    for (const Expectation& expectation : m_expectations) {
        if (expectation.required && !expectation.seen) {
            missing.append(expectation.pattern.pattern());
        }
    }
    return missing;
}

void KdTestCase::handleQtMessage(QtMsgType type, const QMessageLogContext& context,
                                 const QString& message)
{
    const bool isProblem = isProblemOfOurs(type, context, message);
    if (s_current) {
        s_current->record(message, isProblem);
    }
    if (s_previousHandler) {
        s_previousHandler(type, context, message);
    }
}

void KdTestCase::keep(const KdLogRecord& logged)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_records.append(logged);
}

void KdTestCase::record(const QString& line, bool isProblem)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_lines.append(line);
    if (!isProblem) {
        return;
    }
    bool expected = false;
    for (Expectation& expectation : m_expectations) {
        if (expectation.pattern.match(line).hasMatch()) {
            expectation.seen = true;
            expected = true;
        }
    }
    if (!expected) {
        m_unexpected.append(line);
    }
}
