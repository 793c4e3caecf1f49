#include <KdCore/KdCustomEventManager.h>
#include <KdRecord/KdPileInsetionNotice.h>
#include <KdRecord/NotifyBeginPileInsetionEvent.h>
#include <KdRecord/NotifyEndPileInsetionEvent.h>

#include <Support/KdTestCase.h>

#include <stdexcept>
#include <thread>

namespace {

class Host : public IKdCustomEventReceiver
{
public:
    Host() { KdCustomEventManager::instance()->addReceiver(this); }
    ~Host() override { KdCustomEventManager::instance()->removeReceiver(this); }

    void onCustomEvent(const KdCustomEvent& event) override
    {
        if (const auto* begin = dynamic_cast<const NotifyBeginPileInsetionEvent*>(&event)) {
            heard.append(QStringLiteral("begin ") + QLatin1String(begin->label()));
        } else if (const auto* end = dynamic_cast<const NotifyEndPileInsetionEvent*>(&event)) {
            heard.append(QStringLiteral("end ") + QLatin1String(end->label()));
        }
    }

    QStringList heard;
};

const QStringList kBothHeard{QStringLiteral("begin work"), QStringLiteral("end work")};

} // namespace

class tst_KdPileInsetionNotice : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void tellsTheBeginningAtOnceAndTheEndWhenItGoes()
    {
        Host host;
        {
            const KdPileInsetionNotice notice("work");
            QCOMPARE(host.heard, QStringList(kBothHeard.first()));
        }
        QCOMPARE(host.heard, kBothHeard);
    }

    void tellsTheEndWhenItGoesByAnException()
    {
        Host host;
        const auto fail = [] {
            const KdPileInsetionNotice notice("work");
            throw std::runtime_error("planted");
        };
        QVERIFY_EXCEPTION_THROWN(fail(), std::runtime_error);
        QCOMPARE(host.heard, kBothHeard);
    }

    void isSilentOnAnyOtherThread()
    {
        Host host;
        std::thread([] { const KdPileInsetionNotice notice("work"); }).join();
        QVERIFY(host.heard.isEmpty());
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdPileInsetionNotice>(argc, argv);
}

#include "tst_KdPileInsetionNotice.moc"
