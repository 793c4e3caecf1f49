#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdTipWidget.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QAccessible>
#include <QLabel>
#include <QPointer>
#include <QScreen>

#include <memory>

class tst_KdTipWidget : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void arrowPointsAtThePlace_data();
    void arrowPointsAtThePlace();
    void isAsWideAsAskedFor();
    void isAsWideAsItsTextNeeds();
    void textCanBeReplaced();
    void textIsPlain();
    void strangeTextsStayOnTheScreen_data();
    void strangeTextsStayOnTheScreen();
    void closesWhenItIsClicked();
    void closesWithItsWindow_data();
    void closesWithItsWindow();
    void goesWithItsParent();
    void canBeShownAgain();
    void takesNoFocus();
    void warningIsMarked();
    void isAToolTipToAssistiveTechnology();
    void followsTheLanguage();

private:
    KdTipWidget* make(int direction, int width, const QString& text = QStringLiteral("A tip."))
    {
        return KdTipWidget::creatTipWidget(KdTipWidget::InfoTip, direction, m_parent, text, width);
    }

    std::unique_ptr<QWidget> m_window;
    QWidget* m_parent = nullptr;
};

void tst_KdTipWidget::init()
{
    KdTestCase::init();
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    m_window = std::make_unique<QWidget>();
    m_window->setGeometry(400, 300, 480, 448);
    m_parent = new QWidget(m_window.get());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_KdTipWidget::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

void tst_KdTipWidget::arrowPointsAtThePlace_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<QPoint>("place");

    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    for (const int direction :
         {KdTipWidget::ArrowUp, KdTipWidget::ArrowUpCentered, KdTipWidget::ArrowDown}) {
        QTest::addRow("%d middle", direction) << direction << screen.center();
        QTest::addRow("%d left", direction) << direction << QPoint(screen.left() + 30, 400);
        QTest::addRow("%d right", direction) << direction << QPoint(screen.right() - 30, 400);
        QTest::addRow("%d top", direction) << direction << QPoint(500, screen.top() + 5);
        QTest::addRow("%d bottom", direction) << direction << QPoint(500, screen.bottom() - 5);
    }
}

void tst_KdTipWidget::arrowPointsAtThePlace()
{
    QFETCH(int, direction);
    QFETCH(QPoint, place);
    KdTipWidget* tip = make(direction, 272);
    tip->transToArrowPos(place);
    QCOMPARE(tip->arrowPos(), place);
    tip->OnShow(5);
    QVERIFY(QTest::qWaitForWindowExposed(tip));
    QCOMPARE(tip->arrowPos(), place);
    const QRect screen = WidgetLooks::screenOf(*m_window);
    QVERIFY(screen.adjusted(5, 5, -5, -5).contains(tip->geometry()));
    const bool onEdge =
        place.y() == tip->geometry().top() || place.y() == tip->geometry().top() + tip->height();
    QVERIFY(onEdge);
    QVERIFY(place.x() > tip->geometry().left() && place.x() < tip->geometry().right());
}

void tst_KdTipWidget::isAsWideAsAskedFor()
{
    const QString text = QStringLiteral("Bitrate mode affects audio quality and file size. ");
    KdTipWidget* tip = make(KdTipWidget::ArrowUpCentered, 272, text.repeated(3));
    QCOMPARE(tip->width(), 272);
    const auto* label = tip->findChild<QLabel*>(QStringLiteral("KdTipWidget_Text"));
    QVERIFY(label->height() >= 3 * label->fontMetrics().lineSpacing());
    QVERIFY(tip->rect().contains(label->geometry()));
}

void tst_KdTipWidget::isAsWideAsItsTextNeeds()
{
    const KdTipWidget* shortTip = make(KdTipWidget::ArrowUp, 0, QStringLiteral("No"));
    const KdTipWidget* longTip =
        make(KdTipWidget::ArrowUp, 0, QStringLiteral("word ").repeated(60));
    QVERIFY(shortTip->width() < 100);
    QVERIFY(longTip->width() > 200 && longTip->width() < 400);
}

void tst_KdTipWidget::textCanBeReplaced()
{
    KdTipWidget* tip = make(KdTipWidget::ArrowUpCentered, 272, QString());
    tip->transToArrowPos({900, 500});
    const int height = tip->height();
    tip->setText(QStringLiteral("word ").repeated(60));
    QCOMPARE(tip->text(), QStringLiteral("word ").repeated(60));
    QVERIFY(tip->height() > height);
    QCOMPARE(tip->arrowPos(), QPoint(900, 500));
}

void tst_KdTipWidget::textIsPlain()
{
    const KdTipWidget* tip = make(KdTipWidget::ArrowUp, 0, QStringLiteral("<b>%1</b>"));
    QCOMPARE(tip->text(), QStringLiteral("<b>%1</b>"));
    QCOMPARE(tip->findChild<QLabel*>()->textFormat(), Qt::PlainText);
}

void tst_KdTipWidget::strangeTextsStayOnTheScreen_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("one word of 4 KB") << QString(4096, QLatin1Char('W'));
    QTest::newRow("lines") << QStringLiteral("line\n").repeated(500);
    QTest::newRow("right to left") << QString(QChar(0x5d0)).repeated(4096);
}

