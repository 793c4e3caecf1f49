#include "AccessibleEvents.h"

#include <Support/KdTestCase.h>

#include <QWidget>

class tst_AccessibleEvents : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void hearsAlertsInOrder();
    void hearsNothingAfterwards();
};

static void raise(QWidget& widget, const QString& name)
{
    widget.setAccessibleName(name);
    QAccessibleEvent alert(&widget, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void tst_AccessibleEvents::hearsAlertsInOrder()
{
    QWidget widget;
    AccessibleEvents heard;
    raise(widget, QStringLiteral("one"));
    widget.setAccessibleDescription(QStringLiteral("more"));
    raise(widget, QStringLiteral("two"));
    QCOMPARE(heard.takeAlerts(), (QStringList{QStringLiteral("one"), QStringLiteral("two: more")}));
    QCOMPARE(heard.alerts(), QStringList());
}

void tst_AccessibleEvents::hearsNothingAfterwards()
{
    QWidget widget;
    {
        const AccessibleEvents heard;
    }
    raise(widget, QStringLiteral("one"));
    const AccessibleEvents heard;
    QCOMPARE(heard.alerts(), QStringList());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_AccessibleEvents>(argc, argv);
}

#include "tst_AccessibleEvents.moc"
