#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QDialog>

/** A dialog that re-applies its texts when the language changes. */
class KDWIDGETS_EXPORT KdDialog : public QDialog
{
    Q_OBJECT

public:
    explicit KdDialog(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~KdDialog() override;

    virtual void RetranslateUi();

protected:
    void changeEvent(QEvent* event) override;
};
