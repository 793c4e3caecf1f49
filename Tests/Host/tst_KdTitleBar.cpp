#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdTitleBar.h>
#include <KdWidgets/KdToolButton.h>
#include <Support/DialogDriver.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QAccessible>
#include <QSignalSpy>
#include <QVBoxLayout>

#include <memory>

class tst_KdTitleBar : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void closeReportsThenCloses();
    void receiverMayDestroyTheWindow();
    void minimiseMinimisesTheWindow();
    void minimiseOnlyReportsWhenTheHostMinimises();
    void showsTheButtonsAskedFor_data();
    void showsTheButtonsAskedFor();
    void draggingMovesTheWindow();
    void otherButtonsDoNotDrag();
    void titleIsPlainAndElided();
    void isFortyHigh();
    void textsFollowTheLanguage();
    void buttonsHaveNames();

private:
    KdToolButton* button(const char* name) const
    {
        return m_bar->findChild<KdToolButton*>(QStringLiteral("KdTitleBar_") + QLatin1String(name));
    }

    std::unique_ptr<QWidget> m_window;
    KdTitleBar* m_bar = nullptr;
};

void tst_KdTitleBar::init()
{
    KdTestCase::init();
    m_window = std::make_unique<QWidget>(nullptr, Qt::FramelessWindowHint);
    m_window->setGeometry(400, 300, 480, 448);
    m_bar = new KdTitleBar(m_window.get());
    auto* column = new QVBoxLayout(m_window.get());
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_bar);
    column->addStretch();
    m_bar->setButtons(KdTitleBar::MinimizeToTrayAndClose);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_KdTitleBar::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

void tst_KdTitleBar::closeReportsThenCloses()
{
    QVector<bool> visible;
    QVector<int> ids;
    connect(m_bar, &KdTitleBar::ButtonClick, this, [&](int id) {
        ids.append(id);
        visible.append(m_window->isVisible());
    });
    DialogDriver::click(*button("Close"));
    QCOMPARE(ids, QVector<int>{KdTitleBar::CloseButton});
    QCOMPARE(visible, QVector<bool>{true});
    QVERIFY(!m_window->isVisible());
}

void tst_KdTitleBar::receiverMayDestroyTheWindow()
{
    connect(m_bar, &KdTitleBar::ButtonClick, this, [this] { m_window.reset(); });
    const QPointer<KdToolButton> close(button("Close"));
    QTest::keyClick(close, Qt::Key_Return);
    QVERIFY(!m_window && !close);
}

void tst_KdTitleBar::minimiseMinimisesTheWindow()
{
    QSignalSpy clicked(m_bar, &KdTitleBar::ButtonClick);
    DialogDriver::click(*button("Minimize"));
    QTRY_VERIFY(m_window->isMinimized());
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.first().first().toInt(), 4);
}

void tst_KdTitleBar::minimiseOnlyReportsWhenTheHostMinimises()
{
    m_bar->SetMinimizedEnable(false);
    QSignalSpy clicked(m_bar, &KdTitleBar::ButtonClick);
    DialogDriver::click(*button("Minimize"));
    QCOMPARE(clicked.count(), 1);
    QVERIFY(!m_window->isMinimized());
}

void tst_KdTitleBar::showsTheButtonsAskedFor_data()
{
    QTest::addColumn<int>("mask");
    QTest::addColumn<bool>("minimise");

    QTest::newRow("close only") << 1 << false;
    QTest::newRow("minimise to tray and close") << 32 << true;
    QTest::newRow("nothing known") << 0 << false;
    QTest::newRow("all bits") << -1 << false;
}

void tst_KdTitleBar::showsTheButtonsAskedFor()
{
    QFETCH(int, mask);
    QFETCH(bool, minimise);
    m_bar->setButtons(mask);
    QVERIFY(button("Close")->isVisible());
    QCOMPARE(button("Minimize")->isVisible(), minimise);
}

void tst_KdTitleBar::draggingMovesTheWindow()
{
    const QPoint before = m_window->pos();
    QTest::mousePress(m_bar, Qt::LeftButton, Qt::NoModifier, {100, 20});
    QMouseEvent move(QEvent::MouseMove, QPoint(130, 35), m_bar->mapToGlobal(QPoint(130, 35)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_bar, &move);
    QTRY_COMPARE(m_window->pos(), before + QPoint(30, 15));
    QTest::mouseRelease(m_bar, Qt::LeftButton, Qt::NoModifier, {100, 20});
    QMouseEvent later(QEvent::MouseMove, QPoint(200, 35), m_bar->mapToGlobal(QPoint(200, 35)),
                      Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_bar, &later);
    QCOMPARE(m_window->pos(), before + QPoint(30, 15));
}

void tst_KdTitleBar::otherButtonsDoNotDrag()
{
    const QPoint before = m_window->pos();
    QTest::mousePress(m_bar, Qt::RightButton, Qt::NoModifier, {100, 20});
    QMouseEvent move(QEvent::MouseMove, QPoint(130, 35), m_bar->mapToGlobal(QPoint(130, 35)),
                     Qt::NoButton, Qt::RightButton, Qt::NoModifier);
    QApplication::sendEvent(m_bar, &move);
    QCOMPARE(m_window->pos(), before);
}

void tst_KdTitleBar::titleIsPlainAndElided()
{
    const QString title = QStringLiteral("<b>Take</b> ") + QString(4096, QLatin1Char('W'));
    m_bar->setTitle(title);
    QCOMPARE(m_bar->title(), title);
    const auto* label = m_bar->findChild<KdLabel*>();
    QCOMPARE(label->textFormat(), Qt::PlainText);
    QVERIFY(!label->overflowText().isEmpty());
    QCOMPARE(m_window->width(), 480);
    QVERIFY(m_bar->rect().contains(button("Close")->geometry()));
}

void tst_KdTitleBar::isFortyHigh()
{
    QCOMPARE(m_bar->height(), 40);
    QCOMPARE(WidgetLooks::colorAt(*m_bar, {4, 20}),
             KdSkin::KdSkinManager::instance()->color(KdSkin::Surface));
}

void tst_KdTitleBar::textsFollowTheLanguage()
{
    QCOMPARE(button("Close")->toolTip(), QStringLiteral("Close"));
    {
        const WidgetLooks::Brackets language;
        QTRY_COMPARE(button("Close")->toolTip(), QStringLiteral("[Close]"));
        QCOMPARE(button("Minimize")->toolTip(), QStringLiteral("[Minimize]"));
    }
    QTRY_COMPARE(button("Minimize")->toolTip(), QStringLiteral("Minimize"));
}

void tst_KdTitleBar::buttonsHaveNames()
{
    QCOMPARE(QAccessible::queryAccessibleInterface(button("Close"))->text(QAccessible::Name),
             QStringLiteral("Close"));
    QCOMPARE(QAccessible::queryAccessibleInterface(m_bar)->role(), QAccessible::TitleBar);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdTitleBar>(argc, argv);
}

#include "tst_KdTitleBar.moc"
