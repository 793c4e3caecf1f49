#include "Support/KdTestCase.h"

#include <KdRecord/KdClosing.h>

class tst_KdClosing : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void beginsOnce();
    void reopenedOnceItIsOver();
};

void tst_KdClosing::beginsOnce()
{
    KdClosing closing;
    QVERIFY(!closing.isUnderway());
    QVERIFY(closing.begin());
    QVERIFY(closing.isUnderway());
    QVERIFY(!closing.begin());
    closing.finish();
    QVERIFY(!closing.isUnderway());
    QVERIFY(!closing.begin());
}

void tst_KdClosing::reopenedOnceItIsOver()
{
    KdClosing closing;
    closing.begin();
    closing.reopen();
    QVERIFY(closing.isUnderway());
    closing.finish();
    closing.reopen();
    QVERIFY(closing.begin());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdClosing>(argc, argv);
}

#include "tst_KdClosing.moc"
