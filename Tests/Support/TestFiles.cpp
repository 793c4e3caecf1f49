#include "TestFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

namespace {

constexpr int kDeep = 200000;
constexpr int kTenMegabytes = 10 * 1024 * 1024;

QByteArray element(const QByteArray& name, const QByteArray& content)
{
    return '<' + name + '>' + content + "</" + name + '>';
}

/** Ten entities, each ten times the one before: ten thousand million characters when expanded. */
QByteArray entityBomb(const QByteArray& root)
{
    QByteArray declarations = "<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i < 10; ++i) {
        const QByteArray reference = "&e" + QByteArray::number(i - 1) + ';';
        declarations +=
            "<!ENTITY e" + QByteArray::number(i) + " \"" + reference.repeated(10) + "\">";
    }
    return "<!DOCTYPE " + root + " [" + declarations + "]>" + element(root, "&e9;");
}

} // namespace

void TestFiles::write(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly | QIODevice::Truncate), qPrintable(path));
    QCOMPARE(file.write(content), static_cast<qint64>(content.size()));
}

QByteArray TestFiles::read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QVector<TestFiles::BadXml> TestFiles::badXml(const QByteArray& root, const QByteArray& inner)
{
    const QByteArray good = element(root, inner);
    const QByteArray bulk = element("filler", QByteArray(kTenMegabytes, 'x'));
    const QByteArray deep = QByteArray("<d>").repeated(kDeep) + QByteArray("</d>").repeated(kDeep);
    return {
        {"empty", ""},
        {"white space only", " \n\t "},
        {"no XML at all", "RIFF\x10\x20WAVEfmt "},
        {"only a declaration", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"},
        {"truncated", good.left(good.size() - 3)},
        {"cut within a tag", good.left(static_cast<int>(root.size()) + 1)},
        {"two document elements", good + good},
        {"10 MB", element(root, bulk + inner)},
        {"nested 200000 deep", element(root, inner + deep)},
        {"nested 200000 deep and never closed", QByteArray("<d>").repeated(kDeep)},
        {"half a million elements", element(root, inner + QByteArray("<e/>").repeated(500000))},
        {"entity bomb", entityBomb(root)},
        {"external entity",
         "<!DOCTYPE r [<!ENTITY e SYSTEM \"file:///etc/passwd\">]>" + element(root, "&e;")},
        {"undeclared entity", element(root, "&nothing;" + inner)},
        {"NUL byte", element(root, QByteArray("\0", 1) + inner)},
        {"control character", element(root, "\x01" + inner)},
    };
}
