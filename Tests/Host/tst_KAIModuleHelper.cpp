#include <KCore/KAIModuleHelper.h>
#include <Support/KdTestCase.h>

#include <climits>

class tst_KAIModuleHelper : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsAvailableThatNobodyOffers();
    void probeIsAskedAnewEachTime();
    void withdrawnModuleIsNotAvailable();
    void probeMayAskItself();
};

void tst_KAIModuleHelper::nothingIsAvailableThatNobodyOffers()
{
    for (const int module : {INT_MIN, -1, 0, 5, 1000, INT_MAX}) {
        QVERIFY(!KAIModuleHelper::isAvailableForUse(module));
    }
}

void tst_KAIModuleHelper::probeIsAskedAnewEachTime()
{
    bool isThere = false;
    KAIModuleHelper::offer(KAIModuleHelper::kBackgroundModule, [&isThere] { return isThere; });
    QVERIFY(!KAIModuleHelper::isAvailableForUse(5));
    isThere = true;
    QVERIFY(KAIModuleHelper::isAvailableForUse(5));
    QVERIFY(!KAIModuleHelper::isAvailableForUse(4));
    KAIModuleHelper::offer(5, {});
}

void tst_KAIModuleHelper::withdrawnModuleIsNotAvailable()
{
    KAIModuleHelper::offer(5, [] { return true; });
    KAIModuleHelper::offer(5, {});
    QVERIFY(!KAIModuleHelper::isAvailableForUse(5));
}

void tst_KAIModuleHelper::probeMayAskItself()
{
    KAIModuleHelper::offer(5, [] { return KAIModuleHelper::isAvailableForUse(6); });
    QVERIFY(!KAIModuleHelper::isAvailableForUse(5));
    KAIModuleHelper::offer(5, {});
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KAIModuleHelper>(argc, argv);
}

#include "tst_KAIModuleHelper.moc"
