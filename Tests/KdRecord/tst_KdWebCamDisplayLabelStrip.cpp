#include "DisplayLabelFixture.h"

#include <KdRecord/KRecordPreViewSettingRadiusWidget.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdToolButton.h>

#include <QBoxLayout>
#include <QEvent>
#include <QPushButton>
#include <QSignalSpy>

using namespace KdVBLMODEL;

namespace {

/** A label between two buttons, and the mouse elsewhere. */
struct Chain
{
    Chain()
    {
        window.setGeometry(100, 100, 400, 400);
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(before);
        layout->addWidget(label);
        layout->addWidget(after);
        window.show();
        QTest::mouseMove(before, QPoint(2, 2));
    }

    /** @return the object name of the widget that then has the focus. */
    static QString press(Qt::Key key)
    {
        QTest::keyClick(QApplication::focusWidget(), key,
                        key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        return QApplication::focusWidget()->objectName();
    }

    static QWidget* named(QWidget* widget, const char* name)
    {
        widget->setObjectName(QLatin1String(name));
        return widget;
    }

    QWidget window;
    QWidget* before = named(new QPushButton, "before");
    Surface* label = static_cast<Surface*>(named(new Surface, "label"));
    QWidget* after = named(new QPushButton, "after");
};

} // namespace

/** The strip of options over the label: when it shows, how it is reached, what it says. */
class tst_KdWebCamDisplayLabelStrip : public DisplayLabelFixture
{
    Q_OBJECT

private Q_SLOTS:
    void carriesTheStripAtItsLowerEdge();
    void stripShowsWhileTheMouseIsOverIt();
    void stripDoesNotAppearWhileRecording();
    void stripGoesWhenATakeBegins();
    void theTabKeyBringsTheStripUpAndLeadsIntoIt();
    void theTabKeyPassesByWhileRecording();
    void aWindowThatComesUpDoesNotBringTheStrip();
    void aStripThatGoesLeavesTheFocusBehind();
    void enteringAndLeavingAreReported();
    void setShapeShowsOnTheStripWithoutAsking();
    void flipAndBackgroundLeaveTheStripAlone();
    void callbacksReachTheStrip();
    void userSettingsArePushed();

private:
    QVariant checkState(const char* name) const;
};

void tst_KdWebCamDisplayLabelStrip::carriesTheStripAtItsLowerEdge()
{
    QVERIFY(m_label->testAttribute(Qt::WA_TranslucentBackground));
    QVERIFY(strip()->isHidden());
    strip()->show();
    show();
    QCOMPARE(strip()->geometry(), QRect((400 - 193) / 2, 300 - 8 - 40, 193, 40));
}

void tst_KdWebCamDisplayLabelStrip::stripShowsWhileTheMouseIsOverIt()
{
    show();
    QEvent enter(QEvent::Enter);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(m_label.get(), &enter);
    QVERIFY(strip()->isVisible());
    QCoreApplication::sendEvent(m_label.get(), &leave);
    QVERIFY(!strip()->isVisible());
}

void tst_KdWebCamDisplayLabelStrip::stripDoesNotAppearWhileRecording()
{
    show();
    m_label->setRecording(true);
    QEvent enter(QEvent::Enter);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(m_label.get(), &enter);
    QVERIFY(!strip()->isVisible());
    QCoreApplication::sendEvent(m_label.get(), &leave);
    m_label->setRecording(false);
    QVERIFY(!strip()->isVisible());
    QCoreApplication::sendEvent(m_label.get(), &enter);
    QVERIFY(strip()->isVisible());
}

/** With the mouse over the label all the time, as when the take is started by its shortcut. */
void tst_KdWebCamDisplayLabelStrip::stripGoesWhenATakeBegins()
{
    m_label->move(200, 200);
    show();
    QTest::mouseMove(m_label.get(), QPoint(5, 5));
    QTest::mouseMove(m_label.get(), QPoint(60, 60));
    QTRY_VERIFY(strip()->isVisible());
    m_label->setRecording(true);
    QVERIFY(!strip()->isVisible());
    m_label->setRecording(false);
    QVERIFY(strip()->isVisible());
}

void tst_KdWebCamDisplayLabelStrip::theTabKeyBringsTheStripUpAndLeadsIntoIt()
{
    Chain chain;
    QVERIFY(QTest::qWaitForWindowActive(&chain.window));
    chain.before->setFocus();
    QCOMPARE(chain.press(Qt::Key_Tab), QStringLiteral("label"));
    QVERIFY(chain.label->optionStrip()->isVisible());
    const QColor accent = KdSkin::KdSkinManager::instance()->color(KdSkin::Accent);
    QCOMPARE(WidgetLooks::colorAt(*chain.label, {0, 60}), accent);
    QStringList reached;
    for (int i = 0; i < 5; ++i) {
        reached.append(chain.press(Qt::Key_Tab));
        QVERIFY(chain.label->optionStrip()->isVisible());
    }
    QCOMPARE(reached.constFirst(), QStringLiteral("KRecorder_Circle_RoundBtn"));
    QCOMPARE(reached.constLast(), QStringLiteral("KRecorder_Mirror_RoundBtn"));
    QCOMPARE(WidgetLooks::colorAt(*chain.label, {0, 60}), QColor(Qt::black));
    QCOMPARE(chain.press(Qt::Key_Tab), QStringLiteral("after"));
    QVERIFY(!chain.label->optionStrip()->isVisible());
    QCOMPARE(chain.press(Qt::Key_Backtab), QStringLiteral("label"));
    QVERIFY(chain.label->optionStrip()->isVisible());
    QCOMPARE(chain.press(Qt::Key_Backtab), QStringLiteral("before"));
    QVERIFY(!chain.label->optionStrip()->isVisible());
}

void tst_KdWebCamDisplayLabelStrip::theTabKeyPassesByWhileRecording()
{
    Chain chain;
    QVERIFY(QTest::qWaitForWindowActive(&chain.window));
    chain.before->setFocus();
    chain.label->setRecording(true);
    QCOMPARE(chain.press(Qt::Key_Tab), QStringLiteral("after"));
    QVERIFY(!chain.label->optionStrip()->isVisible());
    chain.label->setRecording(false);
    QCOMPARE(chain.press(Qt::Key_Backtab), QStringLiteral("label"));
}

void tst_KdWebCamDisplayLabelStrip::aWindowThatComesUpDoesNotBringTheStrip()
{
    m_label->move(300, 300);
    QTest::mouseMove(m_label.get(), QPoint(-200, -200));
    show();
    QVERIFY(QTest::qWaitForWindowActive(m_label.get()));
    QTRY_VERIFY(m_label->hasFocus());
    QVERIFY(!strip()->isVisible());
}

void tst_KdWebCamDisplayLabelStrip::aStripThatGoesLeavesTheFocusBehind()
{
    Chain chain;
    QVERIFY(QTest::qWaitForWindowActive(&chain.window));
    chain.before->setFocus();
    chain.press(Qt::Key_Tab);
    QCOMPARE(chain.press(Qt::Key_Tab), QStringLiteral("KRecorder_Circle_RoundBtn"));
    chain.label->setRecording(true);
    QVERIFY(!chain.label->optionStrip()->isVisible());
    QVERIFY(chain.label->hasFocus());
    QCOMPARE(chain.press(Qt::Key_Tab), QStringLiteral("after"));
}

void tst_KdWebCamDisplayLabelStrip::enteringAndLeavingAreReported()
{
    QSignalSpy entered(m_label.get(), &KdWebCamDisplayLabel::sigEnter);
    QSignalSpy left(m_label.get(), &KdWebCamDisplayLabel::sigLeave);
    QEvent enter(QEvent::Enter);
    QEvent leave(QEvent::Leave);
    for (const bool isRecording : {false, true}) {
        m_label->setRecording(isRecording);
        QCoreApplication::sendEvent(m_label.get(), &enter);
        QCoreApplication::sendEvent(m_label.get(), &leave);
    }
    QCOMPARE(entered.count(), 2);
    QCOMPARE(left.count(), 2);
}

void tst_KdWebCamDisplayLabelStrip::setShapeShowsOnTheStripWithoutAsking()
{
    int asked = 0;
    m_label->setActionHandleForShapeChange([&asked](_KdCaptureRecordShape) { return ++asked > 0; });
    m_label->setShape(fcrsCircle);
    QCOMPARE(m_label->shape(), fcrsCircle);
    QCOMPARE(checkState("KRecorder_Circle_RoundBtn").toString(), QStringLiteral("checked"));
    QCOMPARE(checkState("KRecorder_Square_RoundBtn").toString(), QStringLiteral("unchecked"));
    QCOMPARE(asked, 0);
}

void tst_KdWebCamDisplayLabelStrip::flipAndBackgroundLeaveTheStripAlone()
{
    m_label->setFlipped(true);
    m_label->setBackgroundMode(fcbmBlur);
    QCOMPARE(m_label->backgroundMode(), fcbmBlur);
    QVERIFY(!checkState("KRecorder_Mirror_RoundBtn").isValid());
    QVERIFY(!checkState("KRecorder_Blurred_RoundBtn").isValid());
}

void tst_KdWebCamDisplayLabelStrip::callbacksReachTheStrip()
{
    QStringList asked;
    m_label->setActionHandleForShapeChange([&](_KdCaptureRecordShape shape) {
        asked.append(QStringLiteral("shape %1").arg(shape));
        m_label->setShape(shape);
        return true;
    });
    m_label->setActionHandleForBackgroundChange([&](_KdCaptureRecordBackgroundMode mode) {
        asked.append(QStringLiteral("background %1").arg(mode));
        m_label->setBackgroundMode(mode);
        return true;
    });
    m_label->setActionHandleForFlipChange([&](bool flip) {
        asked.append(QStringLiteral("flip %1").arg(flip));
        m_label->setFlipped(flip);
        return true;
    });
    show();
    QEvent enter(QEvent::Enter);
    QCoreApplication::sendEvent(m_label.get(), &enter);
    for (const char* name :
         {"KRecorder_Circle_RoundBtn", "KRecorder_Removal_RoundBtn", "KRecorder_Mirror_RoundBtn"}) {
        QTest::mouseClick(strip()->findChild<KdToolButton*>(QLatin1String(name)), Qt::LeftButton);
    }
    QCOMPARE(asked, QStringList({QStringLiteral("shape 0"), QStringLiteral("background 0"),
                                 QStringLiteral("flip 1")}));
    QCOMPARE(m_label->shape(), fcrsCircle);
    QCOMPARE(m_label->backgroundMode(), fcbmRemove);
    QVERIFY(m_label->isFlipped());
}

void tst_KdWebCamDisplayLabelStrip::userSettingsArePushed()
{
    int asked = 0;
    const auto count = [&asked](auto) { return ++asked > 0; };
    m_label->setActionHandleForShapeChange(count);
    m_label->setActionHandleForBackgroundChange(count);
    m_label->setActionHandleForFlipChange(count);
    m_label->useUserSettings();
    QCOMPARE(asked, 3);
    QCOMPARE(checkState("KRecorder_Square_RoundBtn").toString(), QStringLiteral("checked"));
    QCOMPARE(checkState("KRecorder_Mirror_RoundBtn").toString(), QStringLiteral("unchecked"));
}

QVariant tst_KdWebCamDisplayLabelStrip::checkState(const char* name) const
{
    return strip()->findChild<QWidget*>(QLatin1String(name))->property("checkState");
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebCamDisplayLabelStrip>(argc, argv);
}

#include "tst_KdWebCamDisplayLabelStrip.moc"
