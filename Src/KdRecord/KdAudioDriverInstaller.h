#pragma once

#include <KdRecord/KdRecordExport.h>

/**
 * Whether the driver that audio capture needs is there, and its installation. The engine brings
 * what it needs, so both answers stand without a look at the system; a host may ask before every
 * recording. On any thread.
 */
struct KDRECORD_EXPORT KdAudioDriverInstaller
{
    /** @return true. */
    static bool isAudioDriverInstalled();
    /** Installs nothing and shows nothing. @return true. */
    static bool autoInstallAudioDriver();
};
