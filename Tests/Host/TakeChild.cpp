#include "TakeMaker.h"

#include <KdVBLModel/KdTakeFile.h>
#include <KdVBLModel/KdTakeJournal.h>

#include <QCoreApplication>

#include <gst/gst.h>

#include <cstdio>

// What a test needs another process for:
//   kd_take_child write audio|video FILE   records until it is killed and tells how much it has
//   heard kd_take_child claim FILE               waits for a line, then claims FILE and tells how
//   that went

namespace {

int fail(const QString& error)
{
    std::fprintf(stderr, "%s\n", error.toUtf8().constData());
    return 1;
}

int write(const QString& path, bool hasVideo)
{
    gst_init(nullptr, nullptr);
    KdTakeFile file;
    KdTakeJournal journal;
    KdTakeRecord record;
    QString error;
    record.takePath = path;
    record.kind = hasVideo ? KdTakeRecord::Kind::Webcam : KdTakeRecord::Kind::Audio;
    if (!file.claim(path, &error) || !journal.begin(record, &error)) {
        return fail(error);
    }
    TakeMaker::Take take;
    take.path = path;
    take.hasVideo = hasVideo;
    take.isLive = true;
    take.onCaptured = [](qint64 ms) {
        std::printf("%lld\n", static_cast<long long>(ms));
        std::fflush(stdout);
    };
    return fail(TakeMaker::write(take));
}

int claim(const QString& path)
{
    std::puts("ready");
    std::fflush(stdout);
    std::getchar();
    KdTakeFile file;
    QString error;
    const bool isClaimed = file.claim(path, &error);
    file.begun();
    std::puts(isClaimed ? "claimed" : "refused");
    return isClaimed ? 0 : fail(error);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("write")) {
        return write(arguments.value(3), arguments.value(2) == QLatin1String("video"));
    }
    return claim(arguments.value(2));
}
