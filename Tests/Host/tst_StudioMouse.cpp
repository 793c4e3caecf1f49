#include "Support/KdTestCase.h"

#include <Studio/StudioMouse.h>

#include <QDialog>
#include <QPushButton>
#include <QSignalSpy>

class tst_StudioMouse : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void clickPressesAControl();
    void clickTogglesACheckableControl();
    void hiddenDisabledAndCoveredControlsAreNamed();
    void controlBehindAModalMessageIsOutOfReach();
    void controlThatDeletesItselfIsSafe();
};

void tst_StudioMouse::clickPressesAControl()
{
    QPushButton button;
    QSignalSpy clicked(&button, &QPushButton::clicked);
    button.show();
    QCOMPARE(StudioMouse::obstacle(&button), QString());
    StudioMouse::click(&button);
    QCOMPARE(clicked.count(), 1);
    QVERIFY(!button.isDown());
}

void tst_StudioMouse::clickTogglesACheckableControl()
{
    QWidget window;
    auto* const button = new QPushButton(&window);
    button->setCheckable(true);
    window.show();
    StudioMouse::click(button);
    QVERIFY(button->isChecked());
    StudioMouse::click(button);
    QVERIFY(!button->isChecked());
}

void tst_StudioMouse::hiddenDisabledAndCoveredControlsAreNamed()
{
    QWidget window;
    window.resize(200, 100);
    auto* const button = new QPushButton(&window);
    button->setObjectName(QStringLiteral("Start"));
    button->setGeometry(10, 10, 80, 30);
    QVERIFY(StudioMouse::obstacle(button).contains(QStringLiteral("Start is hidden")));
    window.show();
    QCOMPARE(StudioMouse::obstacle(button), QString());
    button->setEnabled(false);
    QVERIFY(StudioMouse::obstacle(button).contains(QStringLiteral("Start is disabled")));
    button->setEnabled(true);
    QWidget cover(&window);
    cover.setGeometry(0, 0, 100, 50);
    cover.show();
    QVERIFY(StudioMouse::obstacle(button).contains(QStringLiteral("Start is behind another one")));
}

void tst_StudioMouse::controlBehindAModalMessageIsOutOfReach()
{
    QPushButton button;
    button.show();
    QDialog message;
    message.setModal(true);
    auto* const answer = new QPushButton(&message);
    message.show();
    QVERIFY(StudioMouse::obstacle(&button).contains(QStringLiteral("must be answered first")));
    QCOMPARE(StudioMouse::obstacle(answer), QString());
    message.hide();
    QCOMPARE(StudioMouse::obstacle(&button), QString());
}

void tst_StudioMouse::controlThatDeletesItselfIsSafe()
{
    auto* const button = new QPushButton;
    connect(button, &QPushButton::pressed, button, [button] { button->deleteLater(); });
    button->show();
    StudioMouse::click(button);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioMouse>(argc, argv);
}

#include "tst_StudioMouse.moc"
