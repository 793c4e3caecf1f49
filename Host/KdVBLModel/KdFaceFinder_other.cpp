#include <KdVBLModel/KdFaceFinder.h>

QStringList KdFaceFinder::modelFolders()
{
    return {QStringLiteral("/usr/share/opencv4"), QStringLiteral("/usr/local/share/opencv4"),
            QStringLiteral("/usr/share/opencv")};
}
