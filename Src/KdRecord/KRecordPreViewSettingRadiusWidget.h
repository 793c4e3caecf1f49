#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdRecord/KdRecordExport.h>
#include <KdWidgets/KdRoundRadiusWidget.h>

#include <QList>

#include <functional>

class KdLabel;
class KdToolButton;

/**
 * The strip of options over a webcam's picture: its shape, what becomes of the background, and
 * whether it is flipped.
 *
 * A click changes the choice, then asks the callback for it, if there is one; the buttons show the
 * new choice only when it answers true. A refused choice is kept all the same. A callback may
 * destroy the strip. GUI thread.
 */
class KDRECORD_EXPORT KRecordPreViewSettingRadiusWidget : public KdRoundRadiusWidget
{
    Q_OBJECT

public:
    /** Asked for a new shape; answers whether it holds from now on. */
    using ShapeHandle = std::function<bool(KdVBLMODEL::_KdCaptureRecordShape)>;
    /** Asked for a new treatment of the background; answers whether it holds from now on. */
    using BackgroundHandle = std::function<bool(KdVBLMODEL::_KdCaptureRecordBackgroundMode)>;
    /** Asked whether to flip the picture from now on; answers whether it does as asked. */
    using FlipHandle = std::function<bool(bool)>;

    /**
     * The buttons show the choices with useUserSettings() or the first change.
     * @param parent owns the strip; may be null.
     * @param shape the present choice.
     * @param mode the present choice.
     * @param flip the present choice.
     */
    KRecordPreViewSettingRadiusWidget(QWidget* parent, KdVBLMODEL::_KdCaptureRecordShape shape,
                                      KdVBLMODEL::_KdCaptureRecordBackgroundMode mode, bool flip);
    ~KRecordPreViewSettingRadiusWidget() override;

    /** @param handle asked when the user picks a shape; null: every shape is refused. */
    void setActionHandleForShapeChange(ShapeHandle handle);
    /**
     * @param handle asked when the user picks a treatment, or fcbmNone by a second click on it;
     * null: every treatment is refused.
     */
    void setActionHandleForBackgroundChange(BackgroundHandle handle);
    /**
     * @param handle asked when the user flips the picture, or flips it back; null: either is
     * refused.
     */
    void setActionHandleForFlipChange(FlipHandle handle);

    /**
     * Shows a choice without asking the callback.
     * @param shape the present choice from now on.
     */
    void setCurrentShape(KdVBLMODEL::_KdCaptureRecordShape shape);
    /**
     * Shows a choice without asking the callback.
     * @param flip the present choice from now on.
     */
    void setFlip(bool flip);

    /** Calls shape, background and flip callback with the present choices, whatever they answer,
     * and shows these. All three must be set; otherwise nothing happens. */
    void useUserSettings();

    void RetranslateUi() override;

protected Q_SLOTS:
    /** Chooses the square; without effect when it is chosen already. */
    void slotOnSquareClicked();
    /** Chooses the circle; without effect when it is chosen already. */
    void slotOnCircleClicked();
    /** Chooses the blurred background, or none when that is chosen already. */
    void slotOnBlurredClicked();
    /** Chooses the removed background, or none when that is chosen already. */
    void slotOnRemovalClicked();
    /** Flips the picture, or flips it back. */
    void slotOnMirrorClicked();

private:
    void initUI();
    void initBtnList();
    void initConnections();
    KdToolButton* createButton(const QString& name);

    void chooseShape(KdVBLMODEL::_KdCaptureRecordShape shape);
    void toggleBackground(KdVBLMODEL::_KdCaptureRecordBackgroundMode mode);
    void updateShapeBtn();
    void updateBackgroundBtn();
    void updateMirrorBtn();
    void describeStates();

    KdToolButton* m_pBtnSquare = nullptr;
    KdToolButton* m_pBtnCircle = nullptr;
    KdToolButton* m_pBtnBlurred = nullptr;
    KdToolButton* m_pBtnRemoval = nullptr;
    KdToolButton* m_pBtnMirror = nullptr;
    KdLabel* m_pSeparator = nullptr;
    QList<KdToolButton*> m_shapeBtns;      ///< by _KdCaptureRecordShape
    QList<KdToolButton*> m_backgroundBtns; ///< by _KdCaptureRecordBackgroundMode

    KdVBLMODEL::_KdCaptureRecordShape m_shape;
    KdVBLMODEL::_KdCaptureRecordBackgroundMode m_backgroundMode;
    bool m_bFlip;
    ShapeHandle m_shapeHandle;
    BackgroundHandle m_backgroundHandle;
    FlipHandle m_flipHandle;
};
