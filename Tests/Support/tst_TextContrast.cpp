#include "TextContrast.h"

#include <Support/KdTestCase.h>

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>

namespace {

/** Paints a text in a colour. */
class Painted : public QWidget
{
public:
    using QWidget::QWidget;
    QColor color = Qt::black;

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        painter.setPen(color);
        painter.drawText(rect(), Qt::AlignCenter, QStringLiteral("Readable?"));
    }
};

} // namespace

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
    void readsWhatAWidgetPaintsItself();
    void readsEachRowAndPlaceholder();
    void leavesOutWhatIsScrolledAwayOrCovered();
    void findsWhatIsFaintUnderTheMouseAlone();
    void findsFaintRowsUnderTheMouse();
    void findsFaintTips();

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

void tst_TextContrast::readsWhatAWidgetPaintsItself()
{
    auto* const painted = new Painted(m_window.get());
    painted->setGeometry(10, 10, 200, 30);
    show();
    QCOMPARE(KdTest::faintTexts(*m_window, 4.5), QStringList());
    painted->color = QColor(0x7f, 0x7f, 0x7f);
    const QStringList found = KdTest::faintTexts(*m_window, 4.5);
    QCOMPARE(found.size(), 1);
    QVERIFY2(found.first().contains(QLatin1String("Readable?")), qPrintable(found.first()));
}

void tst_TextContrast::readsEachRowAndPlaceholder()
{
    auto* const list = new QListWidget(m_window.get());
    list->setGeometry(10, 10, 200, 60);
    list->addItems({QStringLiteral("first"), QStringLiteral("second")});
    list->item(1)->setForeground(QColor(0x9f, 0x9f, 0x9f));
    auto* const edit = new QLineEdit(m_window.get());
    edit->setGeometry(10, 80, 200, 24);
    edit->setPlaceholderText(QStringLiteral("hint"));
    edit->setStyleSheet(QStringLiteral("color: #aaaaaa"));
    show();
    const QStringList found = KdTest::faintTexts(*m_window, 4.5);
    QCOMPARE(found.size(), 2);
    QVERIFY2(found.first().contains(QLatin1String("second")), qPrintable(found.first()));
    QVERIFY2(found.last().contains(QLatin1String("hint")), qPrintable(found.last()));
}

void tst_TextContrast::leavesOutWhatIsScrolledAwayOrCovered()
{
    auto* const list = new QListWidget(m_window.get());
    list->setGeometry(10, 10, 200, 40);
    for (int row = 0; row < 20; ++row) {
        list->addItem(QStringLiteral("row"));
    }
    list->item(19)->setForeground(Qt::lightGray);
    auto* const label = new QLabel(QStringLiteral("Covered"), m_window.get());
    label->setGeometry(10, 60, 200, 30);
    label->setStyleSheet(QStringLiteral("color: #eeeeee"));
    auto* const cover = new QLabel(m_window.get());
    cover->setGeometry(label->geometry());
    show();
    QCOMPARE(KdTest::faintTexts(*m_window, 4.5), QStringList());
    cover->hide();
    QCOMPARE(KdTest::faintTexts(*m_window, 4.5).size(), 1);
}

void tst_TextContrast::findsWhatIsFaintUnderTheMouseAlone()
{
    auto* const button = new QPushButton(QStringLiteral("Readable?"), m_window.get());
    button->setGeometry(10, 10, 200, 30);
    const QString sheet = QStringLiteral("QPushButton { color: #000000; border: none; } "
                                         "QPushButton:hover { background: %1; }");
    button->setStyleSheet(sheet.arg(QStringLiteral("#777777")));
    show();
    QCOMPARE(KdTest::faintUnderMouse(*m_window, 4.5, 3.0), QStringList());
    button->setStyleSheet(sheet.arg(QStringLiteral("#6f6f6f")));
    QCOMPARE(KdTest::faintTexts(*m_window, 4.5), QStringList());
    QCOMPARE(KdTest::faintUnderMouse(*m_window, 4.5, 3.0).size(), 1);
    QCOMPARE(KdTest::faintTexts(*m_window, 4.5), QStringList());
}

void tst_TextContrast::findsFaintRowsUnderTheMouse()
{
    auto* const list = new QListWidget(m_window.get());
    list->setGeometry(10, 10, 200, 60);
    list->addItems({QStringLiteral("first"), QStringLiteral("second")});
    list->setStyleSheet(QStringLiteral("QListWidget::item:hover { color: #9f9f9f; }"));
    show();
    QCOMPARE(KdTest::faintTexts(*m_window, 4.5), QStringList());
    QCOMPARE(KdTest::faintUnderMouse(*m_window, 4.5, 3.0).size(), 2);
}

void tst_TextContrast::findsFaintTips()
{
    auto* const button = new QPushButton(m_window.get());
    button->setGeometry(10, 10, 100, 30);
    button->setToolTip(QStringLiteral("<span style='color:#101010'>Readable?</span>"));
    m_window->setStyleSheet(m_window->styleSheet() +
                            QStringLiteral("QToolTip { background: #ffffff; color: #000000; }"));
    show();
    QCOMPARE(KdTest::faintTips(*m_window, 4.5), QStringList());
    button->setToolTip(QStringLiteral("<span style='color:#a0a0a0'>Readable?</span>"));
    QCOMPARE(KdTest::faintTips(*m_window, 4.5).size(), 1);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_TextContrast>(argc, argv);
}

#include "tst_TextContrast.moc"
