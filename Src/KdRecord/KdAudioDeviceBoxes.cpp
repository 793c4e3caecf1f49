#include <KdRecord/KdAudioDeviceBoxes.h>

#include <KdRecord/KdDeviceChoice.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdText.h>

#include <QSignalBlocker>

KdAudioDeviceBoxes::KdAudioDeviceBoxes(KdComboBox* device, KdComboBox* input)
    : m_pDevice(device), m_pInput(input), m_devices(device)
{
}

int KdAudioDeviceBoxes::fill(const QList<KdVBLMODEL::_KdCaptureDevInf>& devices,
                             const QString& storedName)
{
    // What stands for no device was never chosen: the stored name counts then.
    const QString remembered = m_devices.currentName();
    const QStringList names = KdDeviceBox::names(devices);
    m_devices.fill(names, KdDeviceChoice::rowToSelect(names, remembered, storedName));

    const QSignalBlocker inputBlocker(m_pInput);
    m_pInput->clear();
    if (devices.isEmpty() || devices.first().devType == KdVBLMODEL::kdtMicrophone) {
        m_pInput->addItem(QString());
    }
    retranslate();
    return m_devices.currentRow();
}

void KdAudioDeviceBoxes::closeList()
{
    m_pDevice->hidePopup();
}

bool KdAudioDeviceBoxes::isListOpen() const
{
    return m_pDevice->isPopupVisible();
}

bool KdAudioDeviceBoxes::hasDevice() const
{
    return m_devices.hasDevice();
}

int KdAudioDeviceBoxes::currentRow() const
{
    return m_pDevice->currentIndex();
}

QString KdAudioDeviceBoxes::currentName() const
{
    return m_devices.currentText();
}

void KdAudioDeviceBoxes::retranslate()
{
    m_devices.retranslate();
    const bool hasDevice = m_devices.currentRow() >= 0;
    if (m_pInput->count() > 0) {
        m_pInput->setItemText(0, hasDevice ? tr("Input Audio") : m_devices.currentText());
    }
    m_pDevice->setToolTip(hasDevice ? KdText::toolTip(m_pDevice->currentText())
                                    : tr("Connect a microphone and press Refresh Device"));
}
