#include "TextContrast.h"

#include <Support/KdTestCase.h>

#include <QLabel>
#include <QPushButton>
#include <QToolButton>

class tst_TextContrast : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void findsFaintTexts();
    void leavesOutInactiveControlsButNotLabels();
    void findsFaintIcons();
    void findsFocusThatIsNotSeen();

private:
    void show();

    std::unique_ptr<QWidget> m_window;
};

void tst_TextContrast::init()
{
    KdTestCase::init();
    m_window = std::make_unique<QWidget>();
    m_window->setStyleSheet(QStringLiteral("QWidget { background: #ffffff; }"));
    m_window->resize(300, 120);
}

void tst_TextContrast::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

void tst_TextContrast::show()
{
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void tst_TextContrast::findsFaintTexts()
{
    auto* const label = new QLabel(QStringLiteral("Readable?"), m_window.get());
    label->setGeometry(10, 10, 200, 30);
    label->setStyleSheet(QStringLiteral("color: #767676"));
    show();
    QCOMPARE(KdTest::faintTexts(*m_window, 4.5), QStringList());
    label->setStyleSheet(QStringLiteral("color: #7f7f7f"));
    QCOMPARE(KdTest::faintTexts(*m_window, 4.5).size(), 1);
}

void tst_TextContrast::leavesOutInactiveControlsButNotLabels()
{
    auto* const button = new QPushButton(QStringLiteral("Readable?"), m_window.get());
    button->setGeometry(10, 10, 200, 30);
    auto* const label = new QLabel(QStringLiteral("Readable?"), m_window.get());
    label->setGeometry(10, 50, 200, 30);
    for (QWidget* faint : QList<QWidget*>{button, label}) {
        faint->setStyleSheet(QStringLiteral("color: #cccccc; border: none"));
        faint->setEnabled(false);
    }
    show();
    const QStringList found = KdTest::faintTexts(*m_window, 4.5);
    QCOMPARE(found.size(), 1);
    QVERIFY(found.first().startsWith(QLatin1String("QLabel")));
}

void tst_TextContrast::findsFaintIcons()
{
    auto* const button = new QToolButton(m_window.get());
    button->setGeometry(10, 10, 32, 32);
    button->setStyleSheet(QStringLiteral("border: 4px solid #949494"));
    show();
    QCOMPARE(KdTest::faintIcons(*m_window, 3.0), QStringList());
    button->setStyleSheet(QStringLiteral("border: 4px solid #aaaaaa"));
    QCOMPARE(KdTest::faintIcons(*m_window, 3.0).size(), 1);
}

void tst_TextContrast::findsFocusThatIsNotSeen()
{
    auto* const button = new QPushButton(m_window.get());
    button->setGeometry(10, 10, 100, 30);
    const QString sheet =
        QStringLiteral("QPushButton { border: 2px solid #ffffff; outline: none; } "
                       "QPushButton:focus { border-color: %1; }");
    button->setStyleSheet(sheet.arg(QStringLiteral("#0000ff")));
    show();
    QCOMPARE(KdTest::faintFocus(*m_window, 3.0), QStringList());
    button->setStyleSheet(sheet.arg(QStringLiteral("#eeeeee")));
    QCOMPARE(KdTest::faintFocus(*m_window, 3.0).size(), 1);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_TextContrast>(argc, argv);
}

#include "tst_TextContrast.moc"
