#include <Studio/StudioPlayer.h>

#include <KdCore/KdBaseLog.h>
#include <Studio/StudioGst.h>

#include <gst/app/gstappsink.h>

#include <algorithm>

namespace {

/** Smooth enough for a playhead, cheap enough to look at the bus as well. */
constexpr int kPollMs = 40;
/** Twice for each picture of the usual 30 a second, so that none comes more than half a picture
 * late. */
constexpr int kPicturePollMs = 16;
/** playbin's flags for pictures and sound. */
constexpr int kPictureAndSound = 0x1 | 0x2;

} // namespace

/** playbin with sinks of our own, so that no window can ever open. Gone means silent: its
 * destruction ends the streaming threads. */
class StudioPlayer::Pipeline
{
public:
    Pipeline(const QString& sinkName, const QString& path);

    bool isUsable() const { return m_missing.isEmpty(); }
    QString missing() const { return m_missing; }
    bool set(GstState state);
    void setMuted(bool muted)
    {
        g_object_set(m_playbin.get(), "mute", muted ? TRUE : FALSE, nullptr);
    }
    /** Where to jump once the file is open. */
    void seek(qint64 milliseconds);
    qint64 positionMs() const;
    StudioGst::Message nextMessage();
    /** @return the newest picture that was not taken yet; null when there is none */
    QImage nextPicture();

private:
    void addPictureSink();

    StudioGst::Pipeline m_playbin;
    GstAppSink* m_pictures = nullptr; ///< owned by the playbin
    QString m_missing;
    qint64 m_pendingSeek = -1;
};

StudioPlayer::Pipeline::Pipeline(const QString& sinkName, const QString& path)
    : m_playbin(gst_element_factory_make("playbin", nullptr))
{
    const QByteArray sinkFactory =
        sinkName.isEmpty() ? QByteArray("autoaudiosink") : sinkName.toLatin1();
    GstElement* const sink = gst_element_factory_make(sinkFactory.constData(), nullptr);
    if (!m_playbin || !sink) {
        m_missing = QString::fromLatin1(m_playbin ? sinkFactory : QByteArray("playbin"));
        return;
    }
    g_object_set(m_playbin.get(), "flags", kPictureAndSound, "audio-sink", sink, "uri",
                 StudioGst::fileUri(path).toLatin1().constData(), nullptr);
    addPictureSink();
}

void StudioPlayer::Pipeline::addPictureSink()
{
    GstElement* const sink = gst_element_factory_make("appsink", nullptr);
    if (!sink) {
        m_missing = QStringLiteral("appsink");
        return;
    }
    m_pictures = GST_APP_SINK(sink);
    GstCaps* const caps = StudioGst::pictureCaps();
    // One picture waits, and a newer one takes its place: who looks late must not slow the sound.
    g_object_set(sink, "caps", caps, "max-buffers", 1U, "drop", TRUE, "emit-signals", FALSE, "sync",
                 TRUE, nullptr);
    gst_caps_unref(caps);
    g_object_set(m_playbin.get(), "video-sink", sink, nullptr);
}

QImage StudioPlayer::Pipeline::nextPicture()
{
    // What a jump in the pause leads to; asking for the next picture would throw it away.
    StudioGst::Sample sample(gst_app_sink_try_pull_preroll(m_pictures, 0));
    if (!sample) {
        sample.reset(gst_app_sink_try_pull_sample(m_pictures, 0));
    }
    return sample ? StudioGst::toImage(sample.get()) : QImage();
}

bool StudioPlayer::Pipeline::set(GstState state)
{
    return gst_element_set_state(m_playbin.get(), state) != GST_STATE_CHANGE_FAILURE;
}

void StudioPlayer::Pipeline::seek(qint64 milliseconds)
{
    const auto flags = static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE);
    const bool done = gst_element_seek_simple(m_playbin.get(), GST_FORMAT_TIME, flags,
                                              milliseconds * GST_MSECOND);
    m_pendingSeek = done ? -1 : milliseconds;
}

qint64 StudioPlayer::Pipeline::positionMs() const
{
    gint64 position = 0;
    if (m_pendingSeek >= 0) {
        return m_pendingSeek;
    }
    const bool known =
        gst_element_query_position(m_playbin.get(), GST_FORMAT_TIME, &position) != FALSE;
    return known ? static_cast<qint64>(GST_TIME_AS_MSECONDS(position)) : 0;
}

