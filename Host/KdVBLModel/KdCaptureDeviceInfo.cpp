#include <KdVBLModel/KdCaptureDeviceInfo.h>

QList<KdVBLMODEL::_KdCaptureDevInf> kdInfosOf(const QVector<KdCaptureDevice>& devices)
{
    QList<KdVBLMODEL::_KdCaptureDevInf> infos;
    for (const KdCaptureDevice& device : devices) {
        KdVBLMODEL::_KdCaptureDevInf info;
        info.devType = device.kind;
        info.index = infos.size();
        info.name = device.name;
        info.id = device.id;
        infos.append(info);
    }
    return infos;
}
