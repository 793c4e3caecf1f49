#include <KdVBLModel/KdWebcamTake.h>

#include <KdVBLModel/KdAudioChain.h>
#include <KdVBLModel/KdClipWriter.h>
#include <KdVBLModel/KdDiskReserve.h>
#include <KdVBLModel/KdH264Encoder.h>
#include <KdVBLModel/KdPictureFeed.h>
#include <KdVBLModel/KdPictureFrame.h>
#include <KdVBLModel/KdPictureShaper.h>
#include <KdVBLModel/KdSoundFeed.h>
#include <KdVBLModel/KdTakeTimeline.h>

#include <KdCore/KdBaseLog.h>

#include <condition_variable>
#include <mutex>

namespace {

/** Without a picture taken into the file for so long, the machine does not record. */
constexpr qint64 kMostLostNs = 60000000000;

KdBaseLog::Source here(const char* function, int line = __builtin_LINE())
{
    return {"Host/KdVBLModel/KdWebcamTake", function, line};
}

bool isUsable(QSize size)
{
    return size.width() >= KdH264Encoder::kLeastSide &&
           size.height() >= KdH264Encoder::kLeastSide &&
           size.width() <= KdH264Encoder::kMostWidth && size.height() <= KdH264Encoder::kMostHeight;
}

/** H.264 has a colour for each two lines and columns. */
QSize evenSize(QSize size)
{
    return {size.width() / 2 * 2, size.height() / 2 * 2};
}

GstVideoInfo videoInfo(QSize size, KdFrameRate rate, const QString& colorimetry)
{
    GstVideoInfo info;
    gst_video_info_set_format(&info, GST_VIDEO_FORMAT_I420, static_cast<guint>(size.width()),
                              static_cast<guint>(size.height()));
    GST_VIDEO_INFO_FPS_N(&info) = rate.numerator;
    GST_VIDEO_INFO_FPS_D(&info) = rate.denominator;
    if (!colorimetry.isEmpty()) {
        gst_video_colorimetry_from_string(&info.colorimetry, qUtf8Printable(colorimetry));
    }
    return info;
}

uint8_t blackLuma(const GstVideoInfo& info)
{
    return info.colorimetry.range == GST_VIDEO_COLOR_RANGE_0_255 ? 0 : 16;
}

bool isDiskNearlyFull(const QString& path, qint64 bytesToFinish)
{
    const qint64 free = KdDiskReserve::freeBytesAt(path);
    return free >= 0 && free < bytesToFinish;
}

} // namespace

class KdWebcamTake::Private
{
public:
    bool open(QString* error);
    bool prepareFormats(QString* error);

    // With m_mutex held.
    std::optional<qint64> placeOf(qint64 captureNs);
    bool hasSoundFor(qint64 captureNs);
    bool mayTakePicture(qint64 captureNs);
    void show(KdGstBufferPtr picture, qint64 fileNs);
    std::optional<qint64> dueTime();
    void close();

    KdGstBufferPtr shaped(const KdPictureFrame& picture, bool isFlipped,
                          KdVBLMODEL::_KdCaptureRecordShape shape);
    qint64 bytesToFinish() const;
    void logEnd(KdTakeResult result) const;

    QString path;
    KdWebcamTakeFormat format;
    qint64 intervalMs = 100;
    GstVideoInfo input;
    KdClipWriter::Format output;
    KdClipWriter writer;
    std::unique_ptr<KdPictureShaper> shaper;

    mutable std::mutex mutex; ///< guards what follows, and the writer's pushes
    std::condition_variable changed;
    std::optional<bool> outcome; ///< of finish()
    std::unique_ptr<KdTakeTimeline> timeline;
    std::unique_ptr<KdPictureFeed> pictures;
    std::unique_ptr<KdSoundFeed> sound; ///< null without sound
    bool isFlipped = false;
    KdVBLMODEL::_KdCaptureRecordShape shape = KdVBLMODEL::fcrsSquare;
    bool isClosed = true;
    bool hasComplained = false;
    qint64 firstCaptureNs = -1;
    qint64 lastTakenNs = 0; ///< capture of the last picture that was taken
    qint64 lost = 0;
    qint64 recordedNs = 0;
    qint64 toldIntervals = 0;
};

