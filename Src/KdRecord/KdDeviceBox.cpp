#include <KdRecord/KdDeviceBox.h>

#include <KdWidgets/KdComboBox.h>

#include <QSignalBlocker>

using namespace KdVBLMODEL;

namespace {

bool isSame(const _KdCaptureDevInf& one, const _KdCaptureDevInf& other)
{
    return one.id == other.id && one.name == other.name;
}

} // namespace

KdDeviceBox::KdDeviceBox(KdComboBox* box) : m_pBox(box) {}

QStringList KdDeviceBox::names(const QList<_KdCaptureDevInf>& devices)
{
    QStringList names;
    for (const auto& device : devices) {
        names.append(device.name);
    }
    return names;
}

int KdDeviceBox::indexOf(const QList<_KdCaptureDevInf>& devices, const _KdCaptureDevInf& device)
{
    for (int index = 0; index < devices.size(); ++index) {
        if (isSame(devices.at(index), device)) {
            return index;
        }
    }
    return -1;
}

void KdDeviceBox::fill(const QStringList& names, int row)
{
    const QSignalBlocker blocker(m_pBox);
    m_devices.clear();
    m_pBox->clear();
    m_bHasDevice = !names.isEmpty();
    m_pBox->addItems(m_bHasDevice ? names : QStringList{QString()});
    m_pBox->setRowHidden(0, !m_bHasDevice);
    m_pBox->setCurrentIndex(m_bHasDevice ? row : 0);
    retranslate();
}

void KdDeviceBox::fillWith(const QList<_KdCaptureDevInf>& devices, int row)
{
    fill(names(devices), row);
    m_devices = devices;
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

bool KdDeviceBox::chooseAgain(const _KdCaptureDevInf& device, const QString& text)
{
    const int row = rowOf(device);
    return choose(row >= 0 ? row : m_pBox->findText(text));
}

int KdDeviceBox::rowOf(const _KdCaptureDevInf& device) const
{
    const int selected = currentRow();
    const bool isSelected =
        selected >= 0 && selected < m_devices.size() && isSame(m_devices.at(selected), device);
    return isSelected ? selected : indexOf(m_devices, device);
}

int KdDeviceBox::indexIn(const QList<_KdCaptureDevInf>& devices, int row) const
{
    if (row < 0 || row >= m_devices.size()) {
        return -1;
    }
    const _KdCaptureDevInf& device = m_devices.at(row);
    // Devices that nothing tells apart keep their places.
    const bool hasStayed = row < devices.size() && isSame(devices.at(row), device);
    return hasStayed ? row : indexOf(devices, device);
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
