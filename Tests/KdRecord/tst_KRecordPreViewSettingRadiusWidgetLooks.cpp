#include "OptionStripFixture.h"

#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdSkinManager.h>

#include <Support/WidgetLooks.h>

using namespace KdVBLMODEL;
using KdSkin::KdSkinManager;

namespace {

const QString kLine = QStringLiteral("KInputLine");

} // namespace

/** How the strip looks, what it says, and how it works without a mouse. */
class tst_KRecordPreViewSettingRadiusWidgetLooks : public OptionStripFixture
{
    Q_OBJECT

private Q_SLOTS:
    void standsInItsOrderAndSize();
    void tipsAndNamesSayWhatAButtonDoes_data();
    void tipsAndNamesSayWhatAButtonDoes();
    void textsFollowTheLanguage();

    void everyButtonWorksFromTheKeyboard();
    void assistiveTechnologyIsToldWhatIsChecked();
    void everyStateLooksDifferent_data();
    void everyStateLooksDifferent();
    void standsOutFromAnyPicture_data();
    void standsOutFromAnyPicture();
};

void tst_KRecordPreViewSettingRadiusWidgetLooks::standsInItsOrderAndSize()
{
    QCOMPARE(m_strip->size(), QSize(193, 40));
    QVERIFY(m_strip->inherits("KdRoundRadiusWidget"));
    int left = 6;
    for (const QString& name : {kCircle, kSquare, kLine, kRemoval, kBlurred, kMirror}) {
        const auto* const part = m_strip->findChild<QWidget*>(name);
        QVERIFY(part);
        const QSize size = name == kLine ? QSize(1, 28) : QSize(28, 28);
        QCOMPARE(part->geometry(), QRect(QPoint(left, 6), size));
        left += size.width() + 8;
    }
    QCOMPARE(left - 8 + 6, 193);
    QVERIFY(m_strip->findChild<KdLabel*>(kLine));
}

void tst_KRecordPreViewSettingRadiusWidgetLooks::tipsAndNamesSayWhatAButtonDoes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("tip");

    QTest::newRow("square") << kSquare << QStringLiteral("Switch to Square");
    QTest::newRow("circle") << kCircle << QStringLiteral("Switch to Circle");
    QTest::newRow("blurred") << kBlurred << QStringLiteral("Blur Background");
    QTest::newRow("removal") << kRemoval << QStringLiteral("Remove Background");
    QTest::newRow("mirror") << kMirror << QStringLiteral("Flip");
}

void tst_KRecordPreViewSettingRadiusWidgetLooks::tipsAndNamesSayWhatAButtonDoes()
{
    QFETCH(QString, name);
    QFETCH(QString, tip);
    QCOMPARE(button(name)->toolTip(), tip);
    QCOMPARE(button(name)->accessibleName(), tip);
}

void tst_KRecordPreViewSettingRadiusWidgetLooks::textsFollowTheLanguage()
{
    const WidgetLooks::Brackets brackets;
    QTRY_COMPARE(button(kMirror)->toolTip(), QStringLiteral("[Flip]"));
    QCOMPARE(button(kCircle)->toolTip(), QStringLiteral("[Switch to Circle]"));
    QCOMPARE(button(kBlurred)->accessibleName(), QStringLiteral("[Blur Background]"));
}

