#include <KdWidgets/KdPushButton.h>
#include <KdWidgets/KdSkinManager.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QDialog>
#include <QLineEdit>
#include <QSignalSpy>
#include <QVBoxLayout>

#include <memory>

class tst_KdPushButton : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void primaryIsFilledSecondaryIsOutlined_data();
    void primaryIsFilledSecondaryIsOutlined();
    void hasTheHeightOfItsKind();
    void growsWithItsText();
    void returnPressesTheFocusedOne();
    void returnInAFieldPressesNone();
    void focusIsVisibleOnBothKinds();
    void disabledIsFaintAndDeaf();
    void mayBeDestroyedByItsOwnPress();

private:
    std::unique_ptr<QDialog> m_dialog;
    KdPushButton* m_primary = nullptr;
    KdPushButton* m_secondary = nullptr;
    QLineEdit* m_field = nullptr;
};

void tst_KdPushButton::init()
{
    KdTestCase::init();
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    m_dialog = std::make_unique<QDialog>();
    auto* column = new QVBoxLayout(m_dialog.get());
    m_field = new QLineEdit(m_dialog.get());
    m_primary = KdPushButton::CreatePrimaryButton(m_dialog.get(), QStringLiteral("OK"));
    m_secondary = KdPushButton::CreateSecondaryButton(m_dialog.get(), QStringLiteral("Cancel"));
    column->addWidget(m_field);
    column->addWidget(m_primary);
    column->addWidget(m_secondary);
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    m_field->setFocus();
}

void tst_KdPushButton::cleanup()
{
    m_dialog.reset();
    KdTestCase::cleanup();
}

void tst_KdPushButton::primaryIsFilledSecondaryIsOutlined_data()
{
    QTest::addColumn<QString>("skin");

    QTest::newRow("dark") << QStringLiteral("dark");
    QTest::newRow("light") << QStringLiteral("light");
}

void tst_KdPushButton::primaryIsFilledSecondaryIsOutlined()
{
    QFETCH(QString, skin);
    auto* manager = KdSkin::KdSkinManager::instance();
    QVERIFY(manager->setSkin(skin));
    QCOMPARE(WidgetLooks::colorAt(*m_primary, {8, 12}), manager->color(KdSkin::Accent));
    QCOMPARE(WidgetLooks::colorAt(*m_secondary, {8, 12}), manager->color(KdSkin::Field));
    QCOMPARE(WidgetLooks::colorAt(*m_secondary, {12, 0}), manager->color(KdSkin::Stroke));
}

void tst_KdPushButton::hasTheHeightOfItsKind()
{
    QCOMPARE(m_primary->height(), 24);
    auto* high =
        KdPushButton::CreateSecondaryButton(m_dialog.get(), QString(), KdPushButton::Size32);
    m_dialog->layout()->addWidget(high);
    QTRY_VERIFY(high->isVisible());
    QTRY_COMPARE(high->height(), 32);
    high->setFocus();
    QTRY_VERIFY(high->hasFocus());
    QCOMPARE(high->height(), 32);
}

void tst_KdPushButton::growsWithItsText()
{
    const QString text = QStringLiteral("Take over everything from there");
    m_secondary->setText(text);
    QVERIFY(m_secondary->sizeHint().width() >=
            m_secondary->fontMetrics().horizontalAdvance(text) + 2 * 8);
}

void tst_KdPushButton::returnPressesTheFocusedOne()
{
    QSignalSpy primary(m_primary, &QPushButton::clicked);
    QSignalSpy secondary(m_secondary, &QPushButton::clicked);
    m_primary->setDefault(true);
    m_secondary->setFocus();
    QTest::keyClick(m_secondary, Qt::Key_Return);
    QCOMPARE(secondary.count(), 1);
    QVERIFY(primary.isEmpty());
    QTest::keyClick(m_secondary, Qt::Key_Space);
    QCOMPARE(secondary.count(), 2);
}

void tst_KdPushButton::returnInAFieldPressesNone()
{
    QSignalSpy primary(m_primary, &QPushButton::clicked);
    QSignalSpy secondary(m_secondary, &QPushButton::clicked);
    QTest::keyClick(m_field, Qt::Key_Return);
    QVERIFY(primary.isEmpty());
    QVERIFY(secondary.isEmpty());
    QVERIFY(m_dialog->isVisible());
}

void tst_KdPushButton::focusIsVisibleOnBothKinds()
{
    auto* manager = KdSkin::KdSkinManager::instance();
    const QImage before = WidgetLooks::image(*m_primary);
    m_primary->setFocus(Qt::TabFocusReason);
    // The ring is set off from the fill of the same colour.
    QCOMPARE(WidgetLooks::colorAt(*m_primary, {20, 1}), manager->color(KdSkin::Accent));
    QCOMPARE(WidgetLooks::colorAt(*m_primary, {20, 2}), manager->color(KdSkin::OnAccent));
    QVERIFY(WidgetLooks::image(*m_primary) != before);
    m_secondary->setFocus(Qt::TabFocusReason);
    QCOMPARE(WidgetLooks::image(*m_primary), before);
    QCOMPARE(WidgetLooks::colorAt(*m_secondary, {20, 0}), manager->color(KdSkin::Accent));
    QCOMPARE(WidgetLooks::colorAt(*m_secondary, {20, 1}), manager->color(KdSkin::Accent));
}

void tst_KdPushButton::disabledIsFaintAndDeaf()
{
    auto* manager = KdSkin::KdSkinManager::instance();
    QSignalSpy clicked(m_primary, &QPushButton::clicked);
    m_primary->setEnabled(false);
    QTest::mouseClick(m_primary, Qt::LeftButton);
    QVERIFY(clicked.isEmpty());
    const QImage faint = WidgetLooks::image(*m_primary);
    QVERIFY(!WidgetLooks::hasColor(faint, manager->color(KdSkin::Accent)));
    QVERIFY(!WidgetLooks::hasColor(faint, manager->color(KdSkin::Text)));
}

void tst_KdPushButton::mayBeDestroyedByItsOwnPress()
{
    const QPointer<KdPushButton> alive(m_secondary);
    connect(m_secondary, &QPushButton::clicked, this, [this] { delete m_secondary; });
    m_secondary->setFocus();
    QTest::keyClick(m_secondary, Qt::Key_Return);
    QVERIFY(!alive);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdPushButton>(argc, argv);
}

#include "tst_KdPushButton.moc"
