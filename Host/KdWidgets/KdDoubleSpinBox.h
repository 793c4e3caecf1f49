#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QDoubleSpinBox>

/** A spin box; its text may be empty while it is edited. GUI thread. */
class KDWIDGETS_EXPORT KdDoubleSpinBox : public QDoubleSpinBox
{
    Q_OBJECT

public:
    /** @param parent owns the box; may be null. */
    explicit KdDoubleSpinBox(QWidget* parent = nullptr);

    /**
     * @return the text without prefix, suffix and blanks around it, empty when the user emptied it.
     */
    QString editText() const;
    /** @return the field in which the text is edited; never null, the box's own. */
    QLineEdit* edit() const { return lineEdit(); }
};
