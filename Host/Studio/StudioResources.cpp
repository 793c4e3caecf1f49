#include <Studio/StudioResources.h>

#include <QtGlobal>

void initStudioResources()
{
    Q_INIT_RESOURCE(Studio);
}
