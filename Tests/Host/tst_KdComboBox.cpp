#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdSkinManager.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QAbstractItemView>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>

#include <memory>

class tst_KdComboBox : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aClickOpensTheListAndSaysSoOnce();
    void theListGoesAndSaysSoOnce_data();
    void theListGoesAndSaysSoOnce();
    void anEmptyListDoesNotOpen();
    void choosingWithTheMouseSelects();
    void wheelChangesNothingAndScrollsWhatIsBehind();
    void hiddenRowsAreKnown();
    void aRowThatDoesNotExistIsNotHidden_data();
    void aRowThatDoesNotExistIsNotHidden();
    void clearedListForgetsHiddenRows();
    void longChoiceIsElidedAndShownAsATip();
    void aTipOfItsOwnGoesFirstAsPlainText();
    void strangeNamesTakeOneRowEach_data();
    void strangeNamesTakeOneRowEach();
    void longNamesKeepTheListOnTheScreen();
    void textsStayAsTheyWereGiven();
    void widthDoesNotFollowTheTexts();
    void keyboardFocusIsVisible();
    void mayBeDestroyedWhileItsListIsOpen();
    void openListHasTheNameOfItsBox();

private:
    QWidget* list() { return m_combo->view()->window(); }
    void open();

    std::unique_ptr<QWidget> m_window;
    KdComboBox* m_combo = nullptr;
};

void tst_KdComboBox::init()
{
    KdTestCase::init();
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    m_window = std::make_unique<QWidget>();
    m_window->setGeometry(400, 300, 300, 200);
    m_combo = new KdComboBox(m_window.get());
    m_combo->setGeometry(20, 20, 204, 24);
    m_combo->addItems(
        {QStringLiteral("USB Microphone"), QStringLiteral("Headset"), QStringLiteral("Line In")});
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_KdComboBox::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

void tst_KdComboBox::open()
{
    m_combo->showPopup();
    QVERIFY(QTest::qWaitForWindowExposed(list()));
}

void tst_KdComboBox::aClickOpensTheListAndSaysSoOnce()
{
    QSignalSpy shown(m_combo, &KdComboBox::sigShowPopUp);
    QVERIFY(!m_combo->isPopupVisible());
    QTest::mouseClick(m_combo, Qt::LeftButton);
    QCOMPARE(shown.count(), 1);
    QVERIFY(m_combo->isPopupVisible());
    m_combo->hidePopup();
    QVERIFY(!m_combo->isPopupVisible());
}

void tst_KdComboBox::theListGoesAndSaysSoOnce_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<int>("index");

    QTest::newRow("choice") << QStringLiteral("choice") << 1;
    QTest::newRow("Escape") << QStringLiteral("Escape") << 0;
    QTest::newRow("press elsewhere") << QStringLiteral("press") << 0;
    QTest::newRow("by code") << QStringLiteral("code") << 0;
    QTest::newRow("window hidden") << QStringLiteral("window") << 0;
}

void tst_KdComboBox::theListGoesAndSaysSoOnce()
{
    QFETCH(QString, how);
    QFETCH(int, index);
    QSignalSpy hidden(m_combo, &KdComboBox::sigHidePopUp);
    open();
    QVERIFY(hidden.isEmpty());
    if (how == QLatin1String("choice")) {
        QTest::keyClick(m_combo->view(), Qt::Key_Down);
        QTest::keyClick(m_combo->view(), Qt::Key_Return);
    } else if (how == QLatin1String("Escape")) {
        QTest::keyClick(m_combo->view(), Qt::Key_Escape);
    } else if (how == QLatin1String("press")) {
        QTest::mousePress(list(), Qt::LeftButton, Qt::NoModifier, QPoint(-30, -50));
    } else if (how == QLatin1String("code")) {
        m_combo->hidePopup();
    } else {
        list()->hide();
    }
    QTRY_COMPARE(hidden.count(), 1);
    QVERIFY(!m_combo->isPopupVisible());
    QCOMPARE(m_combo->currentIndex(), index);
    m_combo->hidePopup();
    QCOMPARE(hidden.count(), 1);
}