bool KdWebcamTake::Private::prepareFormats(QString* error)
{
    const std::optional<KdFrameRate> rate = KdFrameRate::of(format.frameRate);
    if (!rate) {
        *error = QStringLiteral("%1 pictures a second cannot be recorded.").arg(format.frameRate);
        return false;
    }
    if (!isUsable(format.size)) {
        *error = QStringLiteral("Pictures of %1x%2 cannot be recorded.")
                     .arg(format.size.width())
                     .arg(format.size.height());
        return false;
    }
    const QSize size = evenSize(format.size);
    input = videoInfo(format.size, *rate, format.colorimetry);
    output.video = videoInfo(size, *rate, format.colorimetry);
    output.video.colorimetry = input.colorimetry; // an odd line less may mean another one
    output.hasSound = format.hasSound;
    output.sound = format.sound;
    shaper = std::make_unique<KdPictureShaper>(size, blackLuma(input));
    pictures = std::make_unique<KdPictureFeed>(writer, *rate);
    timeline = std::make_unique<KdTakeTimeline>(format.hasSound ? KdAudioChain::kSamplerate : 0);
    return true;
}

bool KdWebcamTake::Private::open(QString* error)
{
    if (!prepareFormats(error)) {
        return false;
    }
    if (isDiskNearlyFull(path, bytesToFinish())) {
        *error = QStringLiteral("The disk is full; there is no room for %1.").arg(path);
        return false;
    }
    if (!writer.open(path, output, format.takeAgain, error)) {
        return false;
    }
    if (format.hasSound) {
        sound = KdSoundFeed::create(writer, *timeline);
        if (!sound) {
            *error = QStringLiteral("The audio format is unusable.");
            writer.finish();
            return false;
        }
    }
    return true;
}

qint64 KdWebcamTake::Private::bytesToFinish() const
{
    return KdDiskReserve::bytesToFinishClip(recordedNs / 1000000, writer.picturesPushed(),
                                            format.hasSound ? writer.samplerate() : 0,
                                            writer.bitrate());
}

// The file begins with a picture whose sound is at hand; what came before either is left out. A
// microphone that stays silent is not waited for.
std::optional<qint64> KdWebcamTake::Private::placeOf(qint64 captureNs)
{
    if (sound && timeline->hasBegun()) {
        sound->fillUntil(captureNs);
    }
    if (!timeline->hasBegun() && sound && !hasSoundFor(captureNs)) {
        return std::nullopt;
    }
    const qint64 position = timeline->capturedAt(captureNs);
    if (!timeline->isRecorded(position)) {
        return std::nullopt;
    }
    if (!timeline->hasBegun()) {
        timeline->begin(position);
        if (sound) {
            sound->begin();
        }
    }
    return timeline->fileNs(position);
}

bool KdWebcamTake::Private::hasSoundFor(qint64 captureNs)
{
    if (firstCaptureNs < 0) {
        firstCaptureNs = captureNs;
    }
    const bool isHeld =
        timeline->soundReceived() > 0 && timeline->capturedAt(captureNs) >= sound->firstHeld();
    if (!isHeld && captureNs - firstCaptureNs >= KdTakeTimeline::kPatienceNs) {
        sound->fillUntil(captureNs);
        return timeline->capturedAt(captureNs) >= sound->firstHeld();
    }
    return isHeld;
}

// Pictures that wait take room, and have to be encoded before the take can end.
bool KdWebcamTake::Private::mayTakePicture(qint64 captureNs)
{
    if (writer.waitingPictures() < writer.mostWaitingPictures()) {
        lastTakenNs = captureNs;
        return true;
    }
    ++lost;
    if (captureNs - lastTakenNs > kMostLostNs) {
        writer.fail(QStringLiteral("The machine is too slow for the recording."));
    }
    return false;
}

