#include <Studio/StudioDeviceRows.h>

#include <KdWidgets/KdText.h>

#include <algorithm>

using namespace KdVBLMODEL;

namespace {

bool isSame(const _KdCaptureDevInf& a, const _KdCaptureDevInf& b)
{
    return a.devType == b.devType && a.id == b.id;
}

bool contains(const StudioDeviceRows::Devices& devices, const _KdCaptureDevInf& device)
{
    return std::any_of(devices.begin(), devices.end(), [&device](const _KdCaptureDevInf& listed) {
        return isSame(listed, device);
    });
}

StudioDeviceRow row(const _KdCaptureDevInf& device, StudioDeviceRow::State state)
{
    return {KdText::singleLine(device.name), state};
}

} // namespace

QVector<StudioDeviceRow> StudioDeviceRows::of(const Devices& devices,
                                              const _KdCaptureDevInf& current)
{
    QVector<StudioDeviceRow> rows;
    for (const _KdCaptureDevInf& device : devices) {
        rows.append(row(device, isSame(device, current) ? StudioDeviceRow::Current
                                                        : StudioDeviceRow::Listed));
    }
    if (current.devType != kdtNone && !contains(devices, current)) {
        rows.append(row(current, StudioDeviceRow::Lost));
    }
    return rows;
}

_KdCaptureDevInf StudioDeviceRows::firstMissing(const Devices& from, const Devices& in)
{
    const auto missing =
        std::find_if(in.begin(), in.end(),
                     [&from](const _KdCaptureDevInf& device) { return !contains(from, device); });
    return missing == in.end() ? _KdCaptureDevInf() : *missing;
}
