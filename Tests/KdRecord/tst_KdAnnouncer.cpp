#include <KdRecord/KdAnnouncer.h>
#include <KdRecord/KdRecordTranslation.h>

#include <Support/AccessibleEvents.h>
#include <Support/KdTestCase.h>

#include <QLocale>

class tst_KdAnnouncer : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyNewsIsAnAlert();
    void theSameNewsIsToldAgain();
    void lastNewsFollowsTheLanguageInSilence();
    void isAnAlertThatNothingElseNotices();
};

void tst_KdAnnouncer::everyNewsIsAnAlert()
{
    QWidget panel;
    KdAnnouncer announcer(&panel);
    const AccessibleEvents heard;
    announcer.tellStarted();
    announcer.tellResumed();
    announcer.tellStopped();
    announcer.tellCountdownStopped();
    announcer.tellNoDevice();
    QCOMPARE(heard.alerts(),
             (QStringList{QStringLiteral("Recording started"), QStringLiteral("Recording resumed"),
                          QStringLiteral("Recording stopped"), QStringLiteral("Countdown stopped"),
                          QStringLiteral("No device is connected")}));
}

void tst_KdAnnouncer::theSameNewsIsToldAgain()
{
    QWidget panel;
    KdAnnouncer announcer(&panel);
    const AccessibleEvents heard;
    announcer.tellStarted();
    announcer.tellStarted();
    QCOMPARE(heard.alerts().size(), 2);
}

void tst_KdAnnouncer::lastNewsFollowsTheLanguageInSilence()
{
    QWidget panel;
    KdAnnouncer announcer(&panel);
    announcer.tellStarted();
    const AccessibleEvents heard;
    KdRecordTranslation::install(QLocale(QStringLiteral("de")));
    QTRY_COMPARE(announcer.accessibleName(), QStringLiteral("Aufnahme gestartet"));
    KdRecordTranslation::remove();
    QTRY_COMPARE(announcer.accessibleName(), QStringLiteral("Recording started"));
    QCOMPARE(heard.alerts(), QStringList());
}

void tst_KdAnnouncer::isAnAlertThatNothingElseNotices()
{
    QWidget panel;
    const KdAnnouncer announcer(&panel);
    QCOMPARE(QAccessible::queryAccessibleInterface(const_cast<KdAnnouncer*>(&announcer))->role(),
             QAccessible::AlertMessage);
    QCOMPARE(announcer.focusPolicy(), Qt::NoFocus);
    QVERIFY(announcer.testAttribute(Qt::WA_TransparentForMouseEvents));
    QVERIFY(announcer.isVisibleTo(&panel));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAnnouncer>(argc, argv);
}

#include "tst_KdAnnouncer.moc"
