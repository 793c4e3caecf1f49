#include "Support/KdTestCase.h"

#include <KdCore/KdCustomEventManager.h>
#include <KdRecord/NotifyBeginPileInsetionEvent.h>
#include <KdRecord/NotifyEndPileInsetionEvent.h>
#include <Studio/StudioStartWatch.h>

#include <QSignalSpy>

#include <memory>

namespace {

class OtherEvent : public KdCustomEvent
{
};

void send(const KdCustomEvent& event)
{
    KdCustomEventManager::instance()->sendEvent(event, {});
}

} // namespace

class tst_StudioStartWatch : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void beginAndEndAreTold();
    void otherEventsAreNot();
    void nothingComesToAWatchThatIsGone();
};

void tst_StudioStartWatch::beginAndEndAreTold()
{
    StudioStartWatch watch;
    QSignalSpy begins(&watch, &StudioStartWatch::startBegins);
    QSignalSpy ends(&watch, &StudioStartWatch::startEnded);
    send(NotifyBeginPileInsetionEvent("start"));
    QCOMPARE(begins.count(), 1);
    QCOMPARE(ends.count(), 0);
    send(NotifyEndPileInsetionEvent("start"));
    QCOMPARE(begins.count(), 1);
    QCOMPARE(ends.count(), 1);
}

void tst_StudioStartWatch::otherEventsAreNot()
{
    StudioStartWatch watch;
    QSignalSpy begins(&watch, &StudioStartWatch::startBegins);
    QSignalSpy ends(&watch, &StudioStartWatch::startEnded);
    send(OtherEvent());
    QVERIFY(begins.isEmpty());
    QVERIFY(ends.isEmpty());
}

void tst_StudioStartWatch::nothingComesToAWatchThatIsGone()
{
    auto watch = std::make_unique<StudioStartWatch>();
    bool told = false;
    connect(watch.get(), &StudioStartWatch::startBegins, this, [&told] { told = true; });
    watch.reset();
    send(NotifyBeginPileInsetionEvent("start"));
    QVERIFY(!told);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioStartWatch>(argc, argv);
}

#include "tst_StudioStartWatch.moc"
