#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QDialog>

/** A dialog that re-applies its texts when the language changes. GUI thread. */
class KDWIDGETS_EXPORT KdDialog : public QDialog
{
    Q_OBJECT

public:
    /**
     * @param parent owns the dialog, which stands over its window; may be null.
     * @param flags as of QDialog.
     */
    explicit KdDialog(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~KdDialog() override;

    /**
     * Re-applies all texts. Called when the application's language changes; a derived class calls
     * it itself at first.
     */
    virtual void RetranslateUi();

protected:
    void changeEvent(QEvent* event) override;
};
