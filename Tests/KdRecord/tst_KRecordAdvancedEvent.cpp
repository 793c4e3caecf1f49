#include <KdRecord/KRecordAdvancedEvent.h>
#include <KdVBLModel/KdTrackEventLog.h>

#include <Support/KdTestCase.h>

#include <type_traits>

using Property = KdTrackEvent::Property;
Q_DECLARE_METATYPE(QVector<Property>)

class tst_KRecordAdvancedEvent : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void namesTheRecorder_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QVector<Property>>("properties");
        const QString key = QStringLiteral("record_type");
        QTest::newRow("audio") << 0 << QVector<Property>{{key, QStringLiteral("record_audio")}};
        QTest::newRow("video") << 1 << QVector<Property>{{key, QStringLiteral("record_video")}};
        QTest::newRow("none") << 2 << QVector<Property>();
        QTest::newRow("negative") << -1 << QVector<Property>();
    }

    void namesTheRecorder()
    {
        QFETCH(int, type);
        QFETCH(QVector<Property>, properties);
        const KRecordAdvancedEvent event(QStringLiteral("any_name"),
                                         static_cast<KRecordAdvancedEvent::_KRecorderType>(type));
        QCOMPARE(event.name(), QStringLiteral("any_name"));
        QCOMPARE(event.properties(), properties);
    }

    void addsNoDataToTheBaseClass()
    {
        QCOMPARE(sizeof(KRecordAdvancedEvent), sizeof(KdTrackEvent));
        QVERIFY(std::has_virtual_destructor<KRecordAdvancedEvent>::value);
    }

    void isSentOnceByTheBaseClass()
    {
        KdTrackEventLog::clear();
        {
            KRecordAdvancedEvent event(QStringLiteral("sent"), KRecordAdvancedEvent::VideoRecorder);
            event.sendEvent();
        }
        QCOMPARE(KdTrackEventLog::records().size(), 1);
        QCOMPARE(KdTrackEventLog::records().first().name, QStringLiteral("sent"));
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_KRecordAdvancedEvent>(argc, argv);
}

#include "tst_KRecordAdvancedEvent.moc"
