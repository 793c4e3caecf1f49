#include <KdRecord/KdLivingLabel.h>

#include <Support/KdTestCase.h>

#include <QTimer>

#include <memory>

namespace {

QTimer* timerOf(const KdLivingLabel& label)
{
    return label.findChild<QTimer*>(QStringLiteral("KdLivingLabel_Timer"));
}

void tick(KdLivingLabel& label)
{
    QMetaObject::invokeMethod(timerOf(label), "timeout");
}

/** What is shown now and after each of some ticks. */
QStringList shown(KdLivingLabel& label, int ticks)
{
    QStringList texts{label.text()};
    for (int i = 0; i < ticks; ++i) {
        tick(label);
        texts.append(label.text());
    }
    return texts;
}

} // namespace

class tst_KdLivingLabel : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void growsThreeDotsAndBeginsAnew_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("a status") << QStringLiteral("Recording");
        QTest::newRow("nothing") << QString();
        QTest::newRow("dots of its own") << QStringLiteral("Wait...");
        QTest::newRow("placeholders") << QStringLiteral("%1 %2 %n");
        QTest::newRow("not Latin") << QString::fromUtf8("\u5f55\u5236\u4e2d");
        QTest::newRow("long") << QString(500, QLatin1Char('w'));
    }

    void growsThreeDotsAndBeginsAnew()
    {
        QFETCH(QString, text);
        KdLivingLabel label;
        label.setText(text);
        const auto with = [&text](int dots) { return text + QString(dots, QLatin1Char('.')); };
        QCOMPARE(shown(label, 5),
                 QStringList({with(0), with(1), with(2), with(3), with(0), with(1)}));
    }

    void isEmptyAndAliveAtFirst()
    {
        KdLivingLabel label;
        QCOMPARE(label.text(), QString());
        QVERIFY(timerOf(label)->isActive());
        QVERIFY(!timerOf(label)->isSingleShot());
        QCOMPARE(timerOf(label)->interval(), 500);
    }

    void dotsComeByThemselves()
    {
        KdLivingLabel label;
        label.setText(QStringLiteral("Recording"));
        QTRY_COMPARE(label.text(), QStringLiteral("Recording."));
    }

    void anotherTextBeginsWithoutDotsAndAWholeInterval()
    {
        KdLivingLabel label;
        label.setText(QStringLiteral("Recording"));
        tick(label);
        tick(label);
        QTRY_VERIFY(timerOf(label)->remainingTime() < 450);
        label.setText(QStringLiteral("No Device"));
        QVERIFY(timerOf(label)->remainingTime() > 450);
        QCOMPARE(shown(label, 1),
                 QStringList({QStringLiteral("No Device"), QStringLiteral("No Device.")}));
    }

    void theSameTextBeginsAnewToo()
    {
        KdLivingLabel label;
        label.setText(QStringLiteral("Recording"));
        tick(label);
        label.setText(QStringLiteral("Recording"));
        QCOMPARE(label.text(), QStringLiteral("Recording"));
    }

    void recoversFromATextSetBehindItsBack()
    {
        KdLivingLabel label;
        label.setText(QStringLiteral("No Device"));
        static_cast<QLabel&>(label).setText(QStringLiteral("a much longer text"));
        QVERIFY(label.sizeHint().width() > 0);
        tick(label);
        QCOMPARE(label.text(), QStringLiteral("No Device"));
    }

    void asksForTheSameRoomWithEveryNumberOfDots()
    {
        KdLivingLabel label;
        label.setText(QStringLiteral("Recording"));
        const QSize room = label.sizeHint();
        KdLabel longest(QStringLiteral("Recording..."));
        QVERIFY(room.width() >= longest.sizeHint().width() - 1);
        for (int i = 0; i < 4; ++i) {
            tick(label);
            QVERIFY(qAbs(label.sizeHint().width() - room.width()) <= 1);
            QCOMPARE(label.sizeHint().height(), room.height());
        }
    }

    void assistiveTechnologyHearsNoDots()
    {
        KdLivingLabel label;
        label.setText(QStringLiteral("Recording"));
        tick(label);
        QCOMPARE(label.accessibleName(), QStringLiteral("Recording"));
        label.setText(QStringLiteral("Live Record"));
        QCOMPARE(label.accessibleName(), QStringLiteral("Live Record"));
    }

    void goesInTheMiddleOfATick()
    {
        auto label = std::make_unique<KdLivingLabel>();
        connect(timerOf(*label), &QTimer::timeout, this, [&label] { label.reset(); });
        tick(*label);
        QVERIFY(!label);
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdLivingLabel>(argc, argv);
}

#include "tst_KdLivingLabel.moc"
