#include "PreviewShots.h"

#include "WebcamScene.h"

#include <KdRecord/KRecordPreViewSettingRadiusWidget.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdWidgets/KdSkinManager.h>

#include <QBoxLayout>
#include <QEvent>
#include <QTest>
#include <QToolButton>

using namespace KdVBLMODEL;

namespace {

/** A preview on a window of its own, with the strip in sight. */
class Preview
{
public:
    Preview()
    {
        m_window.setGeometry(40, 40, 460, 300);
        auto* const layout = new QVBoxLayout(&m_window);
        m_label = new KdWebCamDisplayLabel(&m_window);
        layout->addWidget(m_label);
        m_label->setActionHandleForShapeChange([this](_KdCaptureRecordShape shape) {
            m_label->setShape(shape);
            return true;
        });
        m_label->setActionHandleForBackgroundChange(
            [](_KdCaptureRecordBackgroundMode) { return true; });
        m_label->setActionHandleForFlipChange([this](bool isFlipped) {
            m_label->setFlipped(isFlipped);
            return true;
        });
        m_label->useUserSettings();
        m_label->startRender();
        m_window.setAttribute(Qt::WA_StyledBackground);
        m_window.show();
        Shot::waitFor([this] { return m_label->isVisible(); }, "the preview");
    }

    QWidget* window() { return &m_window; }

    void bring(const QImage& frame)
    {
        m_label->WebcamFrameChanged(frame.width(), frame.height(),
                                    const_cast<uchar*>(frame.constBits()));
    }

    void enter()
    {
        QEvent event(QEvent::Enter);
        QCoreApplication::sendEvent(m_label, &event);
    }

    void press(const char* button)
    {
        QTest::mouseClick(m_label->findChild<QWidget*>(QLatin1String(button)), Qt::LeftButton);
    }

private:
    QWidget m_window;
    KdWebCamDisplayLabel* m_label = nullptr;
};

/** The strip as it is at first, with choices, with the focus, pressed and disabled. */
bool takeStripStates(const Shot& shot)
{
    QWidget window;
    window.setGeometry(40, 40, 240, 260);
    auto* const layout = new QVBoxLayout(&window);
    QVector<KRecordPreViewSettingRadiusWidget*> strips;
    for (int i = 0; i < 5; ++i) {
        auto* const strip = new KRecordPreViewSettingRadiusWidget(
            &window, i % 2 == 0 ? fcrsCircle : fcrsSquare,
            _KdCaptureRecordBackgroundMode(i % 3 - 1), i % 2 == 0);
        strip->setActionHandleForShapeChange([](_KdCaptureRecordShape) { return true; });
        strip->setActionHandleForBackgroundChange(
            [](_KdCaptureRecordBackgroundMode) { return true; });
        strip->setActionHandleForFlipChange([](bool) { return true; });
        if (i > 0) {
            strip->useUserSettings();
        }
        layout->addWidget(strip, 0, Qt::AlignCenter);
        strips.append(strip);
    }
    const auto buttonsOf = [&strips](int i) { return strips.at(i)->findChildren<QToolButton*>(); };
    window.show();
    Shot::waitFor([&window] { return window.isActiveWindow(); }, "the active window");
    buttonsOf(2).at(0)->setFocus(Qt::TabFocusReason);
    for (QToolButton* button : buttonsOf(3)) {
        button->setDown(true);
    }
    for (QToolButton* button : buttonsOf(4)) {
        button->setEnabled(false);
    }
    return shot.take(&window, QStringLiteral("preview-strip-states"));
}

} // namespace

bool takePreviewShots(const Shot& shot)
{
    bool ok = takeStripStates(shot);
    Preview preview;
    preview.bring(WebcamScene::frame(true));
    ok = shot.take(preview.window(), QStringLiteral("preview-square")) && ok;
    preview.enter();
    preview.press("KRecorder_Blurred_RoundBtn");
    ok = shot.take(preview.window(), QStringLiteral("preview-strip")) && ok;
    preview.press("KRecorder_Circle_RoundBtn");
    preview.press("KRecorder_Mirror_RoundBtn");
    ok = shot.take(preview.window(), QStringLiteral("preview-circle-flipped")) && ok;
    preview.press("KRecorder_Removal_RoundBtn");
    preview.press("KRecorder_Square_RoundBtn");
    preview.bring(WebcamScene::frame(false));
    return shot.take(preview.window(), QStringLiteral("preview-background-removed")) && ok;
}