void tst_KRecordPreViewSettingRadiusWidgetLooks::everyButtonWorksFromTheKeyboard()
{
    answer(true);
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QStringList reached;
    button(kCircle)->setFocus(Qt::TabFocusReason);
    for (int i = 0; i < 5; ++i) {
        reached.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(reached, QStringList({kCircle, kSquare, kRemoval, kBlurred, kMirror}));
    QCOMPARE(m_asked, QStringList({QStringLiteral("shape 0"), QStringLiteral("shape 1"),
                                   QStringLiteral("background 0"), QStringLiteral("background 1"),
                                   QStringLiteral("flip 1")}));
}

void tst_KRecordPreViewSettingRadiusWidgetLooks::assistiveTechnologyIsToldWhatIsChecked()
{
    make(fcrsCircle, fcbmBlur, false);
    answer(true);
    m_strip->useUserSettings();
    QCOMPARE(button(kCircle)->accessibleDescription(), QStringLiteral("Selected"));
    QCOMPARE(button(kBlurred)->accessibleDescription(), QStringLiteral("Selected"));
    QVERIFY(button(kSquare)->accessibleDescription().isEmpty());
    QVERIFY(button(kMirror)->accessibleDescription().isEmpty());
    click(kBlurred);
    QVERIFY(button(kBlurred)->accessibleDescription().isEmpty());
    const WidgetLooks::Brackets brackets;
    QTRY_COMPARE(button(kCircle)->accessibleDescription(), QStringLiteral("[Selected]"));
}

void tst_KRecordPreViewSettingRadiusWidgetLooks::everyStateLooksDifferent_data()
{
    QTest::addColumn<QString>("skin");
    QTest::addColumn<QString>("name");

    for (const char* skin : {"dark", "light"}) {
        for (const QString& name : {kCircle, kSquare, kRemoval, kBlurred, kMirror}) {
            QTest::addRow("%s %s", skin, qUtf8Printable(name)) << QString::fromLatin1(skin) << name;
        }
    }
}

void tst_KRecordPreViewSettingRadiusWidgetLooks::everyStateLooksDifferent()
{
    QFETCH(QString, skin);
    QFETCH(QString, name);
    QVERIFY(KdSkinManager::instance()->setSkin(skin));
    KdToolButton* const shown = button(name);
    QTest::mouseMove(m_window.get(), QPoint(2, 2));
    // The first button has the focus when the window is shown.
    button(kCircle)->clearFocus();
    QVector<QImage> looks;
    for (const bool isChecked : {false, true}) {
        KdSkinManager::setCheckState(shown, isChecked);
        looks.append(WidgetLooks::image(*shown));
        QTest::mouseMove(shown, QPoint(14, 13));
        QTest::mouseMove(shown, QPoint(14, 14));
        QTRY_VERIFY(shown->underMouse());
        looks.append(WidgetLooks::image(*shown));
        QTest::mouseMove(m_window.get(), QPoint(2, 2));
        QTRY_VERIFY(!shown->underMouse());
        shown->setDown(true);
        looks.append(WidgetLooks::image(*shown));
        shown->setDown(false);
        shown->setFocus();
        QTRY_VERIFY(shown->hasFocus());
        looks.append(WidgetLooks::image(*shown));
        shown->clearFocus();
        shown->setEnabled(false);
        looks.append(WidgetLooks::image(*shown));
        shown->setEnabled(true);
    }
    for (int i = 0; i < looks.size(); ++i) {
        for (int j = i + 1; j < looks.size(); ++j) {
            QVERIFY2(looks.at(i) != looks.at(j),
                     qPrintable(QStringLiteral("looks %1 and %2 are the same").arg(i).arg(j)));
        }
    }
}

void tst_KRecordPreViewSettingRadiusWidgetLooks::standsOutFromAnyPicture_data()
{
    QTest::addColumn<QString>("skin");
    QTest::addColumn<QColor>("picture");

    for (const char* skin : {"dark", "light"}) {
        for (const Qt::GlobalColor picture : {Qt::black, Qt::white, Qt::gray, Qt::blue}) {
            QTest::addRow("%s on %d", skin, picture)
                << QString::fromLatin1(skin) << QColor(picture);
        }
    }
}

/** Whatever lies below, the ground is the skin's own, and the line around it or the ground itself
 * is seen. */
void tst_KRecordPreViewSettingRadiusWidgetLooks::standsOutFromAnyPicture()
{
    QFETCH(QString, skin);
    QFETCH(QColor, picture);
    QVERIFY(KdSkinManager::instance()->setSkin(skin));
    QPalette palette;
    palette.setColor(QPalette::Window, picture);
    m_window->setPalette(palette);
    const QColor ground = KdSkinManager::instance()->color(KdSkin::Surface);
    const QColor line = KdSkinManager::instance()->color(KdSkin::Stroke);
    const QPoint middle(button(kSquare)->geometry().right() + 4, 20);
    QCOMPARE(WidgetLooks::colorAt(*m_strip, middle), ground);
    QCOMPARE(WidgetLooks::colorAt(*m_strip, {96, 0}), line);
    QCOMPARE(WidgetLooks::colorAt(*m_strip, {0, 0}), picture);
    QVERIFY(qMax(WidgetLooks::contrast(ground, picture), WidgetLooks::contrast(line, picture)) >
            1.5);
    const QColor icon = KdSkinManager::instance()->color(KdSkin::TextQuiet);
    QVERIFY(WidgetLooks::contrast(icon, ground) >= 4.5);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KRecordPreViewSettingRadiusWidgetLooks>(argc, argv);
}

#include "tst_KRecordPreViewSettingRadiusWidgetLooks.moc"
