#include <KdZentraCore/IKdShortcutEditManager.h>
#include <Support/KdTestCase.h>

class tst_KdShortcutEditManager : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void recordShortcutIsSpaceUnderItsNumber();
    void unknownNumberHasNoKeys();
    void changedKeysAreAnswered();
};

void tst_KdShortcutEditManager::recordShortcutIsSpaceUnderItsNumber()
{
    QCOMPARE(IKdShortcutEditManager::kRecordShortcutId, 3000);
    QCOMPARE(IKdShortcutEditManager::GetInstance()->GetKeySequence(3000),
             QKeySequence(Qt::Key_Space));
}

void tst_KdShortcutEditManager::unknownNumberHasNoKeys()
{
    for (const int id : {-1, 0, 2999, 3001}) {
        QVERIFY(IKdShortcutEditManager::GetInstance()->GetKeySequence(id).isEmpty());
    }
}

void tst_KdShortcutEditManager::changedKeysAreAnswered()
{
    IKdShortcutEditManager* const manager = IKdShortcutEditManager::GetInstance();
    const QKeySequence before = manager->GetKeySequence(3000);
    const QKeySequence changed(QStringLiteral("Ctrl+R"));
    manager->SetKeySequence(3000, changed);
    QCOMPARE(manager->GetKeySequence(3000), changed);
    manager->SetKeySequence(3000, QKeySequence());
    QVERIFY(manager->GetKeySequence(3000).isEmpty());
    manager->SetKeySequence(3000, before);
    QCOMPARE(IKdShortcutEditManager::GetInstance()->GetKeySequence(3000), before);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdShortcutEditManager>(argc, argv);
}

#include "tst_KdShortcutEditManager.moc"
