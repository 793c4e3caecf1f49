#pragma once

#include <KdWidgets/KdWidget.h>

class KdLabel;

/** What the window shows while no take is chosen: what to do. */
class StudioEmptyState : public KdWidget
{
    Q_OBJECT

public:
    explicit StudioEmptyState(QWidget* parent = nullptr);

    /** Whether there are takes to choose from. */
    void setHasTakes(bool hasTakes);
    void RetranslateUi() override;

private:
    void layOut();
    void refreshIcon();

    KdLabel* m_pIcon;
    KdLabel* m_pHeading;
    KdLabel* m_pSentence;
    bool m_hasTakes = false;
};
