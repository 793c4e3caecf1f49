#include <KdWidgets/KdFramelessDialog.h>
#include <KdWidgets/KdPushButton.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdTitleBar.h>
#include <Support/DialogDriver.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>

#include <memory>

namespace {

QPoint off(const QWidget& widget, const QRect& around)
{
    return widget.geometry().center() - around.center();
}

/** Counts the times its texts were asked for again. */
class Speaking : public KdFramelessDialog
{
public:
    int told = 0;
    void RetranslateUi() override { ++told; }
};

} // namespace

class tst_KdFramelessDialog : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void contentHasAllButTheTitleBar_data();
    void contentHasAllButTheTitleBar();
    void aNewContentReplacesTheFormer();
    void aDestroyedContentIsForgotten();
    void titleIsTheWindowsToo();
    void buttonsStandOnTheRight();
    void buttonBarCanBeHidden();
    void sizeIsTheUsersOnlyWhenBothSidesSaySo_data();
    void sizeIsTheUsersOnlyWhenBothSidesSaySo();
    void borderLiesOverTheEdge();
    void hasNoFrameOfTheWindowSystem_data();
    void hasNoFrameOfTheWindowSystem();
    void escapeAndTitleBarReject();
    void appearsInTheMiddleOfItsParentsWindow();
    void appearsInTheMiddleOfTheScreenWithoutAParent();
    void appearsInTheMiddleEachTime();
    void appearsWhereItWasMoved();
    void staysOnTheScreenAtItsEdge();
    void keepsASizeThatItWasGiven();
    void tabGoesThroughTheContentFirst();
    void tellsItsTextsAnew();
};

void tst_KdFramelessDialog::init()
{
    KdTestCase::init();
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
}

void tst_KdFramelessDialog::contentHasAllButTheTitleBar_data()
{
    QTest::addColumn<bool>("border");

    QTest::newRow("with a border") << true;
    QTest::newRow("without") << false;
}

void tst_KdFramelessDialog::contentHasAllButTheTitleBar()
{
    QFETCH(bool, border);
    KdFramelessDialog dialog(nullptr, true, border);
    auto* content = new QWidget;
    dialog.setContentWidget(content);
    dialog.setButtonBarVisible(false);
    dialog.setFixedSize(480, 448);
    dialog.show();
    QCOMPARE(content->size(), QSize(480, 408));
    QCOMPARE(content->pos(), QPoint(0, 40));
    QCOMPARE(content->parentWidget(), &dialog);
    QCOMPARE(dialog.contentWidget(), content);
}

void tst_KdFramelessDialog::aNewContentReplacesTheFormer()
{
    KdFramelessDialog dialog;
    const QPointer<QWidget> former(new QWidget);
    dialog.setContentWidget(former);
    dialog.setContentWidget(former);
    QVERIFY(former);
    auto* next = new QWidget;
    dialog.setContentWidget(next);
    QVERIFY(!former);
    QCOMPARE(dialog.contentWidget(), next);
    dialog.setContentWidget(nullptr);
    QCOMPARE(dialog.contentWidget(), nullptr);
}

void tst_KdFramelessDialog::aDestroyedContentIsForgotten()
{
    KdFramelessDialog dialog;
    auto* content = new QWidget;
    dialog.setContentWidget(content);
    delete content;
    QCOMPARE(dialog.contentWidget(), nullptr);
    dialog.setContentWidget(new QWidget);
    QVERIFY(dialog.contentWidget());
}

void tst_KdFramelessDialog::titleIsTheWindowsToo()
{
    KdFramelessDialog dialog;
    dialog.SetTitleName(QStringLiteral("Record Audio"));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Record Audio"));
    QCOMPARE(dialog.titleBar()->title(), QStringLiteral("Record Audio"));
}

