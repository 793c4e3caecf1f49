#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QComboBox>

/** A combo box that tells when its list opens and shows item texts as plain text, elided. */
class KDWIDGETS_EXPORT KdComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit KdComboBox(QWidget* parent = nullptr);

    void showPopup() override;
    void hidePopup() override;
    bool isPopupVisible() const;

    /** @return whether a row of the list is hidden; false for a row that does not exist. */
    bool isRowHidden(int row) const;
    void setRowHidden(int row, bool hidden);

Q_SIGNALS:
    void sigShowPopUp();
    void sigHidePopUp();

protected:
    /** Without the list open the wheel scrolls what is behind and changes no choice. */
    void wheelEvent(QWheelEvent* event) override;
};
