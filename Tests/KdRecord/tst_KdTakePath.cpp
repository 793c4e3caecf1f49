#include "Support/KdTestCase.h"

#include <KdRecord/KdTakePath.h>

#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace {

const QDateTime kTime(QDate(2026, 3, 9), QTime(8, 5, 7));

QString audioPattern()
{
    return QStringLiteral("/REC_%1.m4a");
}

} // namespace

class tst_KdTakePath : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void nameHoldsTheLocalTimeToTheSecond();
    void pathDoesNotDependOnHowTheFolderIsWritten_data();
    void pathDoesNotDependOnHowTheFolderIsWritten();
    void emptyPartsCollapse_data();
    void emptyPartsCollapse();
    void absoluteFolderStaysAbsolute();
    void takenNameMovesOnToTheNextSecond();
    void everyNameTakenStillGivesAName();
};

void tst_KdTakePath::nameHoldsTheLocalTimeToTheSecond()
{
    const QString path = KdTakePath::compose(QStringLiteral("/takes"), audioPattern(), kTime);
    QCOMPARE(path, QDir::toNativeSeparators(QStringLiteral("/takes/REC_20260309_080507.m4a")));
}

void tst_KdTakePath::pathDoesNotDependOnHowTheFolderIsWritten_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("expectedFolder");
    const auto row = [](const char* name, const QString& folder, const QString& expected) {
        QTest::newRow(name) << folder << expected;
    };
    row("plain", QStringLiteral("/a/b"), QStringLiteral("/a/b"));
    row("separator at the end", QStringLiteral("/a/b/"), QStringLiteral("/a/b"));
    row("doubled separators", QStringLiteral("/a//b///"), QStringLiteral("/a/b"));
    row("root", QStringLiteral("/"), QString());
    row("blanks", QStringLiteral("/my takes/of today "), QStringLiteral("/my takes/of today "));
    row("place marker", QStringLiteral("/%1/50%/%2"), QStringLiteral("/%1/50%/%2"));
    row("other scripts", QStringLiteral("/録音/تسجيل"), QStringLiteral("/録音/تسجيل"));
    const QString longName(255, QLatin1Char('x'));
    row("longest folder name", QLatin1Char('/') + longName, QLatin1Char('/') + longName);
}

void tst_KdTakePath::pathDoesNotDependOnHowTheFolderIsWritten()
{
    QFETCH(QString, folder);
    QFETCH(QString, expectedFolder);
    const QString expected = expectedFolder + QStringLiteral("/REC_20260309_080507.m4a");
    QCOMPARE(KdTakePath::compose(folder, audioPattern(), kTime),
             QDir::toNativeSeparators(expected));
}

void tst_KdTakePath::emptyPartsCollapse_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QChar>("separator");
    QTest::addColumn<QString>("expected");
    const QChar back = QLatin1Char('\\');
    const QChar forward = QLatin1Char('/');
    QTest::newRow("drive") << QStringLiteral("C:\\\\Takes\\\\REC.m4a") << back
                           << QStringLiteral("C:\\Takes\\REC.m4a");
    QTest::newRow("share loses its front") << QStringLiteral("\\\\server\\share\\REC.m4a") << back
                                           << QStringLiteral("server\\share\\REC.m4a");
    QTest::newRow("root stays") << QStringLiteral("//takes//REC.m4a") << forward
                                << QStringLiteral("/takes/REC.m4a");
    QTest::newRow("relative stays relative")
        << QStringLiteral("takes//REC.m4a") << forward << QStringLiteral("takes/REC.m4a");
    QTest::newRow("empty") << QString() << forward << QString();
}

void tst_KdTakePath::emptyPartsCollapse()
{
    QFETCH(QString, path);
    QFETCH(QChar, separator);
    QFETCH(QString, expected);
    QCOMPARE(KdTakePath::collapseSeparators(path, separator), expected);
}

void tst_KdTakePath::absoluteFolderStaysAbsolute()
{
    const QString folder = temporaryPath(QString());
    const QString path = KdTakePath::compose(folder, audioPattern(), kTime);
    QVERIFY(QFileInfo(path).isAbsolute());
    QCOMPARE(QFileInfo(path).absolutePath(), QDir(folder).absolutePath());
}

void tst_KdTakePath::takenNameMovesOnToTheNextSecond()
{
    const QString folder = QStringLiteral("/takes");
    QSet<QString> taken;
    const auto isTaken = [&taken](const QString& path) { return taken.contains(path); };
    QStringList paths;
    for (int take = 0; take < 3; ++take) {
        const QString path = KdTakePath::composeFree(folder, audioPattern(), kTime, isTaken);
        taken.insert(path);
        paths.append(QFileInfo(path).fileName());
    }
    const QStringList expected{QStringLiteral("REC_20260309_080507.m4a"),
                               QStringLiteral("REC_20260309_080508.m4a"),
                               QStringLiteral("REC_20260309_080509.m4a")};
    QCOMPARE(paths, expected);
}

void tst_KdTakePath::everyNameTakenStillGivesAName()
{
    const auto always = [](const QString&) { return true; };
    const QString folder = QStringLiteral("/takes");
    QCOMPARE(KdTakePath::composeFree(folder, audioPattern(), kTime, always),
             KdTakePath::compose(folder, audioPattern(), kTime));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdTakePath>(argc, argv);
}

#include "tst_KdTakePath.moc"
