#include <Studio/StudioTransport.h>

#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdSkinManager.h>
#include <Studio/StudioIconButton.h>
#include <Studio/StudioPaint.h>
#include <Studio/StudioTake.h>

#include <QHBoxLayout>

StudioTransport::StudioTransport(StudioPlayer* player, QWidget* parent)
    : KdWidget(parent)
    , m_pPlayer(player)
    , m_pPlay(new StudioIconButton(QStringLiteral("Studio_Play"), QStringLiteral("play"), this))
    , m_pStop(new StudioIconButton(QStringLiteral("Studio_Stop"), QStringLiteral("stop"), this))
    , m_pTime(new KdLabel(this))
    , m_pMuted(new QWidget(this))
    , m_pMutedIcon(new KdLabel(m_pMuted))
    , m_pMutedText(new KdLabel(m_pMuted))
{
    layOut();
    connect(m_pPlay, &QToolButton::clicked, this, &StudioTransport::togglePlay);
    connect(m_pStop, &QToolButton::clicked, player, &StudioPlayer::stop);
    connect(player, &StudioPlayer::stateChanged, this, &StudioTransport::showState);
    connect(player, &StudioPlayer::positionChanged, this, &StudioTransport::showTime);
    connect(player, &StudioPlayer::mutedChanged, this, &StudioTransport::showMuted);
    connect(KdSkin::KdSkinManager::instance(), &KdSkin::KdSkinManager::skinChanged, this,
            &StudioTransport::showMuted);
    StudioTransport::RetranslateUi();
}

void StudioTransport::layOut()
{
    m_pTime->setObjectName(QStringLiteral("Studio_Time"));
    m_pMuted->setObjectName(QStringLiteral("Studio_Muted"));
    auto* const muted = new QHBoxLayout(m_pMuted);
    muted->setContentsMargins(8, 0, 8, 0);
    muted->setSpacing(4);
    muted->addWidget(m_pMutedIcon);
    muted->addWidget(m_pMutedText);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(m_pPlay);
    row->addWidget(m_pStop);
    row->addSpacing(4);
    row->addWidget(m_pTime);
    row->addStretch(1);
    row->addWidget(m_pMuted);
}

void StudioTransport::setDuration(qint64 milliseconds)
{
    m_duration = milliseconds;
    showTime();
}

void StudioTransport::setPlayable(bool playable)
{
    m_playable = playable;
    showState();
}

void StudioTransport::RetranslateUi()
{
    m_pStop->setMeaning(tr("Stop"));
    m_pMutedText->setText(tr("Muted by the recorder"));
    showState();
    showTime();
    showMuted();
}

void StudioTransport::togglePlay()
{
    if (m_pPlayer->state() == StudioPlayer::State::Playing) {
        m_pPlayer->pause();
    } else {
        m_pPlayer->play();
    }
}

void StudioTransport::showState()
{
    const bool playing = m_pPlayer->state() == StudioPlayer::State::Playing;
    m_pPlay->setIconName(playing ? QStringLiteral("pause") : QStringLiteral("play"));
    m_pPlay->setMeaning(playing ? tr("Pause") : tr("Play"));
    m_pPlay->setEnabled(m_playable);
    m_pStop->setEnabled(m_playable && m_pPlayer->state() != StudioPlayer::State::Stopped);
}

void StudioTransport::showTime()
{
    m_pTime->setText(QStringLiteral("%1 / %2").arg(formatTakeLength(m_pPlayer->positionMs()),
                                                   formatTakeLength(m_duration)));
}

void StudioTransport::showMuted()
{
    m_pMutedIcon->setPixmap(StudioPaint::pixmap(
        QStringLiteral("muted"), 16, StudioPaint::skin(KdSkin::Warn), devicePixelRatioF()));
    m_pMuted->setVisible(m_pPlayer->isMuted());
}
