#include "DialogDriver.h"
#include "KdTestCase.h"

#include <QCheckBox>
#include <QDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <QVBoxLayout>

using namespace DialogDriver;

namespace {

/** A window with a button, a wide check box and a disabled button. */
class Window : public QWidget
{
public:
    Window()
    {
        setObjectName(QStringLiteral("Window"));
        button.setObjectName(QStringLiteral("Window_Button"));
        check.setObjectName(QStringLiteral("Window_Check"));
        check.setText(QStringLiteral("x"));
        disabled.setObjectName(QStringLiteral("Window_Disabled"));
        disabled.setEnabled(false);
        auto* column = new QVBoxLayout(this);
        column->addWidget(&button);
        column->addWidget(&check);
        column->addWidget(&disabled);
        resize(400, 200);
    }

    QPushButton button;
    QCheckBox check;
    QPushButton disabled;
};

} // namespace

class tst_DialogDriver : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void findsAChildByItsName()
    {
        const Window window;
        QCOMPARE(child<QPushButton>(window, QStringLiteral("Window_Button")), &window.button);
        QCOMPARE(child(window, QStringLiteral("Window")), &window);
    }

    void saysWhichChildrenThereAre()
    {
        const Window window;
        QCOMPARE(whyNoChild(window, QStringLiteral("Window_Check")), QString());
        QCOMPARE(whyNoChild(window, QStringLiteral("Missing")),
                 QStringLiteral("QWidget Window has no child QWidget Missing. It has: "
                                "QCheckBox Window_Check, QPushButton Window_Button, "
                                "QPushButton Window_Disabled"));
        QVERIFY(whyNoChild(window, QStringLiteral("Window_Check"), "QPushButton")
                    .contains(QStringLiteral("no child QPushButton Window_Check")));
        const QWidget empty;
        QCOMPARE(whyNoChild(empty, QStringLiteral("x")),
                 QStringLiteral("QWidget has no child QWidget x. It has: none with a name"));
    }

    void clicksThroughTheWindow()
    {
        Window window;
        window.show();
        const QSignalSpy clicks(&window.button, &QPushButton::clicked);
        click(window, QStringLiteral("Window_Button"));
        click(window.button);
        QCOMPARE(clicks.size(), 2);
    }

    void hitsTheMarkOfAWideCheckBox()
    {
        Window window;
        window.show();
        click(window.check);
        QVERIFY(window.check.isChecked());
    }

    void saysWhatIsInTheWayOfAClick()
    {
        Window window;
        QVERIFY(whyNotClickable(window.button).endsWith(QStringLiteral("Window_Button is hidden")));
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(whyNotClickable(window.button), QString());
        QVERIFY(whyNotClickable(window.disabled).endsWith(QStringLiteral("is disabled")));
        QWidget cover(&window);
        cover.setObjectName(QStringLiteral("Cover"));
        cover.setGeometry(window.rect());
        cover.show();
        QVERIFY(
            whyNotClickable(window.button).endsWith(QStringLiteral("is covered by QWidget Cover")));
        cover.setAttribute(Qt::WA_TransparentForMouseEvents);
        QCOMPARE(whyNotClickable(window.button), QString());
        cover.hide();
        window.button.move(window.width() + 10, 0);
        QVERIFY(whyNotClickable(window.button).contains(QStringLiteral("outside its window")));
    }

    void aModalDialogIsInTheWayOfEverythingButItself()
    {
        Window window;
        window.show();
        QDialog dialog(&window);
        dialog.setObjectName(QStringLiteral("Modal"));
        QPushButton inside(&dialog);
        dialog.open();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QVERIFY(whyNotClickable(window.button).endsWith(QStringLiteral("modal QDialog Modal")));
        QCOMPARE(whyNotClickable(inside), QString());
    }

    void waitsForAConditionInTheEventLoop()
    {
        bool isDone = false;
        QTimer::singleShot(20, this, [&isDone] { isDone = true; });
        QVERIFY(waitUntil([&isDone] { return isDone; }, QStringLiteral("the timer")));
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_DialogDriver>(argc, argv);
}

#include "tst_DialogDriver.moc"
