#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdToolButton.h>
#include <KdWidgets/KdWidget.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QHelpEvent>
#include <QPushButton>
#include <QToolTip>

#include <memory>

namespace {

/** Has controls whose tips are its own, Qt's, and made when they are asked for. */
class Page : public KdWidget
{
public:
    Page()
        : m_kits(new KdToolButton(this)), m_qts(new QPushButton(this)), m_list(new KdComboBox(this))
    {
        int top = 20;
        for (QWidget* control : QWidgetList{m_kits, m_qts, m_list}) {
            control->setGeometry(20, top, 60, 24);
            top += 60;
        }
        m_list->addItem(QString());
        Page::RetranslateUi();
    }

    void RetranslateUi() override
    {
        const QString tip = QCoreApplication::translate("Page", "A tip that is longer than that");
        m_kits->setToolTip(tip);
        m_qts->setToolTip(tip);
        m_list->setItemText(0, tip);
    }

    KdToolButton* const m_kits;
    QPushButton* const m_qts;
    KdComboBox* const m_list;
};

QString shownTip()
{
    QString text = QToolTip::isVisible() ? QToolTip::text() : QString();
    return text.remove(QStringLiteral("<qt>")).remove(QStringLiteral("</qt>"));
}

} // namespace

class tst_KdToolTipRefresh : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void openTipFollowsTheLanguage_data();
    void openTipFollowsTheLanguage();
    void tipThatHasGoneStaysAway();

private:
    /** Rests the pointer on a control. */
    void rest(QWidget* control);

    std::unique_ptr<Page> m_page;
};

void tst_KdToolTipRefresh::init()
{
    KdTestCase::init();
    m_page = std::make_unique<Page>();
    m_page->setGeometry(300, 300, 200, 240);
    m_page->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_page.get()));
}

void tst_KdToolTipRefresh::cleanup()
{
    QToolTip::hideText();
    m_page.reset();
    KdTestCase::cleanup();
}

void tst_KdToolTipRefresh::rest(QWidget* control)
{
    const QPoint middle = control->rect().center();
    // The window may still be moved; and events of the way there would take the tip away again.
    const auto isThere = [control, middle] {
        QCursor::setPos(control->mapToGlobal(middle));
        return control->underMouse();
    };
    QTRY_VERIFY(isThere());
    QHelpEvent event(QEvent::ToolTip, middle, control->mapToGlobal(middle));
    QApplication::sendEvent(control, &event);
}

void tst_KdToolTipRefresh::openTipFollowsTheLanguage_data()
{
    QTest::addColumn<int>("control");

    QTest::newRow("of the kit") << 0;
    QTest::newRow("of Qt") << 1;
    QTest::newRow("made when it is asked for") << 2;
}

void tst_KdToolTipRefresh::openTipFollowsTheLanguage()
{
    QFETCH(int, control);
    rest(QWidgetList{m_page->m_kits, m_page->m_qts, m_page->m_list}.at(control));
    const QString plain = QStringLiteral("A tip that is longer than that");
    QTRY_COMPARE(shownTip(), plain);
    {
        const WidgetLooks::Brackets brackets;
        QTRY_COMPARE(shownTip(), QLatin1Char('[') + plain + QLatin1Char(']'));
    }
    QTRY_COMPARE(shownTip(), plain);
}

void tst_KdToolTipRefresh::tipThatHasGoneStaysAway()
{
    rest(m_page->m_kits);
    QTRY_VERIFY(QToolTip::isVisible());
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
    const WidgetLooks::Brackets brackets;
    QTRY_VERIFY(m_page->m_kits->toolTip().startsWith(QLatin1Char('[')));
    QCoreApplication::processEvents();
    QVERIFY(!QToolTip::isVisible());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdToolTipRefresh>(argc, argv);
}

#include "tst_KdToolTipRefresh.moc"
