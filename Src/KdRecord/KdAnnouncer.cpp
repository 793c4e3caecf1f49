#include "KdAnnouncer.h"

#include "KdRecordAccessibility.h"

#include <QAccessible>
#include <QEvent>

KdAnnouncer::KdAnnouncer(QWidget* panel) : QWidget(panel)
{
    KdRecordAccessibility::install();
    setObjectName(QStringLiteral("KdAnnouncer"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    // Not hidden: what is not on the screen is not read out.
    setFixedSize(1, 1);
}

KdAnnouncer::~KdAnnouncer() = default;

void KdAnnouncer::tellCountdownStopped()
{
    tell(QT_TR_NOOP("Countdown stopped"));
}

void KdAnnouncer::tellStarted()
{
    tell(QT_TR_NOOP("Recording started"));
}

void KdAnnouncer::tellResumed()
{
    tell(QT_TR_NOOP("Recording resumed"));
}

void KdAnnouncer::tellStopped()
{
    tell(QT_TR_NOOP("Recording stopped"));
}

void KdAnnouncer::tellNoDevice()
{
    tell(QT_TR_NOOP("No device is connected"));
}

void KdAnnouncer::tell(const char* news)
{
    m_news = news;
    setAccessibleName(tr(news));
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void KdAnnouncer::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange && m_news) {
        setAccessibleName(tr(m_news));
    }
    QWidget::changeEvent(event);
}
