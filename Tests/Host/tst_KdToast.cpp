#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdToast.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QAccessible>
#include <QElapsedTimer>
#include <QLabel>
#include <QPointer>

#include <memory>

namespace {

constexpr int kMargin = 104;

QPixmap mark()
{
    QPixmap pixmap(24, 24);
    pixmap.fill(Qt::red);
    return pixmap;
}

} // namespace

class tst_KdToast : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void standsAtTheBottomCentreAboveItsMargin();
    void showsPixmapAndText();
    void textIsPlain();
    void isGoneAfterThreeSeconds();
    void theFormerToastOnAWindowGoesFirst();
    void toastsOfOtherWindowsStay();
    void followsItsWindow();
    void leavesTheScreenWhileItsWindowIsMinimised();
    void goesWhenItsWindowIsHidden();
    void goesWithItsWindow();
    void madeButNotShownGoesWithItsWindow();
    void deletesItselfOnCloseWhenAskedTo();
    void strangeTextsStayWithinTheWindow_data();
    void strangeTextsStayWithinTheWindow();
    void takesNoFocusAndNoPresses();
    void worksWithoutAParent();
    void followsTheSkin();
    void isAnAlertToAssistiveTechnology();
    void followsTheLanguage();

private:
    KdToast* show(const KdLiveText& text = QStringLiteral("Recording is paused."));

    std::unique_ptr<QWidget> m_window;
    QWidget* m_inner = nullptr;
};

