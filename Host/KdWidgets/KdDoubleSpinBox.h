#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QDoubleSpinBox>

/** A spin box; its text may be empty while it is edited. */
class KDWIDGETS_EXPORT KdDoubleSpinBox : public QDoubleSpinBox
{
    Q_OBJECT

public:
    explicit KdDoubleSpinBox(QWidget* parent = nullptr);

    /** @return the text without prefix and suffix, empty when the user emptied it. */
    QString editText() const;
    QLineEdit* edit() const { return lineEdit(); }
};
