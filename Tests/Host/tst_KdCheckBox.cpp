#include <KdWidgets/KdCheckBox.h>
#include <KdWidgets/KdSkinManager.h>
#include <Support/DialogDriver.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QSignalSpy>

#include <memory>

class tst_KdCheckBox : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void clickAndSpaceToggle_data();
    void clickAndSpaceToggle();
    void everyStateLooksDifferent_data();
    void everyStateLooksDifferent();
    void stateIsToldByShapeToo_data();
    void stateIsToldByShapeToo();
    void keyboardFocusIsVisible_data();
    void keyboardFocusIsVisible();
    void fitsIntoItsRow_data();
    void fitsIntoItsRow();

private:
    void addKinds();
    KdCheckBox* add(bool isSwitch);

    std::unique_ptr<QWidget> m_window;
};

void tst_KdCheckBox::init()
{
    KdTestCase::init();
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    m_window = std::make_unique<QWidget>();
    m_window->setGeometry(400, 300, 300, 200);
    m_window->setFocusPolicy(Qt::StrongFocus);
    m_window->show();
    m_window->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_KdCheckBox::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

void tst_KdCheckBox::addKinds()
{
    QTest::addColumn<bool>("isSwitch");

    QTest::newRow("check box") << false;
    QTest::newRow("switch") << true;
}

KdCheckBox* tst_KdCheckBox::add(bool isSwitch)
{
    auto* box = isSwitch ? KdCheckBox::CreateSwitchCheckBox(m_window.get())
                         : new KdCheckBox(m_window.get());
    box->setText(QStringLiteral("Mute"));
    box->setGeometry(20, 20, 120, 24);
    box->show();
    return box;
}

void tst_KdCheckBox::clickAndSpaceToggle_data()
{
    addKinds();
}

void tst_KdCheckBox::clickAndSpaceToggle()
{
    QFETCH(bool, isSwitch);
    KdCheckBox* box = add(isSwitch);
    QSignalSpy clicked(box, &QCheckBox::clicked);
    DialogDriver::click(*box);
    QVERIFY(box->isChecked());
    QTest::keyClick(box, Qt::Key_Space);
    QVERIFY(!box->isChecked());
    QCOMPARE(clicked.count(), 2);
    box->setEnabled(false);
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, 12));
    QVERIFY(!box->isChecked());
}

void tst_KdCheckBox::everyStateLooksDifferent_data()
{
    addKinds();
}

void tst_KdCheckBox::everyStateLooksDifferent()
{
    QFETCH(bool, isSwitch);
    KdCheckBox* box = add(isSwitch);
    QList<QImage> looks;
    for (const bool enabled : {true, false}) {
        for (const bool checked : {false, true}) {
            box->setEnabled(enabled);
            box->setChecked(checked);
            const QImage look = WidgetLooks::image(*box).copy(0, 0, 40, 24);
            QVERIFY(!looks.contains(look));
            looks.append(look);
        }
    }
}

void tst_KdCheckBox::stateIsToldByShapeToo_data()
{
    addKinds();
}

void tst_KdCheckBox::stateIsToldByShapeToo()
{
    QFETCH(bool, isSwitch);
    KdCheckBox* box = add(isSwitch);
    // Where the ground changes within the mark, whatever the two colours are.
    const auto edges = [box] {
        const QImage mark = WidgetLooks::image(*box).copy(6, 12, 28, 1);
        QVector<bool> changes;
        for (int x = 1; x < mark.width(); ++x) {
            const int step = qGray(mark.pixel(x, 0)) - qGray(mark.pixel(x - 1, 0));
            changes.append(std::abs(step) > 24);
        }
        return changes;
    };
    const QVector<bool> unchecked = edges();
    box->setChecked(true);
    QVERIFY(edges() != unchecked);
}

void tst_KdCheckBox::keyboardFocusIsVisible_data()
{
    addKinds();
}

void tst_KdCheckBox::keyboardFocusIsVisible()
{
    QFETCH(bool, isSwitch);
    KdCheckBox* box = add(isSwitch);
    const QColor accent = KdSkin::KdSkinManager::instance()->color(KdSkin::Accent);
    QVERIFY(WidgetLooks::colorAt(*box, {60, 0}) != accent);
    box->setFocus(Qt::TabFocusReason);
    QCOMPARE(WidgetLooks::colorAt(*box, {60, 0}), accent);
    QCOMPARE(WidgetLooks::colorAt(*box, {60, 1}), accent);
}

void tst_KdCheckBox::fitsIntoItsRow_data()
{
    addKinds();
}

void tst_KdCheckBox::fitsIntoItsRow()
{
    QFETCH(bool, isSwitch);
    KdCheckBox* box = add(isSwitch);
    QVERIFY(box->sizeHint().height() <= 24);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdCheckBox>(argc, argv);
}

#include "tst_KdCheckBox.moc"
