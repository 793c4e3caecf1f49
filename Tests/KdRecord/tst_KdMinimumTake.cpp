#include <Support/KdTestCase.h>
#include <Support/WindowAnswers.h>

#include <KdRecord/KdMinimumTake.h>

#include <QWidget>

class tst_KdMinimumTake : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsTooShortBeforeATakeBegan();
    void takeIsTooShortForASecond_data();
    void takeIsTooShortForASecond();
    void restartMeasuresAnew();
    void takeThatIsOverIsNotTooShort();
    void systemClockRuns();
    void userIsTold();
};

void tst_KdMinimumTake::nothingIsTooShortBeforeATakeBegan()
{
    const KdMinimumTake take([] { return qint64(0); });
    QVERIFY(!take.isTooShort());
}

void tst_KdMinimumTake::takeIsTooShortForASecond_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<bool>("isTooShort");
    QTest::newRow("at once") << 0 << true;
    QTest::newRow("999 ms") << 999 << true;
    QTest::newRow("1000 ms") << 1000 << false;
    QTest::newRow("long") << 3600000 << false;
}

void tst_KdMinimumTake::takeIsTooShortForASecond()
{
    QFETCH(int, milliseconds);
    QFETCH(bool, isTooShort);
    qint64 now = 123456;
    KdMinimumTake take([&now] { return now; });
    take.restart();
    now += milliseconds;
    QCOMPARE(take.isTooShort(), isTooShort);
}

void tst_KdMinimumTake::restartMeasuresAnew()
{
    qint64 now = 0;
    KdMinimumTake take([&now] { return now; });
    take.restart();
    now = 5000;
    take.restart();
    QVERIFY(take.isTooShort());
}

void tst_KdMinimumTake::takeThatIsOverIsNotTooShort()
{
    KdMinimumTake take([] { return qint64(0); });
    take.restart();
    take.invalidate();
    QVERIFY(!take.isTooShort());
}

void tst_KdMinimumTake::systemClockRuns()
{
    KdMinimumTake take;
    take.restart();
    QVERIFY(take.isTooShort());
    QTRY_VERIFY(!take.isTooShort());
}

void tst_KdMinimumTake::userIsTold()
{
    QWidget panel;
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    KdMinimumTake::tellTooShort(&panel);
    QCOMPARE(answers.messages(),
             QStringList{QStringLiteral("The recording is too short. Data cannot be saved.")});
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdMinimumTake>(argc, argv);
}

#include "tst_KdMinimumTake.moc"
