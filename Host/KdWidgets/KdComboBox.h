#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QComboBox>
#include <QPointer>

/**
 * A combo box that tells when its list opens and shows item texts as plain text on one line,
 * elided, with the whole text as a tool tip then. GUI thread.
 */
class KDWIDGETS_EXPORT KdComboBox : public QComboBox
{
    Q_OBJECT

public:
    /** @param parent owns the box; may be null. */
    explicit KdComboBox(QWidget* parent = nullptr);

    /** @return the same for any texts: names from outside do not widen a dialog. */
    QSize sizeHint() const override;
    /** @return as sizeHint(). */
    QSize minimumSizeHint() const override;

    /** Opens the list and emits sigShowPopUp(), unless there was nothing to open. */
    void showPopup() override;
    /** @return whether the list is open. */
    bool isPopupVisible() const;

    /**
     * @param row index of an item.
     * @return whether a row of the list is hidden; false for a row that does not exist.
     */
    bool isRowHidden(int row) const;
    /**
     * Takes an item out of the list, which keeps its index and can still be the current one.
     * @param row index of an item; any other is ignored.
     * @param hidden whether the list leaves it out.
     */
    void setRowHidden(int row, bool hidden);

Q_SIGNALS:
    /** The list has opened. */
    void sigShowPopUp();
    /** The list went, by a choice or otherwise. */
    void sigHidePopUp();

protected:
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    /**
     * Passes the wheel on: it scrolls what is behind and changes no choice.
     * @param event ignored.
     */
    void wheelEvent(QWheelEvent* event) override;

private:
    QModelIndex itemAt(int row) const;
    void hideRows();
    void preparePopup();
    void namePopup();
    QString elidedCurrentText() const;

    QList<QPersistentModelIndex> m_hidden; ///< those that the list does not know of yet
    QPointer<QWidget> m_pPopup;
};