KdGstBufferPtr KdWebcamTake::Private::shaped(const KdPictureFrame& picture, bool flipped,
                                             KdVBLMODEL::_KdCaptureRecordShape wanted)
{
    KdGstBufferPtr buffer = writer.newPicture();
    KdPictureFrame target(output.video, buffer.get(), GST_MAP_WRITE);
    if (!target.isValid()) {
        return nullptr;
    }
    shaper->shape(picture.constPlanes(), target.planes(), flipped, wanted);
    return buffer;
}

void KdWebcamTake::Private::show(KdGstBufferPtr picture, qint64 fileNs)
{
    pictures->show(std::move(picture), fileNs);
    changed.notify_all();
}

std::optional<qint64> KdWebcamTake::Private::dueTime()
{
    recordedNs = std::max(recordedNs, sound ? sound->endNs() : pictures->endNs());
    const qint64 msec = recordedNs / 1000000;
    const qint64 intervals = msec / intervalMs;
    if (pictures->isEmpty() || intervals == toldIntervals) {
        return std::nullopt;
    }
    toldIntervals = intervals;
    return msec;
}

void KdWebcamTake::Private::close()
{
    if (isClosed) {
        return;
    }
    isClosed = true;
    if (pictures->isEmpty()) {
        return;
    }
    recordedNs = pictures->endNs();
    if (sound) {
        recordedNs = sound->finish(std::max(recordedNs, sound->endNs()));
    }
    pictures->finish(recordedNs);
}

void KdWebcamTake::Private::logEnd(KdTakeResult result) const
{
    if (!pictures) {
        return; // it never began
    }
    const char* end = result == KdTakeResult::Finished ? "finished"
                      : result == KdTakeResult::Kept   ? "kept up to a failure"
                                                       : "no file";
    KdBaseLog::write(KdBaseLog::Info, here("KdWebcamTake::finish"),
                     "%s: %lld ms, %lld pictures, %lld left out as the machine was too slow, %s",
                     qUtf8Printable(path), static_cast<long long>(recordedNs / 1000000),
                     static_cast<long long>(writer.picturesPushed()), static_cast<long long>(lost),
                     end);
}

KdWebcamTake::KdWebcamTake() : d(std::make_unique<Private>()) {}

KdWebcamTake::~KdWebcamTake()
{
    finish();
}

bool KdWebcamTake::open(const QString& path, const KdWebcamTakeFormat& format, int intervalMs)
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    QString error;
    if (d->path.isNull()) {
        d->path = path.isNull() ? QStringLiteral("") : path;
        d->format = format;
        d->intervalMs = std::max(1, intervalMs);
        d->isFlipped = format.isFlipped;
        d->shape = format.shape;
        d->isClosed = !d->open(&error);
    } else {
        error = QStringLiteral("The take was used before.");
    }
    if (!error.isEmpty()) {
        KdBaseLog::write(KdBaseLog::Error, here("KdWebcamTake::open"), "%s", qUtf8Printable(error));
    }
    return error.isEmpty();
}

QString KdWebcamTake::path() const
{
    return d->path;
}

GstCaps* KdWebcamTake::pictureCaps(const KdWebcamTakeFormat& format)
{
    const KdFrameRate rate = KdFrameRate::of(format.frameRate).value_or(KdFrameRate());
    const GstVideoInfo info = videoInfo(format.size, rate, format.colorimetry);
    return gst_video_info_to_caps(&info);
}

std::optional<qint64> KdWebcamTake::feedPicture(GstBuffer* picture, qint64 captureNs)
{
    std::unique_lock<std::mutex> lock(d->mutex);
    if (d->isClosed) {
        return std::nullopt;
    }
    const KdPictureFrame frame(d->input, picture, GST_MAP_READ);
    if (!frame.isValid()) {
        if (!std::exchange(d->hasComplained, true)) {
            KdBaseLog::write(KdBaseLog::Error, here("KdWebcamTake::feedPicture"),
                             "A picture that is none of %dx%d is left out.", d->format.size.width(),
                             d->format.size.height());
        }
        return std::nullopt;
    }
    const std::optional<qint64> place = d->placeOf(captureNs);
    if (!place || !d->mayTakePicture(captureNs)) {
        return d->dueTime();
    }
    const bool isFlipped = d->isFlipped;
    const KdVBLMODEL::_KdCaptureRecordShape shape = d->shape;
    lock.unlock();
    KdGstBufferPtr shaped = d->shaped(frame, isFlipped, shape);
    lock.lock();
    if (d->isClosed || !shaped) {
        return std::nullopt;
    }
    d->show(std::move(shaped), *place);
    return d->dueTime();
}

