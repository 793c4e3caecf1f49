#include "KdAudioDriverInstaller.h"

bool KdAudioDriverInstaller::isAudioDriverInstalled()
{
    return true;
}

bool KdAudioDriverInstaller::autoInstallAudioDriver()
{
    return true;
}
