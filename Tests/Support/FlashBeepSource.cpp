#include "FlashBeepSource.h"

FlashBeepSource::FlashBeepSource(const QStringList& modes)
    : m_clock(QStringLiteral("flash_clock"), QStringLiteral("Clock"))
    , m_camera(QStringLiteral("flash"), QStringLiteral("Flash"),
               modes + QStringList(QStringLiteral("flash")))
{
}

bool FlashBeepSource::plug()
{
    return m_clock.plug() && m_camera.plug() && m_clock.hear(QStringLiteral("flash_microphone"));
}