std::optional<qint64> KdWebcamTake::feedSound(GstBuffer* sound, qint64 nowNs)
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    GstMapInfo map;
    if (d->isClosed || !d->sound || !sound || !gst_buffer_map(sound, &map, GST_MAP_READ)) {
        return std::nullopt;
    }
    d->sound->feed(map.data, static_cast<qint64>(map.size) / KdAudioChain::kBytesPerFrame, nowNs);
    gst_buffer_unmap(sound, &map);
    d->pictures->bridge(d->sound->endNs());
    return d->dueTime();
}

void KdWebcamTake::pause(qint64 nowNs)
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    if (d->timeline) {
        d->timeline->pause(nowNs);
    }
}

void KdWebcamTake::resume(qint64 nowNs)
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    if (d->timeline) {
        d->timeline->resume(nowNs);
    }
}

void KdWebcamTake::close()
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    d->close();
}

void KdWebcamTake::setFlip(bool isFlipped)
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    d->isFlipped = isFlipped;
}

void KdWebcamTake::setShape(KdVBLMODEL::_KdCaptureRecordShape shape)
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    d->shape = shape;
}

qint64 KdWebcamTake::recordedMs() const
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    return d->recordedNs / 1000000;
}

qint64 KdWebcamTake::lostPictures() const
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    return d->lost;
}

int KdWebcamTake::waitingPictures() const
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    return d->isClosed ? 0 : d->writer.waitingPictures();
}

std::chrono::milliseconds KdWebcamTake::backlog() const
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    return d->isClosed ? std::chrono::milliseconds(0)
                       : std::chrono::duration_cast<std::chrono::milliseconds>(d->writer.backlog());
}

bool KdWebcamTake::hasPicture() const
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    return d->pictures && !d->pictures->isEmpty();
}

bool KdWebcamTake::waitForPicture(std::chrono::milliseconds patience)
{
    std::unique_lock<std::mutex> lock(d->mutex);
    return d->changed.wait_for(lock, patience,
                               [this] { return d->pictures && !d->pictures->isEmpty(); });
}

bool KdWebcamTake::mustEnd()
{
    if (d->writer.hasFailed()) {
        return true;
    }
    qint64 needed = 0;
    qint64 recordedMs = 0;
    {
        const std::lock_guard<std::mutex> lock(d->mutex);
        needed = d->bytesToFinish();
        recordedMs = d->recordedNs / 1000000;
    }
    // Without the lock: a disk that does not answer holds neither the pictures nor a pause up.
    if (!isDiskNearlyFull(d->path, needed)) {
        return false;
    }
    KdBaseLog::write(KdBaseLog::Error, here("KdWebcamTake::mustEnd"),
                     "The disk is full; the take %s ends after %lld ms.", qUtf8Printable(d->path),
                     static_cast<long long>(recordedMs));
    return true;
}

bool KdWebcamTake::finish()
{
    if (const std::optional<bool> known = waitForOutcome(std::chrono::milliseconds(0))) {
        return *known;
    }
    close();
    const KdTakeResult result = d->writer.finish();
    const std::lock_guard<std::mutex> lock(d->mutex);
    d->lost += d->writer.picturesSkipped();
    d->logEnd(result);
    d->outcome = result != KdTakeResult::Lost;
    d->changed.notify_all();
    return *d->outcome;
}

std::optional<bool> KdWebcamTake::waitForOutcome(std::chrono::milliseconds patience)
{
    std::unique_lock<std::mutex> lock(d->mutex);
    d->changed.wait_for(lock, patience, [this] { return d->outcome.has_value(); });
    return d->outcome;
}
