#pragma once

#include <KdRecord/KdWebCamDisplayLabel.h>

#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <atomic>
#include <memory>

/** Reaches what a surface that derives from the label reaches, and counts its paints. */
class Surface : public KdWebCamDisplayLabel
{
public:
    using KdWebCamDisplayLabel::bufferSize;
    using KdWebCamDisplayLabel::frameLock;
    using KdWebCamDisplayLabel::isRendering;
    using KdWebCamDisplayLabel::KdWebCamDisplayLabel;
    using KdWebCamDisplayLabel::optionStrip;

    std::atomic<int> paints{0};
    std::atomic<bool> paintsNow{false};

protected:
    void paintEvent(QPaintEvent* event) override;
};

/** Base of the label's tests: a label for each, and frames for it. */
class DisplayLabelFixture : public KdTestCase
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    static constexpr QSize kArea{400, 300};

    static QImage plainFrame(const QSize& size, const QColor& color);
    /** Left half and right half. */
    static QImage halves(const QSize& size, const QColor& left, const QColor& right);

    /** A fresh label of kArea in place of the one before, not shown. */
    void make();
    void show();
    /** From a thread of its own, as the engine does; back when the label has had the frame. */
    void bring(const QImage& frame, int width, int height);
    void bring(const QImage& frame) { bring(frame, frame.width(), frame.height()); }
    QColor at(int x, int y) { return WidgetLooks::colorAt(*m_label, {x, y}); }
    KRecordPreViewSettingRadiusWidget* strip() const { return m_label->optionStrip(); }

    std::unique_ptr<Surface> m_label;
};
