#pragma once

#include <QCoreApplication>

class KdAnnouncer;
class KdAudioVolumeWidget;
class KdButton;
class KdCheckBox;
class KdComboBox;
class KdCountCtrlVideo;
class KdDoubleSpinBox;
class KdLabel;
class KdLivingLabel;
class KdPushButton;
class KdToolButton;
class KdWebCamDisplayLabel;
class QGridLayout;
class QLayout;
class QWidget;

/**
 * The widgets of the webcam panel and where they stand: no behaviour. Everything belongs to the
 * panel; this object goes before it.
 */
class KdWebcamRecordPanelUi
{
    Q_DECLARE_TR_FUNCTIONS(KdWebcamRecordPanelUi)

public:
    explicit KdWebcamRecordPanelUi(QWidget* panel);

    /** Texts, tool tips and names for assistive technology that no state changes. */
    void retranslate();
    /** The choices that are fixed while a take runs. */
    void setChoicesEnabled(bool enable);
    void setTakeButtonsVisible(bool visible);
    void showStatus(const QString& text, bool isRecording);
    /** What to do while there is no webcam. */
    void setHintVisible(bool visible);

    KdWebCamDisplayLabel* display = nullptr;
    KdCountCtrlVideo* countdown = nullptr; ///< a window of its own, placed over display
    KdLivingLabel* status = nullptr;
    KdToolButton* startStop = nullptr;
    KdButton* reRecord = nullptr;
    KdButton* pause = nullptr;
    KdLabel* time = nullptr;
    KdAudioVolumeWidget* meter = nullptr;
    KdAnnouncer* announcer = nullptr;

    KdComboBox* camera = nullptr;
    KdComboBox* microphone = nullptr;
    KdComboBox* resolution = nullptr;
    KdComboBox* frameRate = nullptr;
    KdDoubleSpinBox* seconds = nullptr;
    KdCheckBox* preview = nullptr;
    KdPushButton* ok = nullptr;

private:
    void makePicture();
    void makeTakeControls();
    void makeChoices();
    void makeCaptions();
    void makeBottom();
    void makeKeys();
    void layOut();
    QLayout* pictureLayout();
    QLayout* takeRow();
    QWidget* timeColumn();
    QGridLayout* choicesGrid();
    QLayout* countdownRow();
    QLayout* bottomRow();

    QWidget* const m_pPanel;
    KdLabel* m_pHint = nullptr;
    KdLabel* m_pTimeCaption = nullptr;
    KdLabel* m_pCameraCaption = nullptr;
    KdLabel* m_pMicrophoneCaption = nullptr;
    KdLabel* m_pResolutionCaption = nullptr;
    KdLabel* m_pFrameRateCaption = nullptr;
    KdLabel* m_pSecondsCaption = nullptr;
    KdLabel* m_pSecondsUnit = nullptr;
};
