#include <KdVBLModel/KdFaceFinder.h>
#include <Support/Command.h>
#include <Support/KdTestCase.h>

#include <QFile>
#include <QRegularExpression>

namespace {

/** What CPack was told that the package with the libraries depends on. */
QStringList runtimeDepends()
{
    QFile config(QStringLiteral(KD_CPACK_CONFIG));
    const QString text =
        config.open(QIODevice::ReadOnly) ? QString::fromUtf8(config.readAll()) : QString();
    static const QRegularExpression line(
        QStringLiteral("set\\(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS \"([^\"]*)\"\\)"));
    return line.match(text).captured(1).split(QStringLiteral(", "), Qt::SkipEmptyParts);
}

} // namespace

/** What is read or loaded by name while the libraries run, which no tool sees in them. */
class tst_PackageDepends : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void thePackageBringsTheDescriptionsOfFaces()
    {
        const QString file = KdFaceFinder::modelFolder() +
                             QLatin1String("/haarcascades/haarcascade_frontalface_alt2.xml");
        const Command::Result owner =
            Command::run(QStringLiteral("dpkg"), {QStringLiteral("-S"), file});
        QVERIFY2(owner.ok, owner.errors.constData());
        const QString package = QString::fromUtf8(owner.output).section(QLatin1Char(':'), 0, 0);
        QVERIFY2(runtimeDepends().contains(package), qUtf8Printable(package));
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_PackageDepends>(argc, argv);
}

#include "tst_PackageDepends.moc"
