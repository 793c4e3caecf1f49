#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QString>
#include <QWidget>

#include <functional>

/** Small windows anchored at a control. Object name "KdPopovers". */
class KDWIDGETS_EXPORT KdPopovers : public QWidget
{
    Q_OBJECT

public:
    struct ConfirmTexts
    {
        QString text;
        QString cancel;
        QString confirm;
    };

    /**
     * Asks beside anchor. The buttons are named "KdPopovers_Cancel" (the default) and
     * "KdPopovers_Confirm".
     * @param answered called once with the answer, false also when the popover is closed otherwise;
     * not called when anchor is destroyed first. The popover deletes itself.
     */
    static KdPopovers* showConfirm(QWidget* anchor, const ConfirmTexts& texts,
                                   std::function<void(bool confirmed)> answered);

protected:
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    KdPopovers(QWidget* anchor, const ConfirmTexts& texts, std::function<void(bool)> answered);
    void answer(bool confirmed);

    std::function<void(bool)> m_answered;
};
