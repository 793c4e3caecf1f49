#include <KdWidgets/KdAudioVolumeWidget.h>
#include <KdWidgets/KdSkinManager.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QAccessible>

#include <limits>
#include <memory>

class tst_KdAudioVolumeWidget : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void levelIsClamped_data();
    void levelIsClamped();
    void risesAtOnce();
    void fallsTwentyDecibelsASecond();
    void doesNotFallBelowTheLevel();
    void peakStaysOneAndAHalfSecondsThenFalls();
    void higherLevelIsTheNewPeak();
    void lowerLevelLeavesThePeak();
    void timeMovesItWhileItIsVisible();
    void hiddenItFollowsTheLevel();
    void disabledWithoutLevelIsEmpty();
    void disabledWithALevelKeepsIt();
    void zonesHaveTheirColours_data();
    void zonesHaveTheirColours();
    void limitsAreNotched();
    void markIsDrawnAtThePeak();
    void disabledIsFaint();
    void readsToAssistiveTechnology();

private:
    QColor at(double level)
    {
        return WidgetLooks::colorAt(*m_meter, {int(level), m_meter->height() / 2});
    }

    std::unique_ptr<QWidget> m_window;
    KdAudioVolumeWidget* m_meter = nullptr;
};

void tst_KdAudioVolumeWidget::init()
{
    KdTestCase::init();
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    m_window = std::make_unique<QWidget>();
    m_window->resize(200, 100);
    m_meter = new KdAudioVolumeWidget(m_window.get());
    // One pixel for each unit of the scale.
    m_meter->setGeometry(20, 20, 100, 8);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void tst_KdAudioVolumeWidget::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

void tst_KdAudioVolumeWidget::levelIsClamped_data()
{
    QTest::addColumn<double>("set");
    QTest::addColumn<double>("got");

    const double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("within") << 42.5 << 42.5;
    QTest::newRow("below") << -1.0 << 0.0;
    QTest::newRow("above") << 100.5 << 100.0;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 0.0;
    QTest::newRow("infinite") << infinity << 100.0;
    QTest::newRow("minus infinite") << -infinity << 0.0;
}

void tst_KdAudioVolumeWidget::levelIsClamped()
{
    QFETCH(double, set);
    QFETCH(double, got);
    m_meter->setVolume(set);
    QCOMPARE(m_meter->volume(), got);
    QCOMPARE(m_meter->shownVolume(), got);
}

void tst_KdAudioVolumeWidget::risesAtOnce()
{
    m_meter->setVolume(30);
    m_meter->setVolume(80);
    QCOMPARE(m_meter->shownVolume(), 80.0);
}

void tst_KdAudioVolumeWidget::fallsTwentyDecibelsASecond()
{
    m_meter->setVolume(90);
    m_meter->setVolume(0);
    m_meter->advance(1000);
    // 20 of the 60 dB that the scale spans.
    QVERIFY(qAbs(m_meter->shownVolume() - (90.0 - 100.0 / 3)) < 0.01);
    for (int i = 0; i < 10; ++i) {
        m_meter->advance(100);
    }
    QVERIFY(qAbs(m_meter->shownVolume() - (90.0 - 200.0 / 3)) < 0.01);
}

void tst_KdAudioVolumeWidget::doesNotFallBelowTheLevel()
{
    m_meter->setVolume(90);
    m_meter->setVolume(60);
    m_meter->advance(60000);
    QCOMPARE(m_meter->shownVolume(), 60.0);
    m_meter->advance(-1000);
    QCOMPARE(m_meter->shownVolume(), 60.0);
}

void tst_KdAudioVolumeWidget::peakStaysOneAndAHalfSecondsThenFalls()
{
    m_meter->setVolume(90);
    m_meter->setVolume(0);
    for (int i = 0; i < 15; ++i) {
        m_meter->advance(100);
        QCOMPARE(m_meter->peak(), 90.0);
    }
    m_meter->advance(100);
    QVERIFY(m_meter->peak() < 90.0);
    m_meter->advance(5000);
    QCOMPARE(m_meter->peak(), 0.0);
}

void tst_KdAudioVolumeWidget::higherLevelIsTheNewPeak()
{
    m_meter->setVolume(50);
    m_meter->advance(1400);
    m_meter->setVolume(70);
    QCOMPARE(m_meter->peak(), 70.0);
    m_meter->setVolume(0);
    m_meter->advance(1400);
    QCOMPARE(m_meter->peak(), 70.0);
}

void tst_KdAudioVolumeWidget::lowerLevelLeavesThePeak()
{
    m_meter->setVolume(70);
    m_meter->setVolume(50);
    QCOMPARE(m_meter->peak(), 70.0);
}

void tst_KdAudioVolumeWidget::timeMovesItWhileItIsVisible()
{
    m_meter->setVolume(20);
    m_meter->setVolume(0);
    QTRY_COMPARE(m_meter->shownVolume(), 0.0);
    QTRY_COMPARE(m_meter->peak(), 0.0);
}

void tst_KdAudioVolumeWidget::hiddenItFollowsTheLevel()
{
    m_meter->setVolume(80);
    m_window->hide();
    m_meter->setVolume(10);
    QCOMPARE(m_meter->shownVolume(), 10.0);
    m_window->show();
    QCOMPARE(m_meter->shownVolume(), 10.0);
    QTRY_COMPARE(m_meter->peak(), 10.0);
}

void tst_KdAudioVolumeWidget::disabledWithoutLevelIsEmpty()
{
    m_meter->setVolume(80);
    m_meter->setEnabled(false);
    m_meter->setVolume(0);
    QCOMPARE(m_meter->peak(), 0.0);
    QCOMPARE(m_meter->shownVolume(), 0.0);
}

void tst_KdAudioVolumeWidget::disabledWithALevelKeepsIt()
{
    m_meter->setEnabled(false);
    m_meter->setVolume(40);
    QCOMPARE(m_meter->shownVolume(), 40.0);
    QCOMPARE(m_meter->peak(), 40.0);
}

void tst_KdAudioVolumeWidget::zonesHaveTheirColours_data()
{
    QTest::addColumn<QString>("skin");

    QTest::newRow("dark") << QStringLiteral("dark");
    QTest::newRow("light") << QStringLiteral("light");
}

void tst_KdAudioVolumeWidget::zonesHaveTheirColours()
{
    QFETCH(QString, skin);
    auto* manager = KdSkin::KdSkinManager::instance();
    QVERIFY(manager->setSkin(skin));
    m_meter->setVolume(100);
    QCOMPARE(at(30), manager->color(KdSkin::Good));
    QCOMPARE(at(68), manager->color(KdSkin::Good));
    QCOMPARE(at(72), manager->color(KdSkin::Warn));
    QCOMPARE(at(88), manager->color(KdSkin::Warn));
    QCOMPARE(at(92), manager->color(KdSkin::Record));
    m_meter->setEnabled(false);
    m_meter->setVolume(0);
    m_meter->setEnabled(true);
    m_meter->setVolume(50);
    QCOMPARE(at(47), manager->color(KdSkin::Good));
    QCOMPARE(at(52), manager->color(KdSkin::Stroke));
    QCOMPARE(at(80), manager->color(KdSkin::Stroke));
}

void tst_KdAudioVolumeWidget::limitsAreNotched()
{
    const QColor ground = KdSkin::KdSkinManager::instance()->color(KdSkin::Window);
    for (const double level : {0.0, 100.0}) {
        m_meter->setVolume(level);
        QCOMPARE(at(70), ground);
        QCOMPARE(at(90), ground);
    }
}

void tst_KdAudioVolumeWidget::markIsDrawnAtThePeak()
{
    auto* manager = KdSkin::KdSkinManager::instance();
    m_meter->setVolume(80);
    m_meter->setVolume(0);
    m_meter->advance(1000);
    QVERIFY(m_meter->shownVolume() < 60.0);
    QCOMPARE(at(79), manager->color(KdSkin::Warn));
    QCOMPARE(at(75), manager->color(KdSkin::Stroke));
}

void tst_KdAudioVolumeWidget::disabledIsFaint()
{
    m_meter->setVolume(60);
    m_meter->setEnabled(false);
    QVERIFY(at(30) != KdSkin::KdSkinManager::instance()->color(KdSkin::Good));
}

void tst_KdAudioVolumeWidget::readsToAssistiveTechnology()
{
    m_meter->setVolume(41.6);
    QAccessibleInterface* read = QAccessible::queryAccessibleInterface(m_meter);
    QVERIFY(read && read->valueInterface());
    QCOMPARE(read->role(), QAccessible::ProgressBar);
    QCOMPARE(read->text(QAccessible::Name), QStringLiteral("Input level"));
    QCOMPARE(read->text(QAccessible::Value), QStringLiteral("42"));
    QCOMPARE(read->valueInterface()->currentValue().toInt(), 42);
    QCOMPARE(read->valueInterface()->minimumValue().toInt(), 0);
    QCOMPARE(read->valueInterface()->maximumValue().toInt(), 100);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioVolumeWidget>(argc, argv);
}

#include "tst_KdAudioVolumeWidget.moc"
