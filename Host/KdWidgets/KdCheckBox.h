#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QCheckBox>

/** A check box, or a switch. */
class KDWIDGETS_EXPORT KdCheckBox : public QCheckBox
{
    Q_OBJECT

public:
    explicit KdCheckBox(QWidget* parent = nullptr);
    explicit KdCheckBox(const QString& text, QWidget* parent = nullptr);

    static KdCheckBox* CreateSwitchCheckBox(QWidget* parent);
};
