#include "Support/KdTestCase.h"

#include <KdRecord/KdRecordShortcut.h>
#include <KdZentraCore/IKdShortcutEditManager.h>

#include <QCheckBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QtTest/qtestspontaneevent.h>

namespace {

/** Takes a key while Qt asks for it, as a panel takes its shortcut. */
class ShortcutTaker : public QObject
{
public:
    ShortcutTaker(QWidget* watched, int key) : m_eater(this), m_nKey(key)
    {
        watched->installEventFilter(this);
    }

    void stop() { m_nKey = 0; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::ShortcutOverride) {
            return QObject::eventFilter(watched, event);
        }
        const auto* const key = static_cast<QKeyEvent*>(event);
        if (key->key() == m_nKey) {
            event->accept();
            m_eater.eat(m_nKey);
        }
        return true;
    }

private:
    KdKeyPressEater m_eater;
    int m_nKey;
};

/** As the window system sends it: without asking for a shortcut once more. */
void send(QWidget* widget, QEvent::Type type, int key, bool isRepeated = false)
{
    const QString text = QString(QChar(key)).toLower();
    QKeyEvent event(type, key, Qt::NoModifier, text, isRepeated);
    QSpontaneKeyEvent::setSpontaneous(&event);
    QApplication::instance()->notify(widget, &event);
}

} // namespace

class tst_KdRecordShortcut : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void shortcutIsTheHosts();
    void onlyTheVeryKeysMatch_data();
    void onlyTheVeryKeysMatch();
    void restOfThePressDoesNotReachTheFocusedControl();
    void repetitionsOfAHeldKeyAreSwallowedToo();
    void otherKeysGetThrough();
    void nextPressGetsThroughThoughTheReleaseWasMissed();

protected Q_SLOTS:
    void cleanup();
};

void tst_KdRecordShortcut::cleanup()
{
    IKdShortcutEditManager::GetInstance()->SetKeySequence(IKdShortcutEditManager::kRecordShortcutId,
                                                          QKeySequence(Qt::Key_Space));
    KdTestCase::cleanup();
}

void tst_KdRecordShortcut::shortcutIsTheHosts()
{
    QCOMPARE(KdRecordShortcut::sequence(), QKeySequence(Qt::Key_Space));
    QCOMPARE(KdRecordShortcut::text(), QStringLiteral("Space"));
    IKdShortcutEditManager::GetInstance()->SetKeySequence(IKdShortcutEditManager::kRecordShortcutId,
                                                          QKeySequence(QStringLiteral("Ctrl+R")));
    QCOMPARE(KdRecordShortcut::sequence(), QKeySequence(QStringLiteral("Ctrl+R")));
    QCOMPARE(KdRecordShortcut::text(),
             QKeySequence(QStringLiteral("Ctrl+R")).toString(QKeySequence::NativeText));
}

void tst_KdRecordShortcut::onlyTheVeryKeysMatch_data()
{
    QTest::addColumn<QKeySequence>("shortcut");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("matches");
    const QKeySequence space(Qt::Key_Space);
    const QKeySequence ctrlR(QStringLiteral("Ctrl+R"));
    const int none = Qt::NoModifier;
    QTest::newRow("the key") << space << int(Qt::Key_Space) << none << true;
    QTest::newRow("with shift") << space << int(Qt::Key_Space) << int(Qt::ShiftModifier) << false;
    QTest::newRow("another key") << space << int(Qt::Key_A) << none << false;
    QTest::newRow("with its modifier")
        << ctrlR << int(Qt::Key_R) << int(Qt::ControlModifier) << true;
    QTest::newRow("without its modifier") << ctrlR << int(Qt::Key_R) << none << false;
    QTest::newRow("no shortcut, no key") << QKeySequence() << 0 << none << false;
    QTest::newRow("first of two strokes") << QKeySequence(QStringLiteral("Ctrl+R, S"))
                                          << int(Qt::Key_R) << int(Qt::ControlModifier) << false;
}

void tst_KdRecordShortcut::onlyTheVeryKeysMatch()
{
    QFETCH(QKeySequence, shortcut);
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(bool, matches);
    const QKeyEvent event(QEvent::ShortcutOverride, key, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(KdRecordShortcut::matches(event, shortcut), matches);
}

void tst_KdRecordShortcut::restOfThePressDoesNotReachTheFocusedControl()
{
    QCheckBox box;
    ShortcutTaker taker(&box, Qt::Key_Space);
    QTest::keyClick(&box, Qt::Key_Space);
    QVERIFY(!box.isChecked());

    taker.stop();
    QTest::keyClick(&box, Qt::Key_Space);
    QVERIFY(box.isChecked());
}

void tst_KdRecordShortcut::repetitionsOfAHeldKeyAreSwallowedToo()
{
    QLineEdit edit;
    ShortcutTaker taker(&edit, Qt::Key_A);
    send(&edit, QEvent::ShortcutOverride, Qt::Key_A);
    send(&edit, QEvent::KeyPress, Qt::Key_A);
    taker.stop();
    for (int i = 0; i < 3; ++i) {
        send(&edit, QEvent::KeyRelease, Qt::Key_A, true);
        send(&edit, QEvent::ShortcutOverride, Qt::Key_A, true);
        send(&edit, QEvent::KeyPress, Qt::Key_A, true);
    }
    send(&edit, QEvent::KeyRelease, Qt::Key_A);
    QCOMPARE(edit.text(), QString());

    QTest::keyClick(&edit, Qt::Key_A);
    QCOMPARE(edit.text(), QStringLiteral("a"));
}

void tst_KdRecordShortcut::otherKeysGetThrough()
{
    QLineEdit edit;
    KdKeyPressEater eater(&edit);
    eater.eat(Qt::Key_Space);
    QTest::keyClick(&edit, Qt::Key_B);
    QCOMPARE(edit.text(), QStringLiteral("b"));
}

void tst_KdRecordShortcut::nextPressGetsThroughThoughTheReleaseWasMissed()
{
    QCheckBox box;
    ShortcutTaker taker(&box, Qt::Key_Space);
    send(&box, QEvent::ShortcutOverride, Qt::Key_Space);
    send(&box, QEvent::KeyPress, Qt::Key_Space);
    taker.stop();

    QTest::keyClick(&box, Qt::Key_Space);
    QVERIFY(box.isChecked());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdRecordShortcut>(argc, argv);
}

#include "tst_KdRecordShortcut.moc"
