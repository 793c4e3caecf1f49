#include <KdRecord/KdDeviceBox.h>

#include <KdWidgets/KdComboBox.h>

#include <QSignalBlocker>

KdDeviceBox::KdDeviceBox(KdComboBox* box) : m_pBox(box) {}

QStringList KdDeviceBox::names(const QList<KdVBLMODEL::_KdCaptureDevInf>& devices)
{
    QStringList names;
    for (const auto& device : devices) {
        names.append(device.name);
    }
    return names;
}

void KdDeviceBox::fill(const QStringList& names, int row)
{
    const QSignalBlocker blocker(m_pBox);
    m_pBox->clear();
    m_bHasDevice = !names.isEmpty();
    m_pBox->addItems(m_bHasDevice ? names : QStringList{QString()});
    m_pBox->setRowHidden(0, !m_bHasDevice);
    m_pBox->setCurrentIndex(m_bHasDevice ? row : 0);
    retranslate();
}

bool KdDeviceBox::choose(int row)
{
    if (row < 0 || row == m_pBox->currentIndex()) {
        return false;
    }
    const QSignalBlocker blocker(m_pBox);
    m_pBox->setCurrentIndex(row);
    return true;
}

bool KdDeviceBox::hasDevice() const
{
    return m_bHasDevice && !m_pBox->isRowHidden(0);
}

int KdDeviceBox::currentRow() const
{
    return m_bHasDevice ? m_pBox->currentIndex() : -1;
}

QString KdDeviceBox::currentText() const
{
    return m_pBox->currentText();
}

QString KdDeviceBox::currentName() const
{
    return m_bHasDevice ? m_pBox->currentText() : QString();
}

void KdDeviceBox::retranslate()
{
    if (!m_bHasDevice && m_pBox->count() > 0) {
        m_pBox->setItemText(0, tr("No Device"));
    }
}
