#include <KdRecord/KdAudioDeviceBoxes.h>

#include <KdRecord/KdDeviceChoice.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdText.h>

#include <QSignalBlocker>

KdAudioDeviceBoxes::KdAudioDeviceBoxes(KdComboBox* device, KdComboBox* input)
    : m_pDevice(device), m_pInput(input)
{
}

int KdAudioDeviceBoxes::fill(const QList<KdVBLMODEL::_KdCaptureDevInf>& devices,
                             const QString& storedName)
{
    const QSignalBlocker deviceBlocker(m_pDevice);
    const QSignalBlocker inputBlocker(m_pInput);
    // What stands for no device was never chosen: the stored name counts then.
    const QString remembered = m_bHasDevice ? m_pDevice->currentText() : QString();
    QStringList names;
    for (const auto& device : devices) {
        names.append(device.name);
    }
    m_pDevice->clear();
    m_pInput->clear();
    m_bHasDevice = !devices.isEmpty();
    if (m_bHasDevice) {
        m_pDevice->addItems(names);
        m_pDevice->setRowHidden(0, false);
        m_pDevice->setCurrentIndex(KdDeviceChoice::rowToSelect(names, remembered, storedName));
        if (devices.first().devType == KdVBLMODEL::kdtMicrophone) {
            m_pInput->addItem(QString());
        }
    } else {
        m_pDevice->addItem(QString());
        m_pInput->addItem(QString());
        m_pDevice->setRowHidden(0, true);
    }
    retranslate();
    return m_bHasDevice ? currentRow() : -1;
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
    return m_bHasDevice && !m_pDevice->isRowHidden(0);
}

int KdAudioDeviceBoxes::currentRow() const
{
    return m_pDevice->currentIndex();
}

QString KdAudioDeviceBoxes::currentName() const
{
    return m_pDevice->currentText();
}

void KdAudioDeviceBoxes::retranslate()
{
    if (m_pInput->count() > 0) {
        m_pInput->setItemText(0, m_bHasDevice ? tr("Input Audio") : tr("No Device"));
    }
    if (!m_bHasDevice) {
        m_pDevice->setItemText(0, tr("No Device"));
    }
    m_pDevice->setToolTip(m_bHasDevice ? KdText::toolTip(m_pDevice->currentText())
                                       : tr("Connect a microphone and press Refresh Device"));
}
