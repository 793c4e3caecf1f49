#pragma once

#include <KdRecord/KdRecordExport.h>
#include <KdWidgets/KdWidget.h>

class KdCheckBox;
class KdLabel;
class QHBoxLayout;

/**
 * The "Recording preview" row: a switch that writes its state into the host's audio settings the
 * moment it is clicked, whatever becomes of the dialog around it. GUI thread.
 */
class KDRECORD_EXPORT KAudioRecordPreviewWidget : public KdWidget
{
    Q_OBJECT

public:
    explicit KAudioRecordPreviewWidget(QWidget* parent = nullptr);
    ~KAudioRecordPreviewWidget() override;

    bool getRecordPreviewCheck() const;
    /** Shows a state; writes nothing. */
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