void tst_KdComboBox::anEmptyListDoesNotOpen()
{
    m_combo->clear();
    QSignalSpy shown(m_combo, &KdComboBox::sigShowPopUp);
    QTest::mouseClick(m_combo, Qt::LeftButton);
    QVERIFY(shown.isEmpty());
    QVERIFY(!m_combo->isPopupVisible());
}

void tst_KdComboBox::choosingWithTheMouseSelects()
{
    // A press within the double-click time of the opening would count as part of it.
    const int interval = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(0);
    open();
    QApplication::setDoubleClickInterval(interval);
    const QModelIndex second = m_combo->model()->index(1, 0);
    QAbstractItemView* view = m_combo->view();
    QTest::mouseMove(view->viewport(), view->visualRect(second).center());
    QTRY_COMPARE(view->currentIndex(), second);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                      view->visualRect(second).center());
    QTRY_COMPARE(m_combo->currentIndex(), 1);
    QVERIFY(!m_combo->isPopupVisible());
}

void tst_KdComboBox::wheelChangesNothingAndScrollsWhatIsBehind()
{
    auto* content = new QWidget;
    content->setFixedSize(100, 2000);
    auto* combo = new KdComboBox(content);
    combo->addItems({QStringLiteral("a"), QStringLiteral("b")});
    combo->setGeometry(0, 0, 90, 24);
    QScrollArea area;
    area.setWidget(content);
    area.resize(150, 150);
    area.show();
    QVERIFY(QTest::qWaitForWindowExposed(&area));
    const QPointF at = combo->rect().center();
    QWheelEvent wheel(at, combo->mapToGlobal(at.toPoint()), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    // Only events of the window system go on to what is behind.
    QSpontaneKeyEvent::setSpontaneous(&wheel);
    qApp->notify(combo, &wheel);
    QCOMPARE(combo->currentIndex(), 0);
    QVERIFY(area.verticalScrollBar()->value() > 0);
}

void tst_KdComboBox::hiddenRowsAreKnown()
{
    m_combo->setRowHidden(0, true);
    QVERIFY(m_combo->isRowHidden(0));
    QVERIFY(!m_combo->isRowHidden(1));
    QVERIFY2(!m_combo->findChild<QAbstractItemView*>(), "The list is made for nothing");
    open();
    QVERIFY(m_combo->isRowHidden(0));
    const QModelIndex first = m_combo->model()->index(0, 0);
    QVERIFY(m_combo->view()->visualRect(first).isEmpty());
    m_combo->hidePopup();
    m_combo->setRowHidden(0, false);
    QVERIFY(!m_combo->isRowHidden(0));
}

void tst_KdComboBox::aRowThatDoesNotExistIsNotHidden_data()
{
    QTest::addColumn<int>("row");

    QTest::newRow("before") << -1;
    QTest::newRow("after") << 3;
    QTest::newRow("far") << 1000000;
}

void tst_KdComboBox::aRowThatDoesNotExistIsNotHidden()
{
    QFETCH(int, row);
    m_combo->setRowHidden(row, true);
    QVERIFY(!m_combo->isRowHidden(row));
    m_combo->clear();
    QVERIFY(!m_combo->isRowHidden(0));
}

void tst_KdComboBox::clearedListForgetsHiddenRows()
{
    m_combo->setRowHidden(0, true);
    m_combo->clear();
    m_combo->addItem(QStringLiteral("New"));
    QVERIFY(!m_combo->isRowHidden(0));
}

void tst_KdComboBox::longChoiceIsElidedAndShownAsATip()
{
    QVERIFY(WidgetLooks::toolTip(*m_combo).isEmpty());
    const QString name = QStringLiteral("A microphone with <b>a</b> name that nobody can remember");
    m_combo->setItemText(0, name);
    QCOMPARE(WidgetLooks::toolTip(*m_combo),
             QStringLiteral("<qt>%1</qt>").arg(name.toHtmlEscaped()));
    const QImage elided = WidgetLooks::image(*m_combo);
    m_combo->setItemText(0, name + QStringLiteral(" and more"));
    QCOMPARE(WidgetLooks::image(*m_combo), elided);
}

void tst_KdComboBox::aTipOfItsOwnGoesFirstAsPlainText()
{
    m_combo->setToolTip(QStringLiteral("<u>Connect</u>"));
    QCOMPARE(WidgetLooks::toolTip(*m_combo), QStringLiteral("<qt>&lt;u&gt;Connect&lt;/u&gt;</qt>"));
}

void tst_KdComboBox::strangeNamesTakeOneRowEach_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("empty") << QString();
    QTest::newRow("line breaks") << QStringLiteral("USB\nMic\r\nNo 2");
    QTest::newRow("markup") << QStringLiteral("<h1>Mic</h1>");
    QTest::newRow("place marker") << QStringLiteral("Mic %1 \"&x\"");
    QTest::newRow("right to left")
        << QStringLiteral("\u05de\u05d9\u05e7\u05e8\u05d5\u05e4\u05d5\u05df");
    QTest::newRow("4 KB") << QString(4096, QLatin1Char('W'));
}