void tst_KdFramelessDialog::buttonsStandOnTheRight()
{
    KdFramelessDialog dialog;
    auto* content = new QWidget;
    content->setFixedSize(400, 100);
    dialog.setContentWidget(content);
    auto* button = KdPushButton::CreatePrimaryButton(&dialog, QStringLiteral("OK"));
    dialog.buttonBarLayout()->addWidget(button);
    dialog.show();
    const QPoint place = button->mapTo(&dialog, QPoint());
    QCOMPARE(place.x() + button->width(), 400 - 16);
    QVERIFY(place.y() >= content->geometry().bottom());
    QCOMPARE(dialog.height() - (place.y() + button->height()), 16);
}

void tst_KdFramelessDialog::buttonBarCanBeHidden()
{
    KdFramelessDialog dialog;
    auto* content = new QWidget;
    content->setFixedSize(400, 100);
    dialog.setContentWidget(content);
    dialog.setButtonBarVisible(false);
    dialog.show();
    QCOMPARE(dialog.height(), 140);
}

void tst_KdFramelessDialog::sizeIsTheUsersOnlyWhenBothSidesSaySo_data()
{
    QTest::addColumn<bool>("fixedSize");
    QTest::addColumn<bool>("resizable");
    QTest::newRow("neither") << true << false;
    QTest::newRow("the dialog only") << false << false;
    QTest::newRow("the title bar only") << true << true;
    QTest::newRow("both") << false << true;
}

