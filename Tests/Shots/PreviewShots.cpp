#include "PreviewShots.h"

#include <KdRecord/KRecordPreViewSettingRadiusWidget.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdWidgets/KdSkinManager.h>

#include <QBoxLayout>
#include <QEvent>
#include <QPainter>
#include <QTest>
#include <QToolButton>

using namespace KdVBLMODEL;

namespace {

constexpr QSize kFrame(1280, 720);

void paintRoom(QPainter* painter)
{
    QLinearGradient wall(0, 0, 0, kFrame.height());
    wall.setColorAt(0, QColor(214, 205, 190));
    wall.setColorAt(1, QColor(150, 138, 122));
    painter->fillRect(QRect(QPoint(), kFrame), wall);
    painter->fillRect(QRect(90, 80, 260, 330), QColor(236, 244, 250));
    painter->fillRect(QRect(216, 80, 8, 330), QColor(150, 138, 122));
    painter->fillRect(QRect(930, 150, 250, 14), QColor(110, 84, 60));
    const QVector<QColor> books{QColor(180, 60, 50), QColor(60, 110, 150), QColor(220, 170, 70)};
    for (int i = 0; i < 9; ++i) {
        painter->fillRect(QRect(940 + i * 25, 80 + i % 3 * 9, 20, 70 - i % 3 * 9), books.at(i % 3));
    }
}

void paintPerson(QPainter* painter)
{
    painter->setBrush(QColor(52, 86, 120));
    painter->drawRoundedRect(QRect(400, 500, 480, 400), 150, 150);
    painter->setBrush(QColor(222, 178, 150));
    painter->drawRect(QRect(590, 420, 100, 110));
    painter->drawEllipse(QPoint(640, 320), 130, 165);
    painter->setBrush(QColor(70, 48, 36));
    painter->drawChord(QRect(505, 140, 270, 280), 5 * 16, 170 * 16);
    painter->drawEllipse(QPoint(590, 320), 11, 14);
    painter->drawEllipse(QPoint(690, 320), 11, 14);
    painter->setPen(QPen(QColor(150, 80, 70), 9, Qt::SolidLine, Qt::RoundCap));
    painter->drawArc(QRect(590, 350, 100, 70), 200 * 16, 140 * 16);
}

QImage webcamFrame(bool hasBackground)
{
    QImage frame(kFrame, QImage::Format_ARGB32);
    frame.fill(Qt::transparent);
    QPainter painter(&frame);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    if (hasBackground) {
        paintRoom(&painter);
    }
    paintPerson(&painter);
    return frame;
}

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
    preview.bring(webcamFrame(true));
    ok = shot.take(preview.window(), QStringLiteral("preview-square")) && ok;
    preview.enter();
    preview.press("KRecorder_Blurred_RoundBtn");
    ok = shot.take(preview.window(), QStringLiteral("preview-strip")) && ok;
    preview.press("KRecorder_Circle_RoundBtn");
    preview.press("KRecorder_Mirror_RoundBtn");
    ok = shot.take(preview.window(), QStringLiteral("preview-circle-flipped")) && ok;
    preview.press("KRecorder_Removal_RoundBtn");
    preview.press("KRecorder_Square_RoundBtn");
    preview.bring(webcamFrame(false));
    return shot.take(preview.window(), QStringLiteral("preview-background-removed")) && ok;
}