void tst_KdComboBox::strangeNamesTakeOneRowEach()
{
    QFETCH(QString, name);
    m_combo->insertItem(1, name);
    open();
    const auto height = [this](int row) {
        return m_combo->view()->visualRect(m_combo->model()->index(row, 0)).height();
    };
    QVERIFY(height(0) >= 24);
    QCOMPARE(height(1), height(0));
    QCOMPARE(height(2), height(0));
    m_combo->hidePopup();
}

void tst_KdComboBox::longNamesKeepTheListOnTheScreen()
{
    m_combo->addItem(QString(4096, QLatin1Char('W')));
    open();
    QVERIFY(WidgetLooks::screenOf(*m_window).contains(list()->geometry()));
    m_combo->hidePopup();
}

void tst_KdComboBox::textsStayAsTheyWereGiven()
{
    const QString name = QStringLiteral("USB\n<b>%1</b>") + QString(500, QLatin1Char('x'));
    m_combo->insertItem(0, name, 7);
    m_combo->setCurrentIndex(0);
    QCOMPARE(m_combo->currentText(), name);
    QCOMPARE(m_combo->itemText(0), name);
    QCOMPARE(m_combo->findText(name, Qt::MatchExactly), 0);
}

void tst_KdComboBox::widthDoesNotFollowTheTexts()
{
    const QSize before = m_combo->sizeHint();
    m_combo->addItem(QString(4096, QLatin1Char('W')));
    QCOMPARE(m_combo->sizeHint(), before);
    QVERIFY(m_combo->minimumSizeHint().width() < 204);
}

void tst_KdComboBox::keyboardFocusIsVisible()
{
    const QColor accent = KdSkin::KdSkinManager::instance()->color(KdSkin::Accent);
    m_combo->clearFocus();
    QVERIFY(!WidgetLooks::hasColor(WidgetLooks::image(*m_combo), accent));
    m_combo->setFocus(Qt::TabFocusReason);
    QCOMPARE(WidgetLooks::colorAt(*m_combo, {100, 0}), accent);
    QCOMPARE(WidgetLooks::colorAt(*m_combo, {100, 1}), accent);
}

void tst_KdComboBox::mayBeDestroyedWhileItsListIsOpen()
{
    open();
    const QPointer<QWidget> popup(list());
    delete m_combo;
    QVERIFY(!popup);
}

void tst_KdComboBox::openListHasTheNameOfItsBox()
{
    m_combo->setAccessibleName(QStringLiteral("Microphone"));
    open();
    QCOMPARE(m_combo->view()->accessibleName(), QStringLiteral("Microphone"));
    m_combo->setAccessibleName(QStringLiteral("Mikrofon"));
    const WidgetLooks::Brackets brackets;
    QTRY_COMPARE(m_combo->view()->accessibleName(), QStringLiteral("Mikrofon"));
    m_combo->hidePopup();
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdComboBox>(argc, argv);
}

#include "tst_KdComboBox.moc"
