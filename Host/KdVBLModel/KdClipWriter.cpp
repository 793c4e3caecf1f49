#include <KdVBLModel/KdClipWriter.h>

#include <KdVBLModel/KdH264Encoder.h>
#include <KdVBLModel/KdTakeOutput.h>
#include <KdVBLModel/KdTakeSound.h>

#include <algorithm>
#include <atomic>

namespace {

constexpr int kPictureTrack = 0;
constexpr int kSoundTrack = 1;

/** Of pictures that wait: enough for a moment in which the machine does something else. */
constexpr quint64 kMostWaitingBytes = 160ULL * 1024 * 1024;
constexpr int kLeastWaiting = 8;

QSize sizeOf(const GstVideoInfo& video)
{
    return {GST_VIDEO_INFO_WIDTH(&video), GST_VIDEO_INFO_HEIGHT(&video)};
}

double rateOf(const GstVideoInfo& video)
{
    return static_cast<double>(GST_VIDEO_INFO_FPS_N(&video)) / GST_VIDEO_INFO_FPS_D(&video);
}

} // namespace

class KdClipWriter::Private
{
public:
    ~Private();

    bool open(const QString& path, bool takeAgain, QString* error);
    QString text() const;
    QVector<KdTakeTrack> createTracks(QString* error);
    void startPool();

    Format format;
    KdGstCapsPtr videoCaps;
    KdGstPtr<GstBufferPool> pool;
    KdTakeOutput output;
    KdTakeSound sound;
    std::atomic<qint64> pictures{0};
    bool wasOpened = false;
};

KdClipWriter::Private::~Private()
{
    if (pool) {
        gst_buffer_pool_set_active(pool.get(), FALSE);
    }
}

bool KdClipWriter::Private::open(const QString& path, bool takeAgain, QString* error)
{
    if (format.hasSound && !sound.open(format.sound, error)) {
        return false;
    }
    videoCaps.reset(gst_video_info_to_caps(&format.video));
    KdTakeRecord record;
    record.takePath = path;
    record.kind = KdTakeRecord::Kind::Webcam;
    record.format = text();
    if (!output.claim(record, takeAgain, error) || !output.start(createTracks(error), error)) {
        return false;
    }
    startPool();
    return true;
}

QString KdClipWriter::Private::text() const
{
    const QSize size = sizeOf(format.video);
    const QString picture = QStringLiteral("H.264 %1x%2, %3 pictures a second")
                                .arg(size.width())
                                .arg(size.height())
                                .arg(rateOf(format.video), 0, 'g', 4);
    return format.hasSound ? picture + QStringLiteral(", ") + sound.text() : picture;
}

QVector<KdTakeTrack> KdClipWriter::Private::createTracks(QString* error)
{
    KdTakeTrack picture;
    picture.input = videoCaps.get();
    picture.isQueued = true;
    picture.isSkippable = true;
    picture.chain = KdH264Encoder::createChain(sizeOf(format.video), rateOf(format.video), error);
    if (picture.chain.isEmpty() || !format.hasSound) {
        return picture.chain.isEmpty() ? QVector<KdTakeTrack>() : QVector<KdTakeTrack>{picture};
    }
    const QVector<KdTakeTrack> sounds = sound.createTracks(error);
    if (sounds.isEmpty()) {
        std::for_each(picture.chain.begin(), picture.chain.end(), gst_object_unref);
        return {};
    }
    return {picture, sounds.first()};
}

void KdClipWriter::Private::startPool()
{
    pool.reset(gst_buffer_pool_new());
    GstStructure* const config = gst_buffer_pool_get_config(pool.get());
    gst_buffer_pool_config_set_params(config, videoCaps.get(),
                                      static_cast<guint>(GST_VIDEO_INFO_SIZE(&format.video)), 0, 0);
    gst_buffer_pool_set_config(pool.get(), config);
    gst_buffer_pool_set_active(pool.get(), TRUE);
}

KdClipWriter::KdClipWriter() : d(std::make_unique<Private>()) {}

KdClipWriter::~KdClipWriter()
{
    finish();
}

bool KdClipWriter::open(const QString& path, const Format& format, bool takeAgain, QString* error)
{
    if (d->wasOpened) {
        *error = QStringLiteral("The writer was used before.");
        return false;
    }
    d->wasOpened = true;
    d->format = format;
    return d->open(path, takeAgain, error);
}

GstCaps* KdClipWriter::soundCaps() const
{
    return d->sound.caps();
}

int KdClipWriter::samplerate() const
{
    return d->sound.format().samplerate;
}

int KdClipWriter::soundDelay() const
{
    return d->sound.delay();
}

int KdClipWriter::bitrate() const
{
    return KdH264Encoder::bitrateFor(sizeOf(d->format.video), rateOf(d->format.video)) +
           (d->format.hasSound ? d->sound.format().bitrate : 0);
}

KdGstBufferPtr KdClipWriter::newPicture()
{
    GstBuffer* picture = nullptr;
    gst_buffer_pool_acquire_buffer(d->pool.get(), &picture, nullptr);
    return KdGstBufferPtr(picture);
}

bool KdClipWriter::pushPicture(KdGstBufferPtr picture, qint64 atNs, qint64 durationNs)
{
    GST_BUFFER_PTS(picture.get()) = static_cast<GstClockTime>(atNs);
    GST_BUFFER_DTS(picture.get()) = GST_CLOCK_TIME_NONE;
    GST_BUFFER_DURATION(picture.get()) = static_cast<GstClockTime>(durationNs);
    ++d->pictures;
    return d->output.push(kPictureTrack, picture.release());
}

bool KdClipWriter::pushSound(KdGstBufferPtr sound)
{
    d->sound.stamp(sound.get());
    return d->output.push(kSoundTrack, sound.release());
}

bool KdClipWriter::pushSilence(qint64 frames)
{
    KdGstBufferPtr silence = d->sound.silence(frames);
    return silence && pushSound(std::move(silence));
}

qint64 KdClipWriter::soundFrames() const
{
    return d->sound.frames();
}

qint64 KdClipWriter::picturesPushed() const
{
    return d->pictures;
}

qint64 KdClipWriter::picturesSkipped() const
{
    return d->output.skipped();
}

int KdClipWriter::waitingPictures() const
{
    const quint64 size = GST_VIDEO_INFO_SIZE(&d->format.video);
    return static_cast<int>(d->output.rawBacklog(kPictureTrack) / size);
}

int KdClipWriter::mostWaitingPictures() const
{
    // More than a second of them would not be encoded in the time that finish() has.
    const int room = static_cast<int>(kMostWaitingBytes / GST_VIDEO_INFO_SIZE(&d->format.video));
    return std::max(kLeastWaiting, std::min(room, static_cast<int>(rateOf(d->format.video))));
}

std::chrono::nanoseconds KdClipWriter::backlog() const
{
    const std::chrono::nanoseconds pictures = d->output.backlog(kPictureTrack);
    return d->format.hasSound ? std::max(pictures, d->output.backlog(kSoundTrack)) : pictures;
}

bool KdClipWriter::hasFailed() const
{
    return d->output.hasFailed();
}

QString KdClipWriter::error() const
{
    return d->output.error();
}

void KdClipWriter::fail(const QString& error)
{
    d->output.fail(error);
}

KdClipWriter::Result KdClipWriter::finish()
{
    const bool hasMedia = d->pictures > 0;
    KdGstBufferPtr tail = hasMedia && d->format.hasSound ? d->sound.tail() : nullptr;
    if (tail) {
        d->output.push(kSoundTrack, tail.release());
    }
    return d->output.finish(hasMedia);
}
