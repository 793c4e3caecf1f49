#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QWidget>

/** A plain widget that re-applies its texts when the language changes. */
class KDWIDGETS_EXPORT KdWidget : public QWidget
{
    Q_OBJECT

public:
    explicit KdWidget(QWidget* parent = nullptr);
    ~KdWidget() override;

    /** Re-applies all texts. Called when the application's language changes. */
    virtual void RetranslateUi();

protected:
    void changeEvent(QEvent* event) override;
};