StudioGst::Message StudioPlayer::Pipeline::nextMessage()
{
    const auto wanted =
        static_cast<GstMessageType>(GST_MESSAGE_ERROR | GST_MESSAGE_EOS | GST_MESSAGE_ASYNC_DONE);
    const StudioGst::Bus bus(gst_element_get_bus(m_playbin.get()));
    StudioGst::Message message(gst_bus_pop_filtered(bus.get(), wanted));
    if (message && GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_ASYNC_DONE &&
        m_pendingSeek >= 0) {
        seek(m_pendingSeek);
    }
    return message;
}

StudioPlayer::StudioPlayer(QObject* parent, const QString& sinkName)
    : QObject(parent), m_sinkName(sinkName)
{
    m_poll.setInterval(kPollMs);
    m_poll.setTimerType(Qt::PreciseTimer);
    connect(&m_poll, &QTimer::timeout, this, &StudioPlayer::poll);
    m_picturePoll.setInterval(kPicturePollMs);
    m_picturePoll.setTimerType(Qt::PreciseTimer);
    connect(&m_picturePoll, &QTimer::timeout, this, &StudioPlayer::pollPicture);
}

StudioPlayer::~StudioPlayer() = default;

void StudioPlayer::setFile(const QString& path)
{
    stop();
    m_file = path;
}

qint64 StudioPlayer::positionMs() const
{
    return m_pipeline ? m_pipeline->positionMs() : m_startAt;
}

void StudioPlayer::play()
{
    if (m_file.isEmpty() || m_state == State::Playing || !ensurePipeline()) {
        return;
    }
    if (!m_pipeline->set(GST_STATE_PLAYING)) {
        poll(); // the bus says it better, mostly
        if (m_pipeline) {
            fail([] { return tr("The sound output cannot be opened."); });
        }
        return;
    }
    setState(State::Playing);
    m_poll.start();
    m_picturePoll.start();
}

void StudioPlayer::pause()
{
    if (m_state == State::Playing) {
        m_pipeline->set(GST_STATE_PAUSED);
        setState(State::Paused);
    }
}

void StudioPlayer::stop()
{
    m_poll.stop();
    m_picturePoll.stop();
    m_pipeline.reset();
    m_startAt = 0;
    if (m_state != State::Stopped) {
        setState(State::Stopped);
        Q_EMIT positionChanged(0);
        Q_EMIT pictureChanged(QImage());
    }
}

void StudioPlayer::seek(qint64 milliseconds)
{
    const qint64 target = std::max<qint64>(0, milliseconds);
    if (m_pipeline) {
        m_pipeline->seek(target);
    } else {
        m_startAt = target;
    }
    Q_EMIT positionChanged(target);
}

void StudioPlayer::setMuted(bool muted)
{
    if (m_muted == muted) {
        return;
    }
    m_muted = muted;
    if (m_pipeline) {
        m_pipeline->setMuted(muted);
    }
    Q_EMIT mutedChanged(muted);
}

bool StudioPlayer::ensurePipeline()
{
    if (m_pipeline) {
        return true;
    }
    if (!StudioGst::start()) {
        fail([] { return tr("The media framework cannot be started."); });
        return false;
    }
    m_pipeline = std::make_unique<Pipeline>(m_sinkName, m_file);
    if (!m_pipeline->isUsable()) {
        fail([missing = m_pipeline->missing()] {
            return tr("Nothing can be played: the element \"%1\" is missing.").arg(missing);
        });
        return false;
    }
    m_pipeline->setMuted(m_muted);
    if (m_startAt > 0) {
        m_pipeline->seek(m_startAt);
    }
    return true;
}

void StudioPlayer::setState(State state)
{
    m_state = state;
    Q_EMIT stateChanged(state);
}

void StudioPlayer::poll()
{
    while (m_pipeline) {
        const StudioGst::Message message = m_pipeline->nextMessage();
        if (!message) {
            break;
        }
        if (GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_ERROR) {
            fail([text = StudioGst::errorText(message.get())] { return text; });
            return;
        }
        if (GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_EOS) {
            stop();
            return;
        }
    }
    if (m_pipeline) {
        Q_EMIT positionChanged(positionMs());
    }
}

void StudioPlayer::pollPicture()
{
    const QImage picture = m_pipeline ? m_pipeline->nextPicture() : QImage();
    if (!picture.isNull()) {
        Q_EMIT pictureChanged(picture);
    }
}

void StudioPlayer::fail(const KdLiveText& text)
{
    KdBaseLog::write(KdBaseLog::Info, {"Host/Studio/StudioPlayer", "StudioPlayer::fail"},
                     "Playing %s ended: %s", qPrintable(m_file), qPrintable(text.now()));
    stop();
    Q_EMIT failed(text);
}
