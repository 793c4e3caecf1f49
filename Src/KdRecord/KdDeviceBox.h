#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <QCoreApplication>
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

    /**
     * Fills the list anew without a signal of its.
     * @param row to select
     */
    void fill(const QStringList& names, int row);
    /** Selects a row without a signal: whoever hears a list's signal must not destroy the list.
     * @return whether another one was selected; false for a negative row. */
    bool choose(int row);

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
    bool m_bHasDevice = false;
};
