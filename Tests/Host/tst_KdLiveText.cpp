#include <KdWidgets/KdLiveText.h>

#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

class tst_KdLiveText : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void ofNothingIsEmpty() { QCOMPARE(KdLiveText().now(), QString()); }

    void ofATextStaysAsItIs()
    {
        const KdLiveText text = tr("Close");
        const WidgetLooks::Brackets brackets;
        QCOMPARE(text.now(), QStringLiteral("Close"));
    }

    void ofAFunctionIsAskedForAnew()
    {
        const QString name = QStringLiteral("Mic <A> %1");
        const KdLiveText text = [name] { return tr("%1 is lost.").arg(name); };
        const KdLiveText copy = text;
        const QString plain = QStringLiteral("Mic <A> %1 is lost.");
        QCOMPARE(copy.now(), plain);
        {
            const WidgetLooks::Brackets brackets;
            QCOMPARE(copy.now(), QLatin1Char('[') + plain + QLatin1Char(']'));
        }
        QCOMPARE(copy.now(), plain);
        QCOMPARE(text.now(), plain);
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdLiveText>(argc, argv);
}

#include "tst_KdLiveText.moc"
