#include <KdWidgets/KdDoubleSpinBox.h>
#include <KdWidgets/KdSkinManager.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QLineEdit>
#include <QSignalSpy>

#include <memory>

class tst_KdDoubleSpinBox : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void textMayBeEmptyWhileItIsEdited();
    void textIsWithoutPrefixAndSuffix();
    void arrowsChangeTheValue();
    void typedNumberIsTaken();
    void numberOutOfRangeIsNotTaken();
    void arrowKeysStopAtTheRange();
    void keyboardFocusIsVisible();
    void disabledIsFaint();

private:
    std::unique_ptr<QWidget> m_window;
    KdDoubleSpinBox* m_box = nullptr;
};

void tst_KdDoubleSpinBox::init()
{
    KdTestCase::init();
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    m_window = std::make_unique<QWidget>();
    m_window->setGeometry(400, 300, 300, 200);
    m_window->setFocusPolicy(Qt::StrongFocus);
    m_box = new KdDoubleSpinBox(m_window.get());
    m_box->setDecimals(0);
    m_box->setRange(0, 9);
    m_box->setValue(3);
    m_box->setGeometry(20, 20, 204, 24);
    m_window->show();
    m_window->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_KdDoubleSpinBox::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

void tst_KdDoubleSpinBox::textMayBeEmptyWhileItIsEdited()
{
    m_box->setFocus();
    m_box->edit()->selectAll();
    QTest::keyClick(m_box->edit(), Qt::Key_Delete);
    QCOMPARE(m_box->editText(), QString());
    QTest::keyClicks(m_box->edit(), QStringLiteral("5"));
    QCOMPARE(m_box->editText(), QStringLiteral("5"));
}

void tst_KdDoubleSpinBox::textIsWithoutPrefixAndSuffix()
{
    m_box->setPrefix(QStringLiteral("in "));
    m_box->setSuffix(QStringLiteral(" sec"));
    QCOMPARE(m_box->editText(), QStringLiteral("3"));
    QCOMPARE(m_box->edit()->text(), QStringLiteral("in 3 sec"));
    m_box->setFocus();
    m_box->edit()->selectAll();
    QTest::keyClick(m_box->edit(), Qt::Key_Delete);
    QCOMPARE(m_box->editText(), QString());
}

void tst_KdDoubleSpinBox::arrowsChangeTheValue()
{
    QSignalSpy changed(m_box, qOverload<double>(&QDoubleSpinBox::valueChanged));
    QTest::mouseClick(m_box, Qt::LeftButton, Qt::NoModifier, QPoint(194, 6));
    QCOMPARE(m_box->value(), 4.0);
    QTest::mouseClick(m_box, Qt::LeftButton, Qt::NoModifier, QPoint(194, 18));
    QTest::mouseClick(m_box, Qt::LeftButton, Qt::NoModifier, QPoint(194, 18));
    QCOMPARE(m_box->value(), 2.0);
    QCOMPARE(changed.count(), 3);
}

void tst_KdDoubleSpinBox::typedNumberIsTaken()
{
    QSignalSpy changed(m_box, qOverload<double>(&QDoubleSpinBox::valueChanged));
    m_box->setFocus();
    m_box->edit()->selectAll();
    QTest::keyClicks(m_box->edit(), QStringLiteral("7"));
    QCOMPARE(m_box->value(), 7.0);
    QCOMPARE(changed.count(), 1);
}

void tst_KdDoubleSpinBox::numberOutOfRangeIsNotTaken()
{
    m_box->setFocus();
    m_box->edit()->selectAll();
    QTest::keyClicks(m_box->edit(), QStringLiteral("88-x"));
    QCOMPARE(m_box->value(), 8.0);
    QCOMPARE(m_box->editText(), QStringLiteral("8"));
}

void tst_KdDoubleSpinBox::arrowKeysStopAtTheRange()
{
    m_box->setFocus();
    for (int i = 0; i < 12; ++i) {
        QTest::keyClick(m_box, Qt::Key_Up);
    }
    QCOMPARE(m_box->value(), 9.0);
}

void tst_KdDoubleSpinBox::keyboardFocusIsVisible()
{
    const QColor accent = KdSkin::KdSkinManager::instance()->color(KdSkin::Accent);
    QVERIFY(!WidgetLooks::hasColor(WidgetLooks::image(*m_box), accent));
    QTest::keyClick(m_window.get(), Qt::Key_Tab);
    QVERIFY(m_box->hasFocus());
    QCOMPARE(WidgetLooks::colorAt(*m_box, {100, 0}), accent);
    QCOMPARE(WidgetLooks::colorAt(*m_box, {100, 1}), accent);
}

void tst_KdDoubleSpinBox::disabledIsFaint()
{
    auto* manager = KdSkin::KdSkinManager::instance();
    QVERIFY(WidgetLooks::hasColor(WidgetLooks::image(*m_box), manager->color(KdSkin::TextQuiet)));
    m_box->setEnabled(false);
    const QImage faint = WidgetLooks::image(*m_box);
    QVERIFY(!WidgetLooks::hasColor(faint, manager->color(KdSkin::TextQuiet)));
    QVERIFY(!WidgetLooks::hasColor(faint, manager->color(KdSkin::Text)));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdDoubleSpinBox>(argc, argv);
}

#include "tst_KdDoubleSpinBox.moc"
