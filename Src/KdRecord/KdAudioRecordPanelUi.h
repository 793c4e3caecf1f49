#pragma once

#include <QCoreApplication>
#include <QList>

class KAdvanceBtn;
class KdAnnouncer;
class KdAudioVolumeWidget;
class KdButton;
class KdCheckBox;
class KdComboBox;
class KdCountCtrl;
class KdDoubleSpinBox;
class KdLabel;
class KdOpenFileLineEdit;
class KdPushButton;
class KdToolButton;
class QGridLayout;
class QLayout;
class QWidget;

/**
 * The widgets of the voice-over panel and where they stand: no behaviour. Everything belongs to the
 * panel; this object goes before it.
 */
class KdAudioRecordPanelUi
{
    Q_DECLARE_TR_FUNCTIONS(KdAudioRecordPanelUi)

public:
    explicit KdAudioRecordPanelUi(QWidget* panel);

    /** Texts, tool tips and names for assistive technology that no state changes. */
    void retranslate();
    /** The choices that are fixed while a take is counted down or runs. */
    void setSettingsEnabled(bool enable);
    /** What looks alive only during a take. */
    void setTimeEnabled(bool enable);
    void setTakeButtonsVisible(bool visible);
    /** The button over startStop; it takes the focus over too. */
    void setStopVisible(bool visible);

    KdToolButton* startStop = nullptr;
    KdToolButton* stop = nullptr; ///< lies over startStop while the countdown runs
    KdButton* reRecord = nullptr;
    KdButton* pause = nullptr;
    KdLabel* time = nullptr;
    KdAudioVolumeWidget* meter = nullptr;
    KdAnnouncer* announcer = nullptr;
    KdCountCtrl* countdown = nullptr; ///< a window of its own, placed over startStop

    KdComboBox* device = nullptr;
    KdToolButton* refresh = nullptr;
    KdComboBox* input = nullptr;
    KAdvanceBtn* advance = nullptr;
    KdOpenFileLineEdit* folder = nullptr;
    KdDoubleSpinBox* seconds = nullptr;
    KdCheckBox* mute = nullptr;
    KdPushButton* ok = nullptr;

private:
    void makeTakeControls();
    void makeSettings();
    void layOut();
    QLayout* takeButtonsRow();
    QLayout* timeColumn();
    QGridLayout* settingsGrid();
    QLayout* bottomRow();
    void setTabOrder();

    QWidget* const m_pPanel;
    QWidget* m_pStartPlace = nullptr;
    KdLabel* m_pTimeCaption = nullptr;
    KdLabel* m_pDeviceCaption = nullptr;
    KdLabel* m_pInputCaption = nullptr;
    KdLabel* m_pFolderCaption = nullptr;
    KdLabel* m_pSecondsCaption = nullptr;
    KdLabel* m_pSecondsUnit = nullptr;
};
