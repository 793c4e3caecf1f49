#include "ShownTexts.h"

#include <Support/KdTestCase.h>

#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QTabWidget>

class tst_ShownTexts : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void findsWhatCanBeReadOrHeard();
    void leavesOutWhatIsEmpty();
    void findsWhatIsOnlyPainted();
};

void tst_ShownTexts::findsWhatCanBeReadOrHeard()
{
    QWidget window;
    window.setWindowTitle(QStringLiteral("a title"));
    auto* const group = new QGroupBox(QStringLiteral("a group"), &window);
    auto* const edit = new QLineEdit(group);
    edit->setPlaceholderText(QStringLiteral("a placeholder"));
    edit->setToolTip(QStringLiteral("a tip"));
    edit->setAccessibleName(QStringLiteral("a name"));
    auto* const choice = new QComboBox(group);
    choice->addItems({QStringLiteral("a choice"), QStringLiteral("another")});
    auto* const tabs = new QTabWidget(&window);
    tabs->addTab(new QWidget, QStringLiteral("a tab"));
    tabs->hide();
    window.addAction(new QAction(QStringLiteral("an action"), &window));

    QStringList found;
    const QVector<KdTest::ShownText> texts = KdTest::shownTexts(window);
    for (const KdTest::ShownText& text : texts) {
        found.append(text.text);
    }
    for (const char* wanted : {"a title", "a group", "a placeholder", "a tip", "a name", "a choice",
                               "another", "a tab", "an action"}) {
        QVERIFY2(found.contains(QLatin1String(wanted)), wanted);
    }
}

void tst_ShownTexts::leavesOutWhatIsEmpty()
{
    const QWidget window;
    QVERIFY(KdTest::shownTexts(window).isEmpty());
}

void tst_ShownTexts::findsWhatIsOnlyPainted()
{
    struct Painted : QWidget
    {
        using QWidget::QWidget;
        void paintEvent(QPaintEvent* /*event*/) override
        {
            QPainter(this).drawText(rect(), QStringLiteral("only painted"));
        }
    };
    QWidget window;
    window.resize(300, 200);
    (new Painted(&window))->resize(300, 100);
    auto* const label = new QLabel(QStringLiteral("told & painted"), &window);
    label->setGeometry(0, 100, 300, 100);
    window.show();
    QStringList painted;
    const QVector<KdTest::ShownText> texts = KdTest::readableTexts(window);
    for (const KdTest::ShownText& text : texts) {
        if (text.where.endsWith(QLatin1String("paints"))) {
            painted.append(text.text);
        }
    }
    QCOMPARE(painted, QStringList{QStringLiteral("only painted")});
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_ShownTexts>(argc, argv);
}

#include "tst_ShownTexts.moc"
