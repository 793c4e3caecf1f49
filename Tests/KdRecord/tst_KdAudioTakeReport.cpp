#include "Support/KdTestCase.h"

#include <KdRecord/KdAudioTakeReport.h>

#include <QJsonDocument>
#include <QJsonObject>

class tst_KdAudioTakeReport : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void fileInfoIsIndentedWithItsMembersInKeyOrder();
    void anyDeviceNameComesBackUnchanged_data();
    void anyDeviceNameComesBackUnchanged();
    void exportInfoIsAnEmptyObjectOnTwoLines();
};

void tst_KdAudioTakeReport::fileInfoIsIndentedWithItsMembersInKeyOrder()
{
    const QString text = KdAudioTakeReport::fileInfo({2, 16, 10, QStringLiteral("Mic 1")});
    QCOMPARE(text, QStringLiteral("{\n"
                                  "    \"audio_channels\": 2,\n"
                                  "    \"device_name\": \"Mic 1\",\n"
                                  "    \"file_duration\": 10,\n"
                                  "    \"sampling_rate\": 16\n"
                                  "}\n"));
}

void tst_KdAudioTakeReport::anyDeviceNameComesBackUnchanged_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("long") << QString(10000, QLatin1Char('m'));
    QTest::newRow("right to left") << QStringLiteral("ميكروفون");
    QTest::newRow("place marker") << QStringLiteral("Mic %1 %2");
    QTest::newRow("quotes and backslash") << QStringLiteral("\"The\" \\ 'Mic'");
    QTest::newRow("markup") << QStringLiteral("<b>Mic</b>&amp;<img src=x>");
    QTest::newRow("line breaks") << QStringLiteral("Mic\r\n1\u2028\t");
    QTest::newRow("outside the basic plane") << QStringLiteral("Mic \U0001F3A4");
}

void tst_KdAudioTakeReport::anyDeviceNameComesBackUnchanged()
{
    QFETCH(QString, name);
    const QString text = KdAudioTakeReport::fileInfo({1, 16, 1, name});
    const QJsonObject object = QJsonDocument::fromJson(text.toUtf8()).object();
    QCOMPARE(object.value(QLatin1String("device_name")).toString(), name);
    QCOMPARE(object.size(), 4);
}

void tst_KdAudioTakeReport::exportInfoIsAnEmptyObjectOnTwoLines()
{
    QCOMPARE(KdAudioTakeReport::fileExportInfo(), QStringLiteral("{\n}\n"));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioTakeReport>(argc, argv);
}

#include "tst_KdAudioTakeReport.moc"
