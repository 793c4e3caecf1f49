#include "KeyboardWalk.h"

#include <Support/KdTestCase.h>

#include <QLineEdit>
#include <QPushButton>

class tst_KeyboardWalk : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void findsStepsThatGoBack();
    void findsWhatCannotBeReached();
    void findsControlsWithoutAName();

private:
    QPushButton* addButton(const QString& name, int x, int y);
    void show();

    std::unique_ptr<QWidget> m_window;
};

void tst_KeyboardWalk::init()
{
    KdTestCase::init();
    m_window = std::make_unique<QWidget>();
    m_window->resize(300, 200);
}

void tst_KeyboardWalk::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

QPushButton* tst_KeyboardWalk::addButton(const QString& name, int x, int y)
{
    auto* const button = new QPushButton(name, m_window.get());
    button->setObjectName(name);
    button->setGeometry(x, y, 80, 30);
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

void tst_KeyboardWalk::show()
{
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_KeyboardWalk::findsStepsThatGoBack()
{
    QPushButton* const first = addButton(QStringLiteral("first"), 10, 10);
    QPushButton* const second = addButton(QStringLiteral("second"), 110, 10);
    QPushButton* const third = addButton(QStringLiteral("third"), 10, 60);
    show();
    const QList<QWidget*> reading{first, second, third};
    QCOMPARE(KdTest::stepsBack(reading, *m_window), QStringList());
    QCOMPARE(KdTest::stepsBack({second, first, third}, *m_window).size(), 1);
    QCOMPARE(KdTest::stepsBack({first, third, second}, *m_window).size(), 0);
    QCOMPARE(KdTest::stepsBack({third, first, second}, *m_window).size(), 1);
    QCOMPARE(KdTest::tabOrder(*m_window).size(), 3);
}

void tst_KeyboardWalk::findsWhatCannotBeReached()
{
    addButton(QStringLiteral("first"), 10, 10);
    QPushButton* const mouseOnly = addButton(QStringLiteral("second"), 110, 10);
    mouseOnly->setFocusPolicy(Qt::NoFocus);
    show();
    QCOMPARE(KdTest::outOfReach(*m_window), QStringList(QStringLiteral("QPushButton second")));
    mouseOnly->setToolTip(QStringLiteral("Second (Alt+S)"));
    QCOMPARE(KdTest::outOfReach(*m_window), QStringList());
}

void tst_KeyboardWalk::findsControlsWithoutAName()
{
    auto* const edit = new QLineEdit(m_window.get());
    auto* const vague = new QWidget(m_window.get());
    vague->setFocusPolicy(Qt::StrongFocus);
    vague->setAccessibleName(QStringLiteral("named"));
    show();
    QCOMPARE(KdTest::withoutNameOrRole(*m_window).size(), 2);
    edit->setAccessibleName(QStringLiteral("named"));
    QCOMPARE(KdTest::withoutNameOrRole(*m_window).size(), 1);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KeyboardWalk>(argc, argv);
}

#include "tst_KeyboardWalk.moc"
