#include "Support/KdTestCase.h"

#include <KdVBLModel/KdGeneralEvent.h>
#include <KdVBLModel/KdTrackEventLog.h>

class tst_KdGeneralEvent : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void whatWasAddedIsReportedInItsOrder();
};

void tst_KdGeneralEvent::whatWasAddedIsReportedInItsOrder()
{
    KdTrackEventLog::clear();
    KdGeneralEvent event(QStringLiteral("shown"));
    event.add(QStringLiteral("zebra"), 1);
    event.add(QStringLiteral("ant"), QStringLiteral("two"));
    event.add(QStringLiteral("zebra"), 3);
    event.sendEvent();
    QCOMPARE(KdTrackEventLog::records().size(), 1);
    const KdTrackEventRecord record = KdTrackEventLog::records().first();
    QCOMPARE(record.name, QStringLiteral("shown"));
    const QVector<KdTrackEvent::Property> expected{{QStringLiteral("zebra"), 3},
                                                   {QStringLiteral("ant"), QStringLiteral("two")}};
    QCOMPARE(record.properties, expected);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdGeneralEvent>(argc, argv);
}

#include "tst_KdGeneralEvent.moc"
