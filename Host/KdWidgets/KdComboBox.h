#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QComboBox>
#include <QPointer>

/**
 * A combo box that tells when its list opens and shows item texts as plain text on one line,
 * elided, with the whole text as a tool tip then.
 */
class KDWIDGETS_EXPORT KdComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit KdComboBox(QWidget* parent = nullptr);

    /** The same for any texts: names from outside do not widen a dialog. */
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    void showPopup() override;
    bool isPopupVisible() const;

    /** @return whether a row of the list is hidden; false for a row that does not exist. */
    bool isRowHidden(int row) const;
    void setRowHidden(int row, bool hidden);

Q_SIGNALS:
    void sigShowPopUp();
    /** The list went, by a choice or otherwise. */
    void sigHidePopUp();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    /** Without the list open the wheel scrolls what is behind and changes no choice. */
    void wheelEvent(QWheelEvent* event) override;

private:
    void preparePopup();
    QString elidedCurrentText() const;

    QPointer<QWidget> m_pPopup;
};
