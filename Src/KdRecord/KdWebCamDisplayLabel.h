#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdRecord/KdRecordExport.h>

#include <QLabel>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

class KRecordPreViewSettingRadiusWidget;
class KdPreviewStore;
class QTimer;

/**
 * The preview of a webcam: shows the latest frame letter-boxed on black, mirrored and cut round as
 * asked, and over it, while the mouse is there and no take runs, the strip with the options. The
 * Tab key brings the strip up as well, and leads on into it.
 *
 * It starts with the shape, flip and background that the host's configuration keeps in the group
 * "WebCamFuncConfig", and shows no frame before startRender() or startRenderDelay().
 *
 * GUI thread, save WebcamFrameChanged().
 */
class KDRECORD_EXPORT KdWebCamDisplayLabel : public QLabel
{
    Q_OBJECT

public:
    /** @param parent owns the label; may be null. */
    explicit KdWebCamDisplayLabel(QWidget* parent = nullptr);
    ~KdWebCamDisplayLabel() override;

    /**
     * Takes a frame over and has it painted soon; made for the thread that the frames come from. It
     * never waits: the frame is dropped when the frame lock is taken at that moment. A null
     * pointer, a size that is not positive and one beyond 2^31 bytes are ignored.
     *
     * The label must live until the call returns: end what brings the frames, or detach from it
     * with the engine's barrier, before the label is destroyed. What a call has posted goes with
     * the label.
     * @param width of the frame in pixels.
     * @param height of the frame in pixels.
     * @param bits width x height pixels of QImage::Format_ARGB32 without padding, read during the
     * call.
     */
    void WebcamFrameChanged(int width, int height, uint8_t* bits);

    /** Frames are painted from now on. */
    void startRender();
    /** The same in 100 ms, when what the camera still had of its former setting has passed. A
     * second call while the first is pending changes nothing; stopRender() takes it back. */
    void startRenderDelay();
    /** Black from now on. The frame is freed; one that comes later is freed by the next painting.
     */
    void stopRender();

    /**
     * Cuts what is painted. The strip shows it too; its callback is not called.
     * @param shape round, or the whole picture.
     */
    void setShape(KdVBLMODEL::_KdCaptureRecordShape shape);
    /** @return the shape of what is painted. */
    KdVBLMODEL::_KdCaptureRecordShape shape() const { return m_shape; }
    /**
     * Kept for whoever asks; what is painted is the engine's work. The strip stays as it is.
     * @param mode the present treatment.
     */
    void setBackgroundMode(KdVBLMODEL::_KdCaptureRecordBackgroundMode mode);
    /** @return as set last, or as the host's configuration has it. */
    KdVBLMODEL::_KdCaptureRecordBackgroundMode backgroundMode() const { return m_backgroundMode; }
    /**
     * Mirrors what is painted left to right. The strip stays as it is.
     * @param flipped whether it is mirrored.
     */
    void setFlipped(bool flipped);
    /** @return whether what is painted is mirrored. */
    bool isFlipped() const { return m_bFlipped; }
    /**
     * Kept without an effect on what is painted.
     * @param radius of the corners in pixels.
     * @param flag whether there are corners.
     */
    void setLayerCorner(float radius, bool flag);
    /**
     * The strip is not shown while a take runs, and the Tab key leads past the label.
     * @param recording whether a take runs.
     */
    void setRecording(bool recording);

    /**
     * @param handle asked when the user picks a shape on the strip; the answer is whether the strip
     * shows it. Null: every shape is refused.
     */
    void
    setActionHandleForShapeChange(std::function<bool(KdVBLMODEL::_KdCaptureRecordShape)> handle);
    /**
     * @param handle asked when the user picks a treatment of the background on the strip; the
     * answer is whether the strip shows it. Null: every treatment is refused.
     */
    void setActionHandleForBackgroundChange(
        std::function<bool(KdVBLMODEL::_KdCaptureRecordBackgroundMode)> handle);
    /**
     * @param handle asked when the user flips the picture on the strip; the answer is whether the
     * strip shows it. Null: either is refused.
     */
    void setActionHandleForFlipChange(std::function<bool(bool)> handle);
    /** Calls the three handles with the present choices. All three must be set. */
    void useUserSettings();

Q_SIGNALS:
    /** The mouse came in. */
    void sigEnter();
    /** The mouse went out. */
    void sigLeave();

protected:
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    /** @return the strip with the options; never null, the label's own. */
    KRecordPreViewSettingRadiusWidget* optionStrip() const { return m_pStrip; }
    /** @return whether frames are painted. */
    bool isRendering() const;
    /** @return the bytes held by the stored frame. */
    qint64 bufferSize() const;
    /**
     * @return what guards the stored frame and whether frames are painted. While it is held frames
     * are dropped and painting waits.
     */
    std::mutex& frameLock() const;

private Q_SLOTS:
    void slotRepaint();

private:
    void readConfiguration();
    void initUI();
    bool paintFrame();
    void paintFocus();
    void followFocus(const QWidget* focused);
    void updateStrip();

    std::unique_ptr<KdPreviewStore> m_pStore;
    std::atomic<bool> m_bRepaintPosted{false};
    float m_fCornerRadius = 0;
    bool m_bCorner = false;
    KdVBLMODEL::_KdCaptureRecordShape m_shape = KdVBLMODEL::fcrsSquare;
    KdVBLMODEL::_KdCaptureRecordBackgroundMode m_backgroundMode = KdVBLMODEL::fcbmNone;
    bool m_bFlipped = false;
    bool m_bRecording = false;
    bool m_bMouseHere = false;
    bool m_bKeyboardHere = false; ///< came with the Tab key and is still on the label or its strip
    KRecordPreViewSettingRadiusWidget* m_pStrip = nullptr;
    QTimer* m_pRenderDelay = nullptr;
};