void tst_KdToast::init()
{
    KdTestCase::init();
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    m_window = std::make_unique<QWidget>();
    m_window->setGeometry(400, 300, 480, 448);
    m_inner = new QWidget(m_window.get());
    m_inner->setGeometry(10, 10, 50, 50);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_KdToast::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

KdToast* tst_KdToast::show(const KdLiveText& text)
{
    KdToast* toast = KdToast::showToast(m_inner, text, mark(), kMargin);
    return QTest::qWaitForWindowExposed(toast) ? toast : nullptr;
}

void tst_KdToast::standsAtTheBottomCentreAboveItsMargin()
{
    const KdToast* toast = show();
    const QRect window(m_window->mapToGlobal(QPoint()), m_window->size());
    QCOMPARE(window.bottom() - toast->geometry().bottom(), kMargin);
    QVERIFY(std::abs(window.center().x() - toast->geometry().center().x()) <= 1);
}

void tst_KdToast::showsPixmapAndText()
{
    KdToast* toast = show();
    QCOMPARE(toast->text(), QStringLiteral("Recording is paused."));
    const QImage shown = WidgetLooks::image(*toast);
    QVERIFY(WidgetLooks::hasColor(shown, Qt::red));
    auto* manager = KdSkin::KdSkinManager::instance();
    QVERIFY(WidgetLooks::hasColor(shown, manager->color(KdSkin::Text)));
    QCOMPARE(WidgetLooks::colorAt(*toast, {8, toast->height() / 2}),
             manager->color(KdSkin::Surface));
    KdToast* bare = KdToast::showToast(m_inner, QStringLiteral("x"), QPixmap(), kMargin);
    QVERIFY(bare->width() < toast->width());
}

void tst_KdToast::textIsPlain()
{
    KdToast* toast = show(QStringLiteral("<b>%1</b>"));
    const auto* label = toast->findChild<QLabel*>(QStringLiteral("KdToast_Text"));
    QCOMPARE(label->text(), QStringLiteral("<b>%1</b>"));
    QCOMPARE(label->textFormat(), Qt::PlainText);
}

void tst_KdToast::isGoneAfterThreeSeconds()
{
    QElapsedTimer shown;
    shown.start();
    const QPointer<KdToast> toast(show());
    QTRY_VERIFY_WITH_TIMEOUT(!toast, 6000);
    QVERIFY2(shown.elapsed() >= 3000, qPrintable(QString::number(shown.elapsed())));
}

void tst_KdToast::theFormerToastOnAWindowGoesFirst()
{
    const QPointer<KdToast> former(show());
    const QPointer<KdToast> next(show(QStringLiteral("Recording goes on.")));
    QTRY_VERIFY(!former);
    QVERIFY(next && next->isVisible());
}

void tst_KdToast::toastsOfOtherWindowsStay()
{
    QWidget other;
    other.setGeometry(950, 300, 300, 300);
    other.show();
    const QPointer<KdToast> here(show());
    KdToast::showToast(&other, QStringLiteral("There"), QPixmap(), 20);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(here && here->isVisible());
}

void tst_KdToast::followsItsWindow()
{
    const KdToast* toast = show();
    const QPoint before = toast->pos();
    m_window->move(m_window->pos() + QPoint(60, 40));
    QTRY_COMPARE(toast->pos(), before + QPoint(60, 40));
    m_window->resize(480, 500);
    QTRY_COMPARE(toast->pos(), before + QPoint(60, 40 + 52));
}

void tst_KdToast::leavesTheScreenWhileItsWindowIsMinimised()
{
    const QPointer<KdToast> toast(show());
    m_window->showMinimized();
    QTRY_VERIFY(!toast || !toast->isVisible());
    QVERIFY(toast);
    m_window->showNormal();
    QTRY_VERIFY(toast && toast->isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(!toast, 6000);
}

void tst_KdToast::goesWhenItsWindowIsHidden()
{
    const QPointer<KdToast> toast(show());
    m_window->hide();
    QTRY_VERIFY(!toast);
}

void tst_KdToast::goesWithItsWindow()
{
    const QPointer<KdToast> toast(show());
    m_window.reset();
    QVERIFY(!toast);
}

void tst_KdToast::madeButNotShownGoesWithItsWindow()
{
    const QPointer<KdToast> toast(
        KdToast::creatToast(QStringLiteral("x"), m_inner, QPixmap(), kMargin));
    QVERIFY(!toast->isVisible());
    m_window.reset();
    QVERIFY(!toast);
}

void tst_KdToast::deletesItselfOnCloseWhenAskedTo()
{
    const QPointer<KdToast> kept(
        KdToast::creatToast(QStringLiteral("x"), m_inner, QPixmap(), kMargin));
    kept->show();
    kept->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(kept);
    kept->setAttribute(Qt::WA_DeleteOnClose);
    kept->show();
    kept->close();
    QTRY_VERIFY(!kept);
}

void tst_KdToast::strangeTextsStayWithinTheWindow_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("one word of 4 KB") << QString(4096, QLatin1Char('W'));
    QTest::newRow("lines") << QStringLiteral("line\n").repeated(500);
    QTest::newRow("right to left") << QString(QChar(0x5d0)).repeated(4096);
    QTest::newRow("empty") << QString();
}

void tst_KdToast::strangeTextsStayWithinTheWindow()
{
    QFETCH(QString, text);
    const KdToast* toast = show(text);
    const QRect window(m_window->mapToGlobal(QPoint()), m_window->size());
    QVERIFY(window.contains(toast->geometry()));
    QVERIFY(toast->height() <= 120);
}

void tst_KdToast::takesNoFocusAndNoPresses()
{
    const KdToast* toast = show();
    QCOMPARE(QApplication::activeWindow(), m_window.get());
    QVERIFY(toast->windowFlags() & Qt::WindowTransparentForInput);
}

void tst_KdToast::worksWithoutAParent()
{
    const QPointer<KdToast> toast(
        KdToast::showToast(nullptr, QStringLiteral("x"), QPixmap(), kMargin));
    QVERIFY(QTest::qWaitForWindowExposed(toast));
    QVERIFY(WidgetLooks::screenOf(*toast).contains(toast->geometry()));
    toast->close();
    QTRY_VERIFY(!toast);
}

void tst_KdToast::followsTheSkin()
{
    auto* manager = KdSkin::KdSkinManager::instance();
    KdToast* toast = show();
    QVERIFY(manager->setSkin(QStringLiteral("light")));
    QCOMPARE(WidgetLooks::colorAt(*toast, {8, toast->height() / 2}),
             manager->color(KdSkin::Surface));
}

void tst_KdToast::isAnAlertToAssistiveTechnology()
{
    const QAccessibleInterface* read = QAccessible::queryAccessibleInterface(show());
    QCOMPARE(read->role(), QAccessible::AlertMessage);
    QCOMPARE(read->text(QAccessible::Name), QStringLiteral("Recording is paused."));
}

void tst_KdToast::followsTheLanguage()
{
    const KdToast* toast = show([] { return tr("Recording is paused."); });
    const QRect place = toast->geometry();
    {
        const WidgetLooks::Brackets brackets;
        QTRY_COMPARE(toast->text(), QStringLiteral("[Recording is paused.]"));
        QCOMPARE(toast->accessibleName(), toast->text());
        QVERIFY(toast->width() > place.width());
        QVERIFY(std::abs(toast->geometry().center().x() - place.center().x()) <= 1);
    }
    QTRY_COMPARE(toast->text(), QStringLiteral("Recording is paused."));
    QCOMPARE(toast->geometry(), place);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdToast>(argc, argv);
}

#include "tst_KdToast.moc"