void tst_KdFramelessDialog::sizeIsTheUsersOnlyWhenBothSidesSaySo()
{
    QFETCH(bool, fixedSize);
    QFETCH(bool, resizable);
    KdFramelessDialog dialog(nullptr, fixedSize);
    dialog.resize(400, 300);
    dialog.titleBar()->SetResizeble(resizable);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QVERIFY(dialog.titleBar()->isVisible());
    auto* const grip = dialog.findChild<QWidget*>(QStringLiteral("KdResizeGrip_BottomRight"));
    QCOMPARE(grip != nullptr, !fixedSize && resizable);
    if (!grip) {
        return;
    }
    QTest::mousePress(grip, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    const QPoint to = grip->mapToGlobal(QPoint(5, 5)) + QPoint(60, 40);
    QMouseEvent move(QEvent::MouseMove, grip->mapFromGlobal(to), to, Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(grip, &move);
    QTRY_COMPARE(dialog.size(), QSize(460, 340));
    // The grips have moved with the edges.
    QTRY_COMPARE(grip->geometry().bottomRight(), QPoint(459, 339));
    dialog.titleBar()->SetResizeble(false);
    QVERIFY(!dialog.findChild<QWidget*>(QStringLiteral("KdResizeGrip_BottomRight")));
}

void tst_KdFramelessDialog::borderLiesOverTheEdge()
{
    auto* manager = KdSkin::KdSkinManager::instance();
    for (const bool border : {true, false}) {
        KdFramelessDialog dialog(nullptr, true, border);
        dialog.setContentWidget(new QWidget);
        dialog.setFixedSize(300, 200);
        dialog.show();
        const QColor edge = manager->color(border ? KdSkin::Stroke : KdSkin::Window);
        QCOMPARE(WidgetLooks::colorAt(dialog, {0, 150}), edge);
        QCOMPARE(WidgetLooks::colorAt(dialog, {299, 150}), edge);
        QCOMPARE(WidgetLooks::colorAt(dialog, {150, 199}), edge);
        QCOMPARE(WidgetLooks::colorAt(dialog, {1, 150}), manager->color(KdSkin::Window));
    }
}

void tst_KdFramelessDialog::hasNoFrameOfTheWindowSystem_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<Qt::WindowType>("type");

    QTest::newRow("dialog") << 1 << Qt::Dialog;
    QTest::newRow("window") << 0 << Qt::Window;
}

void tst_KdFramelessDialog::hasNoFrameOfTheWindowSystem()
{
    QFETCH(int, kind);
    QFETCH(Qt::WindowType, type);
    const KdFramelessDialog dialog(nullptr, true, true, kind);
    QVERIFY(dialog.windowFlags() & Qt::FramelessWindowHint);
    QCOMPARE(dialog.windowType(), type);
}

void tst_KdFramelessDialog::escapeAndTitleBarReject()
{
    KdFramelessDialog dialog;
    QSignalSpy rejected(&dialog, &QDialog::rejected);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(rejected.count(), 1);
    dialog.show();
    DialogDriver::click(dialog, QStringLiteral("KdTitleBar_Close"));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(rejected.count(), 2);
}

void tst_KdFramelessDialog::appearsInTheMiddleOfItsParentsWindow()
{
    QWidget parent;
    parent.setGeometry(300, 200, 900, 700);
    auto* inner = new QWidget(&parent);
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    KdFramelessDialog dialog(inner);
    dialog.setFixedSize(300, 200);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QTRY_VERIFY(off(dialog, parent.geometry()).manhattanLength() <= 2);
}

void tst_KdFramelessDialog::appearsInTheMiddleOfTheScreenWithoutAParent()
{
    KdFramelessDialog dialog;
    dialog.setFixedSize(300, 200);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QTRY_VERIFY(off(dialog, WidgetLooks::screenOf(dialog)).manhattanLength() <= 2);
}

void tst_KdFramelessDialog::appearsInTheMiddleEachTime()
{
    QWidget parent;
    parent.setGeometry(300, 200, 600, 500);
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    KdFramelessDialog dialog(&parent);
    dialog.setFixedSize(300, 200);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    dialog.close();
    parent.move(900, 500);
    QTRY_VERIFY(parent.geometry().left() >= 900);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QTRY_VERIFY(off(dialog, parent.geometry()).manhattanLength() <= 2);
}

void tst_KdFramelessDialog::appearsWhereItWasMoved()
{
    KdFramelessDialog dialog;
    dialog.setFixedSize(300, 200);
    dialog.move(50, 60);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QTRY_COMPARE(dialog.pos(), QPoint(50, 60));
}

void tst_KdFramelessDialog::staysOnTheScreenAtItsEdge()
{
    QWidget parent(nullptr, Qt::ToolTip);
    parent.setGeometry(1850, 1150, 60, 40);
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    KdFramelessDialog dialog(&parent);
    dialog.setFixedSize(480, 448);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QTRY_VERIFY(WidgetLooks::screenOf(dialog).contains(dialog.geometry()));
}

void tst_KdFramelessDialog::keepsASizeThatItWasGiven()
{
    KdFramelessDialog dialog;
    dialog.setContentWidget(new QWidget);
    dialog.resize(350, 260);
    dialog.show();
    QCOMPARE(dialog.size(), QSize(350, 260));
}

void tst_KdFramelessDialog::tabGoesThroughTheContentFirst()
{
    KdFramelessDialog dialog;
    dialog.setTitleBarButtons(KdTitleBar::MinimizeToTrayAndClose);
    auto* ok = KdPushButton::CreatePrimaryButton(&dialog, QStringLiteral("OK"));
    ok->setObjectName(QStringLiteral("ok"));
    dialog.buttonBarLayout()->addWidget(ok);
    auto* content = new QWidget;
    auto* row = new QHBoxLayout(content);
    for (const QString& name : {QStringLiteral("first"), QStringLiteral("second")}) {
        auto* field = new QLineEdit(content);
        field->setObjectName(name);
        row->addWidget(field);
    }
    dialog.setContentWidget(content);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));

    QStringList order;
    for (int i = 0; i < 5; ++i) {
        QVERIFY(QApplication::focusWidget());
        order.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(order, QStringList({QStringLiteral("ok"), QStringLiteral("first"),
                                 QStringLiteral("second"), QStringLiteral("KdTitleBar_Minimize"),
                                 QStringLiteral("KdTitleBar_Close")}));
}

void tst_KdFramelessDialog::tellsItsTextsAnew()
{
    Speaking dialog;
    {
        const WidgetLooks::Brackets language;
        QTRY_COMPARE(dialog.told, 1);
    }
    QTRY_COMPARE(dialog.told, 2);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdFramelessDialog>(argc, argv);
}

#include "tst_KdFramelessDialog.moc"
