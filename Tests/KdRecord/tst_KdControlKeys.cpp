#include <KdRecord/KdControlKeys.h>

#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTextDocumentFragment>

#include <memory>

class tst_KdControlKeys : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void keyPressesAButton();
    void keyOpensAList();
    void keyGivesAFieldTheFocus();
    void disabledAndHiddenControlsAreLeftAlone();
    void tipNamesWhatItSaidAndTheKey();
    void tipOfItsOwnMeaningComesWithoutColon();

private:
    template <typename Widget>
    Widget* add(const QKeySequence& key)
    {
        auto* const control = new Widget(m_panel.get());
        control->setFocusPolicy(Qt::NoFocus);
        m_keys->add(control, key);
        return control;
    }
    void show();
    static QString tip(QWidget& widget)
    {
        return QTextDocumentFragment::fromHtml(WidgetLooks::toolTip(widget)).toPlainText();
    }

    std::unique_ptr<QWidget> m_panel;
    KdControlKeys* m_keys = nullptr;
};

void tst_KdControlKeys::init()
{
    KdTestCase::init();
    m_panel = std::make_unique<QWidget>();
    m_panel->resize(300, 100);
    m_keys = new KdControlKeys(m_panel.get());
}

void tst_KdControlKeys::cleanup()
{
    m_panel.reset();
    KdTestCase::cleanup();
}

void tst_KdControlKeys::show()
{
    m_panel->show();
    QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
}

void tst_KdControlKeys::keyPressesAButton()
{
    auto* const button = add<QPushButton>(QStringLiteral("Alt+O"));
    const QSignalSpy clicks(button, &QPushButton::clicked);
    show();
    QTest::keyClick(m_panel.get(), Qt::Key_O, Qt::AltModifier);
    QCOMPARE(clicks.count(), 1);
}

void tst_KdControlKeys::keyOpensAList()
{
    auto* const list = add<QComboBox>(QStringLiteral("Alt+V"));
    list->addItem(QStringLiteral("one"));
    show();
    QTest::keyClick(m_panel.get(), Qt::Key_V, Qt::AltModifier);
    QTRY_VERIFY(list->view()->isVisible());
    list->hidePopup();
}

void tst_KdControlKeys::keyGivesAFieldTheFocus()
{
    auto* const field = add<QSpinBox>(QStringLiteral("Alt+C"));
    field->setFocusPolicy(Qt::ClickFocus);
    show();
    QTest::keyClick(m_panel.get(), Qt::Key_C, Qt::AltModifier);
    QVERIFY(field->hasFocus());
    QTest::keyClicks(field, QStringLiteral("7"));
    QCOMPARE(field->value(), 7);
}

void tst_KdControlKeys::disabledAndHiddenControlsAreLeftAlone()
{
    auto* const disabled = add<QPushButton>(QStringLiteral("Alt+D"));
    disabled->setEnabled(false);
    auto* const hidden = add<QPushButton>(QStringLiteral("Alt+H"));
    hidden->hide();
    const QSignalSpy clicks(disabled, &QPushButton::clicked);
    const QSignalSpy hiddenClicks(hidden, &QPushButton::clicked);
    show();
    QTest::keyClick(m_panel.get(), Qt::Key_D, Qt::AltModifier);
    QTest::keyClick(m_panel.get(), Qt::Key_H, Qt::AltModifier);
    QCOMPARE(clicks.count() + hiddenClicks.count(), 0);
}

void tst_KdControlKeys::tipNamesWhatItSaidAndTheKey()
{
    auto* const list = add<QComboBox>(QStringLiteral("Alt+V"));
    show();
    list->setToolTip(QStringLiteral("Camera <1>"));
    QCOMPARE(tip(*list), QStringLiteral("Camera <1> (Alt+V)"));
    list->setToolTip(QStringLiteral("<qt>Camera &lt;1&gt;</qt>"));
    QCOMPARE(tip(*list), QStringLiteral("Camera <1> (Alt+V)"));
    QCOMPARE(list->toolTip(), QStringLiteral("<qt>Camera &lt;1&gt;</qt>"));
    QCOMPARE(list->accessibleDescription(), QStringLiteral("Alt+V"));
}

void tst_KdControlKeys::tipOfItsOwnMeaningComesWithoutColon()
{
    auto* const list = add<QComboBox>(QStringLiteral("Alt+R"));
    list->setAccessibleName(QStringLiteral("Resolution:"));
    auto* const button = add<QPushButton>(QStringLiteral("Alt+O"));
    button->setText(QStringLiteral("OK"));
    show();
    QCOMPARE(tip(*list), QStringLiteral("Resolution (Alt+R)"));
    list->setAccessibleName(QStringLiteral("\u5206\u8fa8\u7387\uff1a"));
    QCOMPARE(tip(*list), QStringLiteral("\u5206\u8fa8\u7387 (Alt+R)"));
    QCOMPARE(tip(*button), QStringLiteral("OK (Alt+O)"));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdControlKeys>(argc, argv);
}

#include "tst_KdControlKeys.moc"
