#pragma once

#include <KdWidgets/KdWidget.h>
#include <Studio/StudioPlayer.h>

class KdLabel;
class StudioIconButton;

/** Play, pause and stop for a player, its place in the take, and whether it is muted. */
class StudioTransport : public KdWidget
{
    Q_OBJECT

public:
    /** @param player must outlive the widget */
    explicit StudioTransport(StudioPlayer* player, QWidget* parent = nullptr);

    void setDuration(qint64 milliseconds);
    /** Whether there is something to play. */
    void setPlayable(bool playable);
    void RetranslateUi() override;

public Q_SLOTS:
    void togglePlay();

private:
    void layOut();
    void showState();
    void showTime();
    void showMuted();

    StudioPlayer* m_pPlayer;
    StudioIconButton* m_pPlay;
    StudioIconButton* m_pStop;
    KdLabel* m_pTime;
    QWidget* m_pMuted;
    KdLabel* m_pMutedIcon;
    KdLabel* m_pMutedText;
    qint64 m_duration = 0;
    bool m_playable = false;
};
