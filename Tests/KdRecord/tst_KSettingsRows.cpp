#include <KdRecord/KSettingsRows.h>
#include <KdWidgets/KdLabel.h>

#include <Support/KdTestCase.h>

#include <QSignalSpy>

namespace {

/** A page with one row of two items. */
class Page : public QWidget
{
    Q_OBJECT

public:
    Page()
    {
        KSettingsRows rows(this);
        title = rows.addTitle();
        row = rows.addRow(QStringLiteral("Page_Row"));
        extra = new QWidget(this);
        rows.add(extra, 26);
        KSettingsRows::setItem(row, 0, QStringLiteral("one"), 1);
        KSettingsRows::setItem(row, 1, QStringLiteral("two"), 2);
        KSettingsRows::reportPopup(row, this, QStringLiteral("the_row"));
        KSettingsRows::reportChange(row, this);
    }

    KdLabel* title = nullptr;
    KComboboxExt* row = nullptr;
    QWidget* extra = nullptr;

Q_SIGNALS:
    void sigParaChange();
    void sigBtnClick(QString strName);
};

} // namespace

class tst_KSettingsRows : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void standsBelowEachOtherWithGaps()
    {
        Page page;
        page.resize(300, page.sizeHint().height());
        page.show();
        QCOMPARE(page.title->geometry(), QRect(0, 0, 300, 16));
        QVERIFY(page.title->font().bold());
        QCOMPARE(page.row->geometry(), QRect(0, 32, 300, 52));
        QCOMPARE(page.row->objectName(), QStringLiteral("Page_Row"));
        QCOMPARE(page.extra->geometry(), QRect(0, 100, 300, 26));
        QCOMPARE(page.height(), 126);
    }

    void gapsGiveWayAndRowsDoNot()
    {
        Page page;
        page.resize(300, 110);
        page.show();
        QCOMPARE(page.row->height(), 52);
        QCOMPARE(page.row->y(), 24);
        QCOMPARE(page.extra->geometry(), QRect(0, 84, 300, 26));
    }

    void anItemThatIsThereGetsAnotherTextOnly()
    {
        Page page;
        page.row->combobox()->setCurrentIndex(1);
        KSettingsRows::setItem(page.row, 1, QStringLiteral("zwei"), 99);
        QCOMPARE(page.row->combobox()->count(), 2);
        QCOMPARE(page.row->combobox()->currentText(), QStringLiteral("zwei"));
        QCOMPARE(page.row->combobox()->currentData().toInt(), 2);
    }

    void selectsTheFirstItemWithTheDataIfAny()
    {
        Page page;
        KSettingsRows::setItem(page.row, 2, QStringLiteral("two again"), 2);
        KSettingsRows::select(page.row, 2);
        QCOMPARE(page.row->combobox()->currentIndex(), 1);
        KSettingsRows::select(page.row, 3);
        QCOMPARE(page.row->combobox()->currentIndex(), 1);
        KSettingsRows::select(page.row, QVariant());
        QCOMPARE(page.row->combobox()->currentIndex(), 1);
    }

    void reportsChangesAndPopups()
    {
        Page page;
        page.show();
        const QSignalSpy changes(&page, &Page::sigParaChange);
        const QSignalSpy clicks(&page, &Page::sigBtnClick);
        KSettingsRows::select(page.row, 2);
        QCOMPARE(changes.size(), 1);
        page.row->combobox()->showPopup();
        page.row->combobox()->hidePopup();
        QCOMPARE(clicks.size(), 1);
        QCOMPARE(clicks.first().first().toString(), QStringLiteral("the_row"));
        QCOMPARE(changes.size(), 1);
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_KSettingsRows>(argc, argv);
}

#include "tst_KSettingsRows.moc"
