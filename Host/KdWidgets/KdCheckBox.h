#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QCheckBox>

/** A check box, or a switch. GUI thread. */
class KDWIDGETS_EXPORT KdCheckBox : public QCheckBox
{
    Q_OBJECT

public:
    /**
     * A check box without a text.
     * @param parent owns the box; may be null.
     */
    explicit KdCheckBox(QWidget* parent = nullptr);
    /**
     * @param text beside the box; an ampersand marks the key.
     * @param parent owns the box; may be null.
     */
    explicit KdCheckBox(const QString& text, QWidget* parent = nullptr);

    /**
     * @param parent owns the switch; may be null.
     * @return a box that looks like a switch, without a text.
     */
    static KdCheckBox* CreateSwitchCheckBox(QWidget* parent);
};