void tst_KdTipWidget::strangeTextsStayOnTheScreen()
{
    QFETCH(QString, text);
    KdTipWidget* tip = make(KdTipWidget::ArrowUp, 0, text);
    tip->transToArrowPos({900, 500});
    tip->OnShow(5);
    QVERIFY(WidgetLooks::screenOf(*m_window).contains(tip->geometry()));
}

void tst_KdTipWidget::closesWhenItIsClicked()
{
    const QPointer<KdTipWidget> tip(make(KdTipWidget::ArrowUp, 0));
    tip->setAttribute(Qt::WA_DeleteOnClose);
    tip->transToArrowPos({900, 500});
    tip->OnShow(5);
    QVERIFY(QTest::qWaitForWindowExposed(tip));
    QTest::mouseClick(tip, Qt::LeftButton);
    QTRY_VERIFY(!tip);
}

void tst_KdTipWidget::closesWithItsWindow_data()
{
    QTest::addColumn<QString>("how");

    for (const char* how : {"hidden", "moved", "minimised"}) {
        QTest::newRow(how) << QString::fromLatin1(how);
    }
}

void tst_KdTipWidget::closesWithItsWindow()
{
    QFETCH(QString, how);
    KdTipWidget* tip = make(KdTipWidget::ArrowUp, 0);
    tip->OnShow(5);
    QVERIFY(tip->isVisible());
    if (how == QLatin1String("hidden")) {
        m_window->hide();
    } else if (how == QLatin1String("moved")) {
        m_window->move(m_window->pos() + QPoint(50, 50));
    } else {
        m_window->showMinimized();
    }
    QTRY_VERIFY(!tip->isVisible());
}

void tst_KdTipWidget::goesWithItsParent()
{
    const QPointer<KdTipWidget> tip(make(KdTipWidget::ArrowUp, 0));
    tip->OnShow(5);
    delete m_parent;
    QVERIFY(!tip);
}

void tst_KdTipWidget::canBeShownAgain()
{
    KdTipWidget* tip = make(KdTipWidget::ArrowUpCentered, 272);
    tip->transToArrowPos({700, 500});
    tip->OnShow(5);
    QVERIFY(QTest::qWaitForWindowExposed(tip));
    tip->close();
    QVERIFY(!tip->isVisible());
    tip->transToArrowPos({900, 600});
    tip->OnShow(5);
    QVERIFY(tip->isVisible());
    QCOMPARE(tip->arrowPos(), QPoint(900, 600));
}

void tst_KdTipWidget::takesNoFocus()
{
    KdTipWidget* tip = make(KdTipWidget::ArrowUp, 0);
    tip->OnShow(5);
    QVERIFY(QTest::qWaitForWindowExposed(tip));
    QCOMPARE(QApplication::activeWindow(), m_window.get());
}

void tst_KdTipWidget::warningIsMarked()
{
    auto* manager = KdSkin::KdSkinManager::instance();
    const QColor warn = manager->color(KdSkin::Warn);
    auto* warning = KdTipWidget::creatTipWidget(KdTipWidget::WarningTip, KdTipWidget::ArrowUp,
                                                m_parent, QStringLiteral("Careful"), 0);
    QVERIFY(WidgetLooks::hasColor(WidgetLooks::image(*warning), warn));
    QVERIFY(!WidgetLooks::hasColor(WidgetLooks::image(*make(KdTipWidget::ArrowUp, 0)), warn));
}

void tst_KdTipWidget::isAToolTipToAssistiveTechnology()
{
    KdTipWidget* tip = make(KdTipWidget::ArrowUp, 0);
    const QAccessibleInterface* read = QAccessible::queryAccessibleInterface(tip);
    QCOMPARE(read->role(), QAccessible::ToolTip);
    QCOMPARE(read->text(QAccessible::Name), QStringLiteral("A tip."));
    tip->setText(QStringLiteral("Another."));
    QCOMPARE(read->text(QAccessible::Name), QStringLiteral("Another."));
}

void tst_KdTipWidget::followsTheLanguage()
{
    KdTipWidget* tip = KdTipWidget::creatTipWidget(
        KdTipWidget::InfoTip, KdTipWidget::ArrowUp, m_parent, [] { return tr("A tip."); }, 0);
    const QPoint target = m_window->mapToGlobal(QPoint(200, 200));
    tip->transToArrowPos(target);
    tip->OnShow(5);
    const QSize size = tip->size();
    {
        const WidgetLooks::Brackets brackets;
        QTRY_COMPARE(tip->text(), QStringLiteral("[A tip.]"));
        QCOMPARE(tip->accessibleName(), tip->text());
        QVERIFY(tip->width() > size.width());
        QCOMPARE(tip->arrowPos(), target);
        tip->setText([] { return tr("Another one."); });
        QCOMPARE(tip->text(), QStringLiteral("[Another one.]"));
    }
    QTRY_COMPARE(tip->text(), QStringLiteral("Another one."));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdTipWidget>(argc, argv);
}

#include "tst_KdTipWidget.moc"
