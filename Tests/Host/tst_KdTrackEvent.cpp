#include <KdVBLModel/KdTrackEvent.h>
#include <KdVBLModel/KdTrackEventLog.h>

#include <Support/KdTestCase.h>

#include <memory>

namespace {

class OpenedEvent : public KdTrackEvent
{
public:
    OpenedEvent() : KdTrackEvent(QStringLiteral("opened"))
    {
        setProperty(QStringLiteral("zebra"), 1);
        setProperty(QStringLiteral("ant"), QStringLiteral("two"));
    }
    void change(const QString& key, const QVariant& value) { setProperty(key, value); }
};

/** Counts what is sent through the base class. */
class CountingEvent : public KdTrackEvent
{
public:
    CountingEvent() : KdTrackEvent(QStringLiteral("counting")) {}
    void sendEvent() override { ++sent; }

    int sent = 0;
};

} // namespace

class tst_KdTrackEvent : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        KdTestCase::init();
        KdTrackEventLog::clear();
    }

    void keepsPropertiesInTheOrderSet()
    {
        const OpenedEvent event;
        QCOMPARE(event.name(), QStringLiteral("opened"));
        const QVector<KdTrackEvent::Property> expected{
            {QStringLiteral("zebra"), 1}, {QStringLiteral("ant"), QStringLiteral("two")}};
        QCOMPARE(event.properties(), expected);
    }

    void aKeySetAgainKeepsItsPlace()
    {
        OpenedEvent event;
        event.change(QStringLiteral("zebra"), 3);
        const QVector<KdTrackEvent::Property> expected{
            {QStringLiteral("zebra"), 3}, {QStringLiteral("ant"), QStringLiteral("two")}};
        QCOMPARE(event.properties(), expected);
    }

    void reachesTheLogOnlyWhenSent()
    {
        OpenedEvent event;
        QVERIFY(KdTrackEventLog::records().isEmpty());
        event.sendEvent();
        event.sendEvent();
        const auto records = KdTrackEventLog::records();
        QCOMPARE(records.size(), 2);
        QCOMPARE(records.first().name, event.name());
        QCOMPARE(records.first().properties, event.properties());
        QVERIFY(records.first().time.isValid());
    }

    void sendingCanBeOverridden()
    {
        CountingEvent event;
        KdTrackEvent& base = event;
        base.sendEvent();
        QCOMPARE(event.sent, 1);
        QVERIFY(KdTrackEventLog::records().isEmpty());
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdTrackEvent>(argc, argv);
}

#include "tst_KdTrackEvent.moc"
