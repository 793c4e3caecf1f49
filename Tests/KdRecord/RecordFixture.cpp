#include "RecordFixture.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KRecordSettingParam.h>
#include <KdVBLModel/KdTrackEventLog.h>
#include <KdZentraCore/IKdShortcutEditManager.h>
#include <KdZentraCore/KdUtility.h>
#include <KdZentraCore/KdWindowsApi.h>

#include <QDir>
#include <QMetaMethod>

using namespace KdVBLMODEL;

QString BracketingTranslator::translate(const char* context, const char* source,
                                        const char* disambiguation, int n) const
{
    Q_UNUSED(context)
    Q_UNUSED(disambiguation)
    Q_UNUSED(n)
    return QStringLiteral("[%1]").arg(QString::fromUtf8(source));
}

QStringList RecordFixture::texts(std::initializer_list<const char*> lines)
{
    QStringList list;
    for (const char* const line : lines) {
        list.append(QString::fromUtf8(line));
    }
    return list;
}

QStringList RecordFixture::methodsOf(const QMetaObject& meta)
{
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        methods.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    return methods;
}

KdOutputFolderCheck RecordFixture::withFreeSpace(qint64 megabytes)
{
    return KdOutputFolderCheck([megabytes](const QString&) { return megabytes; });
}

void RecordFixture::setShortcut(const QKeySequence& sequence)
{
    IKdShortcutEditManager::GetInstance()->SetKeySequence(IKdShortcutEditManager::kRecordShortcutId,
                                                          sequence);
}

void RecordFixture::init()
{
    KdTestCase::init();
    answers = std::make_unique<WindowAnswers>();
    engine = std::make_unique<ScriptedEngine>();
    engine->script().take = QByteArrayLiteral("sound");
    setMicrophones({QStringLiteral("Mic A"), QStringLiteral("Mic B")});
    KRecordSettingParam::instance()->release();
    KdAppSettings::GetInstance()->Load();
    KdTrackEventLog::clear();
    mainWindow = std::make_unique<QWidget>();
    mainWindow->setObjectName(QStringLiteral("Host"));
    KdUtility::gSetMainWindow(mainWindow.get());
    signalTexts.clear();
    finishedPath.clear();
    nowMs = 1000000;
    localTime = QDateTime(QDate(2026, 3, 9), QTime(8, 5, 7));
}

void RecordFixture::cleanup()
{
    answers.reset();
    delete window;
    mainWindow.reset();
    engine.reset();
    setShortcut(QKeySequence(Qt::Key_Space));
    KdTestCase::cleanup();
}

void RecordFixture::setMicrophones(const QStringList& names)
{
    QList<_KdCaptureDevInf> devices;
    for (const QString& name : names) {
        const int index = devices.size();
        devices.append({kdtMicrophone, index, name, QStringLiteral("id-") + name});
    }
    engine->script().microphones = devices;
}

void RecordFixture::click(const char* name, const TestPlace& place)
{
    DialogDriver::click(*window, QLatin1String(name), place);
}

bool RecordFixture::isLocked() const
{
    return !KdWindowsApi::IsWindowsEnableApi(mainWindow->winId());
}

void RecordFixture::pressKey(int key, Qt::KeyboardModifiers modifiers)
{
    QWidget* const focused = QApplication::focusWidget();
    QTest::keyClick(focused ? focused : window.data(), static_cast<Qt::Key>(key), modifiers);
    drain();
}

QStringList RecordFixture::filesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files, QDir::Name);
}

void RecordFixture::drain()
{
    // Posted events come in the order posted, so whatever was posted before has been delivered.
    bool isOver = false;
    QMetaObject::invokeMethod(
        qApp, [&isOver] { isOver = true; }, Qt::QueuedConnection);
    QTRY_VERIFY(isOver);
}
