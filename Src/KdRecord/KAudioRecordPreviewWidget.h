#pragma once

#include <KdRecord/KdRecordExport.h>
#include <KdWidgets/KdWidget.h>

class KdCheckBox;
class KdLabel;
class QHBoxLayout;

/**
 * The "Recording preview" row: a switch that puts its state into the host's audio settings the
 * moment it is clicked, whatever becomes of the dialog around it. Their file is not written here.
 * GUI thread.
 */
class KDRECORD_EXPORT KAudioRecordPreviewWidget : public KdWidget
{
    Q_OBJECT

public:
    /**
     * Off at first, whatever the settings say; see setRecordPreviewCheck().
     * @param parent owns the row; may be null.
     */
    explicit KAudioRecordPreviewWidget(QWidget* parent = nullptr);
    ~KAudioRecordPreviewWidget() override;

    /** @return whether the switch is on. */
    bool getRecordPreviewCheck() const;
    /**
     * Shows a state; the settings stay as they are.
     * @param checked whether the switch is on.
     */
    void setRecordPreviewCheck(bool checked);

    void RetranslateUi() override;

private:
    void initUI();
    void storeCheck(bool checked);
    void stateChanged();

    QHBoxLayout* m_pLayout = nullptr;
    KdLabel* m_pLabel = nullptr;
    KdCheckBox* m_pSwitch = nullptr;
};
