#include "Support/KdTestCase.h"

#include <KdRecord/KdTakePath.h>

#include <QDir>
#include <QLocale>

/** The name of a take where the system's language has digits of its own. */
class tst_KdTakePathDigits : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void nameHasTheDigitsOfEveryOtherSystem();
};

void tst_KdTakePathDigits::nameHasTheDigitsOfEveryOtherSystem()
{
    QVERIFY(QLocale::system().zeroDigit() != QLatin1Char('0'));
    const QDateTime time(QDate(2026, 3, 9), QTime(8, 5, 7));
    const QString pattern = QStringLiteral("/REC_%1.m4a");
    const QString expected = QStringLiteral("/takes/REC_20260309_080507.m4a");
    QCOMPARE(KdTakePath::compose(QStringLiteral("/takes"), pattern, time),
             QDir::toNativeSeparators(expected));
}

int main(int argc, char** argv)
{
    // Qt takes the name alone; the system need not have that language.
    qputenv("LC_ALL", "fa_IR.UTF-8");
    return KdTest::run<tst_KdTakePathDigits>(argc, argv);
}

#include "tst_KdTakePathDigits.moc"
