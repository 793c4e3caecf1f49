#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdRecord/KdDeviceBox.h>

#include <QCoreApplication>

class KdComboBox;

/**
 * The two lists of a voice-over panel that show the audio inputs: which device, and what kind of
 * input it is. Without a device both say so, and the row that says it cannot be selected. GUI
 * thread.
 */
class KdAudioDeviceBoxes
{
    Q_DECLARE_TR_FUNCTIONS(KdAudioDeviceBoxes)

public:
    /** The boxes belong to the caller and outlive this object. */
    KdAudioDeviceBoxes(KdComboBox* device, KdComboBox* input);

    /**
     * Fills both lists anew without a signal of theirs.
     * @param storedName the user's choice of an earlier session
     * @return the selected row, -1 without a device
     */
    int fill(const QList<KdVBLMODEL::_KdCaptureDevInf>& devices, const QString& storedName);
    void closeList();
    bool isListOpen() const;

    bool hasDevice() const;
    int currentRow() const;
    /** @return the selected device's name, or the text that stands for none. */
    QString currentName() const;

    /** Translates what is not a device's name, the selection stays. */
    void retranslate();

private:
    KdComboBox* const m_pDevice;
    KdComboBox* const m_pInput;
    KdDeviceBox m_devices;
};
