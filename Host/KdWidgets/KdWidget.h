#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QWidget>

/** A plain widget that re-applies its texts when the language changes. GUI thread. */
class KDWIDGETS_EXPORT KdWidget : public QWidget
{
    Q_OBJECT

public:
    /** @param parent owns the widget; may be null. */
    explicit KdWidget(QWidget* parent = nullptr);
    ~KdWidget() override;

    /**
     * Re-applies all texts. Called when the application's language changes; a derived class calls
     * it itself at first.
     */
    virtual void RetranslateUi();

protected:
    void changeEvent(QEvent* event) override;
};
