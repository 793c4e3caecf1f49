#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <QCoreApplication>
#include <QList>
#include <QStringList>

class KdComboBox;

/**
 * A list of devices of one kind. Without a device its only row says so, and cannot be selected.
 * GUI thread.
 */
class KdDeviceBox
{
    Q_DECLARE_TR_FUNCTIONS(KdDeviceBox)

public:
    /** The box belongs to the caller and outlives this object. */
    explicit KdDeviceBox(KdComboBox* box);

    static QStringList names(const QList<KdVBLMODEL::_KdCaptureDevInf>& devices);
    /** @return the position of a device, which its id and its name tell from another; else -1. */
    static int indexOf(const QList<KdVBLMODEL::_KdCaptureDevInf>& devices,
                       const KdVBLMODEL::_KdCaptureDevInf& device);

    /**
     * Fills the list anew without a signal of its.
     * @param row to select
     */
    void fill(const QStringList& names, int row);
    /** The same with the devices' names, and keeps which device each row stands for. */
    void fillWith(const QList<KdVBLMODEL::_KdCaptureDevInf>& devices, int row);
    /** Selects a row without a signal: whoever hears a list's signal must not destroy the list.
     * @return whether another one was selected; false for a negative row. */
    bool choose(int row);

    /** Selects the row of a device that was selected before the list was filled anew, silently too.
     * @param text its row's text, which counts when the device is not listed
     * @return whether another row was selected. */
    bool chooseAgain(const KdVBLMODEL::_KdCaptureDevInf& device, const QString& text);

    /** @return the row that stands for a device, the selected one rather than another; -1 without
     * one, and for a list that was filled with names. */
    int rowOf(const KdVBLMODEL::_KdCaptureDevInf& device) const;
    /** @return where a row's device stands in another list than the one shown; -1 when it is not
     * there. */
    int indexIn(const QList<KdVBLMODEL::_KdCaptureDevInf>& devices, int row) const;

    bool hasDevice() const;
    /** @return the selected row, -1 without a device. */
    int currentRow() const;
    /** @return the selected device's name, or the text that stands for none. */
    QString currentText() const;
    /** @return the selected device's name, empty without one. */
    QString currentName() const;

    /** Translates what is not a device's name, the selection stays. */
    void retranslate();

private:
    KdComboBox* const m_pBox;
    QList<KdVBLMODEL::_KdCaptureDevInf> m_devices;
    bool m_bHasDevice = false;
};
