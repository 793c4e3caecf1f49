#pragma once

#include <KdWidgets/KdFramelessDialog.h>

class KdPushButton;
class QHBoxLayout;

/** A page of the recorder's settings in a window: "Apply" keeps what it shows, anything else does
 * not. It deletes itself when it is closed. GUI thread. */
class StudioSettingsDialog : public KdFramelessDialog
{
    Q_OBJECT

public:
    void RetranslateUi() override;

protected:
    explicit StudioSettingsDialog(QWidget* parent);

    /** To be called once, by the constructor of each kind. */
    void showPage(QWidget* page);
    virtual QString title() const = 0;
    /** Keeps what the page shows. */
    virtual void keep() = 0;

private:
    QHBoxLayout* makeButtons();

    KdPushButton* m_pCancel = nullptr;
    KdPushButton* m_pApply = nullptr;
};
