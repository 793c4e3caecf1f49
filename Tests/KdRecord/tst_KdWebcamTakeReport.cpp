#include "Support/KdTestCase.h"

#include <KdRecord/KdWebcamTakeReport.h>

#include <QJsonDocument>
#include <QJsonObject>

using namespace KdVBLMODEL;
using Values = KdWebcamTakeReport::Values;

class tst_KdWebcamTakeReport : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void fileInfoHasTheseMembersInKeyOrder();
    void exportInfoHasTheseMembersInKeyOrder();
    void rateIsWrittenInItsShortestForm_data();
    void rateIsWrittenInItsShortestForm();
    void backgroundIsAWord_data();
    void backgroundIsAWord();
    void shapeIsAWord_data();
    void shapeIsAWord();
    void anyDeviceNameComesBackUnchanged_data();
    void anyDeviceNameComesBackUnchanged();

private:
    static QJsonValue member(const Values& values, const char* key)
    {
        const QByteArray text = KdWebcamTakeReport::fileInfo(values).toUtf8();
        return QJsonDocument::fromJson(text).object().value(QLatin1String(key));
    }
};

void tst_KdWebcamTakeReport::fileInfoHasTheseMembersInKeyOrder()
{
    Values values;
    values.resolution = QSize(1280, 720);
    values.frameRate = 30;
    values.fileDuration = 10;
    values.deviceName = QStringLiteral("Cam A");
    values.background = fcbmBlur;
    values.shape = fcrsCircle;
    values.isMirrored = true;
    QCOMPARE(KdWebcamTakeReport::fileInfo(values),
             QStringLiteral("{\n"
                            "    \"camera_record_backgroud\": \"blur\",\n"
                            "    \"camera_record_shape\": \"circle\",\n"
                            "    \"device_name\": \"Cam A\",\n"
                            "    \"file_duration\": 10,\n"
                            "    \"frame_rate\": \"30fps\",\n"
                            "    \"is_camera_zoom\": false,\n"
                            "    \"is_use_mirror\": true,\n"
                            "    \"record_type\": \"camera_record\",\n"
                            "    \"video_resolution\": \"1280x720\"\n"
                            "}\n"));
}

void tst_KdWebcamTakeReport::exportInfoHasTheseMembersInKeyOrder()
{
    QCOMPARE(KdWebcamTakeReport::fileExportInfo(), QStringLiteral("{\n"
                                                                  "    \"file_format\": \"MP4\",\n"
                                                                  "    \"file_type\": \"video\",\n"
                                                                  "    \"video_codec\": \"H264\",\n"
                                                                  "    \"video_muxer\": \"MP4\"\n"
                                                                  "}\n"));
}

void tst_KdWebcamTakeReport::rateIsWrittenInItsShortestForm_data()
{
    QTest::addColumn<double>("rate");
    QTest::addColumn<QString>("text");
    QTest::newRow("whole") << 30.0 << QStringLiteral("30fps");
    QTest::newRow("broken") << 29.97 << QStringLiteral("29.97fps");
    QTest::newRow("fraction") << 30000.0 / 1001.0 << QStringLiteral("29.97fps");
    QTest::newRow("half") << 7.5 << QStringLiteral("7.5fps");
    QTest::newRow("high") << 120.0 << QStringLiteral("120fps");
    QTest::newRow("none") << 0.0 << QStringLiteral("0fps");
}

void tst_KdWebcamTakeReport::rateIsWrittenInItsShortestForm()
{
    QFETCH(double, rate);
    QFETCH(QString, text);
    Values values;
    values.frameRate = rate;
    QCOMPARE(member(values, "frame_rate").toString(), text);
}

void tst_KdWebcamTakeReport::backgroundIsAWord_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("word");
    QTest::newRow("none") << -1 << QStringLiteral("");
    QTest::newRow("remove") << 0 << QStringLiteral("remove");
    QTest::newRow("blur") << 1 << QStringLiteral("blur");
    QTest::newRow("unknown") << 2 << QStringLiteral("");
}

void tst_KdWebcamTakeReport::backgroundIsAWord()
{
    QFETCH(int, mode);
    QFETCH(QString, word);
    Values values;
    values.background = static_cast<_KdCaptureRecordBackgroundMode>(mode);
    QVERIFY(member(values, "camera_record_backgroud").isString());
    QCOMPARE(member(values, "camera_record_backgroud").toString(), word);
}

void tst_KdWebcamTakeReport::shapeIsAWord_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<QString>("word");
    QTest::newRow("circle") << 0 << QStringLiteral("circle");
    QTest::newRow("square") << 1 << QStringLiteral("square");
    QTest::newRow("unknown") << 7 << QStringLiteral("");
    QTest::newRow("negative") << -1 << QStringLiteral("");
}

void tst_KdWebcamTakeReport::shapeIsAWord()
{
    QFETCH(int, shape);
    QFETCH(QString, word);
    Values values;
    values.shape = static_cast<_KdCaptureRecordShape>(shape);
    QVERIFY(member(values, "camera_record_shape").isString());
    QCOMPARE(member(values, "camera_record_shape").toString(), word);
}

void tst_KdWebcamTakeReport::anyDeviceNameComesBackUnchanged_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("long") << QString(10000, QLatin1Char('c'));
    QTest::newRow("right to left") << QStringLiteral("كاميرا");
    QTest::newRow("place marker") << QStringLiteral("Cam %1 %2");
    QTest::newRow("quotes and backslash") << QStringLiteral("\"The\" \\ 'Cam'");
    QTest::newRow("markup") << QStringLiteral("<b>Cam</b>&amp;<img src=x>");
    QTest::newRow("line breaks") << QStringLiteral("Cam\r\n1\u2028\t");
    QTest::newRow("outside the basic plane") << QStringLiteral("Cam \U0001F3A5");
}

void tst_KdWebcamTakeReport::anyDeviceNameComesBackUnchanged()
{
    QFETCH(QString, name);
    Values values;
    values.deviceName = name;
    QCOMPARE(member(values, "device_name").toString(), name);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamTakeReport>(argc, argv);
}

#include "tst_KdWebcamTakeReport.moc"
