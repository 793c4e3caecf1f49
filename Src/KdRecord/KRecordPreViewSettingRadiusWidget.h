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
    using ShapeHandle = std::function<bool(KdVBLMODEL::_KdCaptureRecordShape)>;
    using BackgroundHandle = std::function<bool(KdVBLMODEL::_KdCaptureRecordBackgroundMode)>;
    using FlipHandle = std::function<bool(bool)>;

    /** The buttons show the choices with useUserSettings() or the first change. */
    KRecordPreViewSettingRadiusWidget(QWidget* parent, KdVBLMODEL::_KdCaptureRecordShape shape,
                                      KdVBLMODEL::_KdCaptureRecordBackgroundMode mode, bool flip);
    ~KRecordPreViewSettingRadiusWidget() override;

    void setActionHandleForShapeChange(ShapeHandle handle);
    void setActionHandleForBackgroundChange(BackgroundHandle handle);
    void setActionHandleForFlipChange(FlipHandle handle);

    /** Shows a choice without asking the callback. */
    void setCurrentShape(KdVBLMODEL::_KdCaptureRecordShape shape);
    void setFlip(bool flip);

    /** Calls shape, background and flip callback with the present choices, whatever they answer,
     * and shows these. All three must be set; otherwise nothing happens. */
    void useUserSettings();

    void RetranslateUi() override;

protected Q_SLOTS:
    void slotOnSquareClicked();
    void slotOnCircleClicked();
    void slotOnBlurredClicked();
    void slotOnRemovalClicked();
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
