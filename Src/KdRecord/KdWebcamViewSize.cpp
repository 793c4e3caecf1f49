#include <KdRecord/KdWebcamViewSize.h>

namespace {

constexpr QSize kWanted(800, 900);
/** What stays free on a screen that is too small. */
constexpr int kFree = 64;

} // namespace

QSize KdWebcamViewSize::forScreen(const QSize& available)
{
    if (available.width() >= kWanted.width() && available.height() >= kWanted.height()) {
        return kWanted;
    }
    return (available - QSize(kFree, kFree)).boundedTo(kWanted).expandedTo(QSize(0, 0));
}
