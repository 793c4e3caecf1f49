#include <KdRecord/KdDeviceChoice.h>

#include <algorithm>

int KdDeviceChoice::rowToSelect(const QStringList& names, const QString& remembered,
                                const QString& stored)
{
    const QString& wanted = remembered.isEmpty() ? stored : remembered;
    return wanted.isEmpty() ? 0 : std::max(names.lastIndexOf(wanted), 0);
}
