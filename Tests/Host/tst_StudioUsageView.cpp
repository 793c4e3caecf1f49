#include "Support/KdTestCase.h"

#include <KdVBLModel/KdTrackEvent.h>
#include <KdVBLModel/KdTrackEventLog.h>
#include <Studio/StudioUsageView.h>

/** An event as the recorder sends them. */
class SampleEvent : public KdTrackEvent
{
public:
    SampleEvent(const QString& name, const QString& button) : KdTrackEvent(name)
    {
        setProperty(QStringLiteral("record_type"), QStringLiteral("record_audio"));
        setProperty(QStringLiteral("button_name"), button);
    }
};

class tst_StudioUsageView : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void eventIsOneLineWithItsPropertiesInOrder();
    void eventsAreListedInOrder();
    void eventsThatComeWhileTheListIsSeenAppear();
    void foreignTextStaysOnOneLine();
    void emptyListSaysWhatItIsFor();
};

void tst_StudioUsageView::init()
{
    KdTestCase::init();
    KdTrackEventLog::clear();
}

void tst_StudioUsageView::eventIsOneLineWithItsPropertiesInOrder()
{
    SampleEvent(QStringLiteral("click"), QStringLiteral("apply")).sendEvent();
    const QString line = describeUsageEvent(KdTrackEventLog::records().last());
    QVERIFY2(QRegularExpression(
                 QStringLiteral(
                     "^\\d\\d:\\d\\d:\\d\\d click record_type=record_audio button_name=apply$"))
                 .match(line)
                 .hasMatch(),
             qPrintable(line));
}

void tst_StudioUsageView::eventsAreListedInOrder()
{
    SampleEvent(QStringLiteral("expose"), QString()).sendEvent();
    SampleEvent(QStringLiteral("click"), QStringLiteral("apply")).sendEvent();
    StudioUsageView view;
    view.refresh();
    QCOMPARE(view.count(), 2);
    QVERIFY(view.item(0)->text().contains(QStringLiteral("expose")));
    QVERIFY(view.item(1)->text().contains(QStringLiteral("button_name=apply")));
}

void tst_StudioUsageView::eventsThatComeWhileTheListIsSeenAppear()
{
    StudioUsageView view;
    view.show();
    QCOMPARE(view.count(), 0);
    SampleEvent(QStringLiteral("click"), QStringLiteral("apply")).sendEvent();
    QTRY_COMPARE(view.count(), 1);
}

void tst_StudioUsageView::foreignTextStaysOnOneLine()
{
    SampleEvent(QStringLiteral("a\nb"), QStringLiteral("<b>\t%1")).sendEvent();
    const QString line = describeUsageEvent(KdTrackEventLog::records().last());
    QVERIFY(!line.contains(QLatin1Char('\n')));
    QVERIFY(line.contains(QStringLiteral("<b> %1")));
}

void tst_StudioUsageView::emptyListSaysWhatItIsFor()
{
    StudioUsageView view;
    view.resize(400, 200);
    const QImage empty = view.grab().toImage();
    view.addItem(QString());
    QVERIFY(view.grab().toImage() != empty);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioUsageView>(argc, argv);
}

#include "tst_StudioUsageView.moc"
