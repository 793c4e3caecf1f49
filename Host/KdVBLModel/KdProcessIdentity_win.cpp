#include "KdProcessIdentity.h"

#include <QSysInfo>

#include <qt_windows.h>

KdProcessIdentity KdProcessIdentity::ofId(qint64 id)
{
    KdProcessIdentity identity;
    identity.id = id;
    const HANDLE process =
        OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(id));
    if (!process) {
        return identity;
    }
    FILETIME created = {};
    FILETIME exited = {};
    FILETIME kernel = {};
    FILETIME user = {};
    DWORD exitCode = 0;
    if (GetProcessTimes(process, &created, &exited, &kernel, &user) &&
        GetExitCodeProcess(process, &exitCode) && exitCode == STILL_ACTIVE) {
        const quint64 ticks =
            (quint64(created.dwHighDateTime) << 32) | quint64(created.dwLowDateTime);
        identity.started = QString::number(ticks);
    }
    CloseHandle(process);
    return identity;
}

QString KdProcessIdentity::scope()
{
    return QString::fromLatin1(QSysInfo::machineUniqueId());
}
