// A camera in the session's video server, as a program of its own, so that it can be killed like a
// plug that is pulled:
//   kd_virtual_camera NODE DESCRIPTION MODE ...
// with MODE as in YUY2:640x480@30, MJPG:1280x720@30000/1001 or YUY2:160x120-1920x1080@5-60. The
// picture is a red, a green and a blue third, with a white square that moves along the lower edge.
// With the MODE "flash" among the others it is black, and white for a moment once a second; the
// microphone NODE_microphone beeps as each flash begins. With the MODE "picture=FILE" it is that
// image, and does not move.
// From SIGUSR1 to SIGUSR2 it gives no picture, like a camera that another program has opened.

#include "BeepingMicrophone.h"
#include "FlashBeepPattern.h"

#include <pipewire/pipewire.h>
#include <spa/param/video/format-utils.h>
#include <spa/param/video/raw-utils.h>
#include <spa/pod/builder.h>

#include <libyuv.h>

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QStringList>
#include <QTextStream>
#include <QVector>

#include <chrono>
#include <csignal>
#include <cstring>

namespace {

struct Mode
{
    QString format;
    spa_rectangle smallest{};
    spa_rectangle largest{};
    spa_fraction slowest{};
    spa_fraction fastest{};
};

const QHash<QString, spa_video_format>& rawFormats()
{
    static const QHash<QString, spa_video_format> formats{
        {QStringLiteral("YUY2"), SPA_VIDEO_FORMAT_YUY2},
        {QStringLiteral("I420"), SPA_VIDEO_FORMAT_I420},
        {QStringLiteral("NV12"), SPA_VIDEO_FORMAT_NV12},
        {QStringLiteral("BGRx"), SPA_VIDEO_FORMAT_BGRx},
        {QStringLiteral("GRAY8"), SPA_VIDEO_FORMAT_GRAY8}};
    return formats;
}

spa_rectangle rectangleFrom(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char('x'));
    return {parts.value(0).toUInt(), parts.value(1).toUInt()};
}

spa_fraction fractionFrom(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char('/'));
    return {parts.value(0).toUInt(), qMax(1U, parts.value(1).toUInt())};
}

Mode modeFrom(const QString& text)
{
    const QStringList parts = text.split(QRegularExpression(QStringLiteral("[:@]")));
    const QStringList sizes = parts.value(1).split(QLatin1Char('-'));
    const QStringList rates = parts.value(2).split(QLatin1Char('-'));
    return {parts.value(0), rectangleFrom(sizes.first()), rectangleFrom(sizes.last()),
            fractionFrom(rates.first()), fractionFrom(rates.last())};
}

void addSize(spa_pod_builder* builder, const Mode& mode)
{
    const bool isFixed = mode.smallest.width == mode.largest.width;
    spa_pod_builder_prop(builder, SPA_FORMAT_VIDEO_size, 0);
    if (isFixed) {
        spa_pod_builder_rectangle(builder, mode.largest.width, mode.largest.height);
        return;
    }
    spa_pod_frame frame{};
    spa_pod_builder_push_choice(builder, &frame, SPA_CHOICE_Range, 0);
    for (const spa_rectangle& size : {mode.largest, mode.smallest, mode.largest}) {
        spa_pod_builder_rectangle(builder, size.width, size.height);
    }
    spa_pod_builder_pop(builder, &frame);
}

void addRate(spa_pod_builder* builder, const Mode& mode)
{
    const bool isFixed =
        mode.slowest.num * mode.fastest.denom == mode.fastest.num * mode.slowest.denom;
    spa_pod_builder_prop(builder, SPA_FORMAT_VIDEO_framerate, 0);
    if (isFixed) {
        spa_pod_builder_fraction(builder, mode.fastest.num, mode.fastest.denom);
        return;
    }
    spa_pod_frame frame{};
    spa_pod_builder_push_choice(builder, &frame, SPA_CHOICE_Range, 0);
    for (const spa_fraction& rate : {mode.fastest, mode.slowest, mode.fastest}) {
        spa_pod_builder_fraction(builder, rate.num, rate.denom);
    }
    spa_pod_builder_pop(builder, &frame);
}

const spa_pod* enumFormat(spa_pod_builder* builder, const Mode& mode)
{
    const bool isRaw = rawFormats().contains(mode.format);
    spa_pod_frame frame{};
    spa_pod_builder_push_object(builder, &frame, SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat);
    spa_pod_builder_prop(builder, SPA_FORMAT_mediaType, 0);
    spa_pod_builder_id(builder, SPA_MEDIA_TYPE_video);
    spa_pod_builder_prop(builder, SPA_FORMAT_mediaSubtype, 0);
    spa_pod_builder_id(builder, isRaw ? SPA_MEDIA_SUBTYPE_raw : SPA_MEDIA_SUBTYPE_mjpg);
    if (isRaw) {
        spa_pod_builder_prop(builder, SPA_FORMAT_VIDEO_format, 0);
        spa_pod_builder_id(builder, rawFormats().value(mode.format));
    }
    addSize(builder, mode);
    addRate(builder, mode);
    return static_cast<const spa_pod*>(spa_pod_builder_pop(builder, &frame));
}

/** What is on the picture, in ARGB. */
class Scene
{
public:
    /** @param still what is to be seen, null for the thirds and their square */
    Scene(QSize size, const QImage& still)
        : m_background(size, QImage::Format_RGB32), m_isStill(!still.isNull())
    {
        if (m_isStill) {
            m_background = still.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            return;
        }
        QPainter painter(&m_background);
        const int third = size.width() / 3;
        painter.fillRect(0, 0, third, size.height(), QColor(220, 30, 30));
        painter.fillRect(third, 0, third, size.height(), QColor(30, 200, 30));
        painter.fillRect(2 * third, 0, size.width(), size.height(), QColor(30, 30, 220));
    }

    /** Instead of all that, a picture that flashes. */
    QImage nextFlash(BeepingMicrophone* microphone)
    {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        const double second = std::chrono::duration<double>(now).count();
        const bool isBright =
            FlashBeep::isFlash(second) && (m_wasBright || microphone->isSteadyAt(second));
        if (isBright && !m_wasBright) {
            microphone->beepAt(second);
        }
        m_wasBright = isBright;
        m_background.fill(isBright ? Qt::white : Qt::black);
        return m_background;
    }

    QImage next()
    {
        if (m_isStill) {
            return m_background;
        }
        QImage picture = m_background;
        const int side = qMax(4, picture.height() / 8);
        const int way = picture.width() - side;
        QPainter(&picture).fillRect(m_count++ * side / 2 % qMax(1, way), picture.height() - side,
                                    side, side, Qt::white);
        return picture;
    }

private:
    QImage m_background;
    const bool m_isStill;
    int m_count = 0;
    bool m_wasBright = false;
};

QByteArray asJpeg(const QImage& picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    picture.save(&buffer, "JPG", 90);
    return bytes;
}

/** Without padding between lines or planes; rows of the packed formats are even. */
QByteArray asRaw(const QImage& picture, spa_video_format format)
{
    const int width = picture.width();
    const int height = picture.height();
    const int pixels = width * height;
    const int chromaWidth = (width + 1) / 2;
    const int chroma = chromaWidth * ((height + 1) / 2);
    const uchar* argb = picture.constBits();
    const int stride = picture.bytesPerLine();
    QByteArray bytes(4 * pixels, '\0');
    auto* to = reinterpret_cast<uchar*>(bytes.data());
    switch (format) {
    case SPA_VIDEO_FORMAT_YUY2:
        libyuv::ARGBToYUY2(argb, stride, to, 2 * width, width, height);
        bytes.resize(2 * pixels);
        break;
    case SPA_VIDEO_FORMAT_I420:
        libyuv::ARGBToI420(argb, stride, to, width, to + pixels, chromaWidth, to + pixels + chroma,
                           chromaWidth, width, height);
        bytes.resize(pixels + 2 * chroma);
        break;
    case SPA_VIDEO_FORMAT_NV12:
        libyuv::ARGBToNV12(argb, stride, to, width, to + pixels, 2 * chromaWidth, width, height);
        bytes.resize(pixels + 2 * chroma);
        break;
    case SPA_VIDEO_FORMAT_GRAY8:
        libyuv::ARGBToI400(argb, stride, to, width, width, height);
        bytes.resize(pixels);
        break;
    default:
        std::memcpy(to, argb, static_cast<std::size_t>(bytes.size()));
        break;
    }
    return bytes;
}

class Camera
{
public:
    /** @param microphone hears the flashes; null for a picture without @param still what it shows
     * in place of the moving picture; may be null */
    Camera(pw_main_loop* loop, QVector<Mode> modes, BeepingMicrophone* microphone,
           const QImage& still)
        : m_loop(pw_main_loop_get_loop(loop))
        , m_modes(std::move(modes))
        , m_microphone(microphone)
        , m_still(still.convertToFormat(QImage::Format_RGB32))
    {
        m_timer = pw_loop_add_timer(m_loop, &Camera::onTimer, this);
        pw_loop_add_signal(m_loop, SIGUSR1, &Camera::onOccupied, this);
        pw_loop_add_signal(m_loop, SIGUSR2, &Camera::onFree, this);
    }

    bool plug(pw_core* core, const char* node, const char* description);

private:
    static void onTimer(void* self, uint64_t)
    {
        auto* camera = static_cast<Camera*>(self);
        if (!camera->m_isOccupied) {
            pw_stream_trigger_process(camera->m_stream);
        }
    }
    static void onStateChanged(void* self, pw_stream_state, pw_stream_state state, const char*)
    {
        static_cast<Camera*>(self)->setRunning(state == PW_STREAM_STATE_STREAMING);
    }
    static void onParamChanged(void* self, uint32_t id, const spa_pod* param)
    {
        if (id == SPA_PARAM_Format && param) {
            static_cast<Camera*>(self)->setFormat(param);
        }
    }
    static void onOccupied(void* self, int) { static_cast<Camera*>(self)->m_isOccupied = true; }
    static void onFree(void* self, int) { static_cast<Camera*>(self)->m_isOccupied = false; }
    static void onProcess(void* self) { static_cast<Camera*>(self)->give(); }

    void setRunning(bool on);
    void setFormat(const spa_pod* param);
    void give();
    QByteArray nextPicture();

    pw_loop* m_loop;
    const QVector<Mode> m_modes;
    BeepingMicrophone* const m_microphone;
    const QImage m_still;
    pw_stream* m_stream = nullptr;
    spa_hook m_listener{};
    spa_source* m_timer = nullptr;
    std::unique_ptr<Scene> m_scene;
    spa_video_format m_format = SPA_VIDEO_FORMAT_UNKNOWN; ///< unknown is JPEG here
    spa_fraction m_rate{30, 1};
    int m_stride = 0;
    bool m_isOccupied = false;
};

bool Camera::plug(pw_core* core, const char* node, const char* description)
{
    static const pw_stream_events events = [] {
        pw_stream_events calls{};
        calls.version = PW_VERSION_STREAM_EVENTS;
        calls.state_changed = &Camera::onStateChanged;
        calls.param_changed = &Camera::onParamChanged;
        calls.process = &Camera::onProcess;
        return calls;
    }();
    m_stream = pw_stream_new(core, node,
                             pw_properties_new(PW_KEY_MEDIA_CLASS, "Video/Source",
                                               PW_KEY_MEDIA_ROLE, "Camera", PW_KEY_NODE_NAME, node,
                                               PW_KEY_NODE_DESCRIPTION, description, nullptr));
    pw_stream_add_listener(m_stream, &m_listener, &events, this);
    QByteArray memory(4096 * m_modes.size(), '\0');
    spa_pod_builder builder =
        SPA_POD_BUILDER_INIT(memory.data(), static_cast<uint32_t>(memory.size()));
    std::vector<const spa_pod*> formats;
    for (const Mode& mode : m_modes) {
        formats.push_back(enumFormat(&builder, mode));
    }
    const auto flags =
        static_cast<pw_stream_flags>(PW_STREAM_FLAG_DRIVER | PW_STREAM_FLAG_MAP_BUFFERS);
    return pw_stream_connect(m_stream, PW_DIRECTION_OUTPUT, PW_ID_ANY, flags, formats.data(),
                             static_cast<uint32_t>(formats.size())) == 0;
}

void Camera::setRunning(bool on)
{
    const auto nanoseconds = on ? static_cast<long>(1e9 * m_rate.denom / qMax(1U, m_rate.num)) : 0L;
    timespec interval{0, qMin(nanoseconds, 999999999L)};
    pw_loop_update_timer(m_loop, m_timer, &interval, &interval, false);
}

void Camera::setFormat(const spa_pod* param)
{
    uint32_t type = 0;
    uint32_t subtype = 0;
    spa_format_parse(param, &type, &subtype);
    spa_rectangle size{};
    m_format = SPA_VIDEO_FORMAT_UNKNOWN;
    if (subtype == SPA_MEDIA_SUBTYPE_raw) {
        spa_video_info_raw raw{};
        spa_format_video_raw_parse(param, &raw);
        m_format = raw.format;
        size = raw.size;
        m_rate = raw.framerate;
    } else {
        spa_video_info_mjpg jpeg{};
        spa_format_video_mjpg_parse(param, &jpeg);
        size = jpeg.size;
        m_rate = jpeg.framerate;
    }
    m_scene = std::make_unique<Scene>(
        QSize(static_cast<int>(size.width), static_cast<int>(size.height)), m_still);
    m_stride = m_format == SPA_VIDEO_FORMAT_YUY2   ? static_cast<int>(2 * size.width)
               : m_format == SPA_VIDEO_FORMAT_BGRx ? static_cast<int>(4 * size.width)
                                                   : static_cast<int>(size.width);
    std::array<char, 1024> memory{};
    spa_pod_builder builder = SPA_POD_BUILDER_INIT(memory.data(), memory.size());
    const auto* buffers = static_cast<const spa_pod*>(spa_pod_builder_add_object(
        &builder, SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers, SPA_PARAM_BUFFERS_buffers,
        SPA_POD_CHOICE_RANGE_Int(8, 2, 16), SPA_PARAM_BUFFERS_blocks, SPA_POD_Int(1),
        SPA_PARAM_BUFFERS_size, SPA_POD_Int(static_cast<int>(4 * size.width * size.height)),
        SPA_PARAM_BUFFERS_stride, SPA_POD_Int(m_stride)));
    pw_stream_update_params(m_stream, &buffers, 1);
}

QByteArray Camera::nextPicture()
{
    const QImage picture = m_microphone ? m_scene->nextFlash(m_microphone) : m_scene->next();
    return m_format == SPA_VIDEO_FORMAT_UNKNOWN ? asJpeg(picture) : asRaw(picture, m_format);
}

void Camera::give()
{
    pw_buffer* buffer = pw_stream_dequeue_buffer(m_stream);
    if (!buffer) {
        return;
    }
    spa_data& data = buffer->buffer->datas[0];
    const QByteArray picture = m_scene ? nextPicture() : QByteArray();
    const auto size = qMin(static_cast<uint32_t>(picture.size()), data.maxsize);
    if (data.data) {
        std::memcpy(data.data, picture.constData(), size);
    }
    data.chunk->offset = 0;
    data.chunk->size = size;
    data.chunk->stride = m_stride;
    pw_stream_queue_buffer(m_stream, buffer);
}

void quit(void* loop, int)
{
    pw_main_loop_quit(static_cast<pw_main_loop*>(loop));
}

/** Takes "picture=FILE" out of the modes. @return the image, null when there is none. */
QImage takePicture(QStringList* modes)
{
    const QRegularExpression form(QStringLiteral("^picture=(.+)$"));
    const int index = modes->indexOf(form);
    return index < 0 ? QImage() : QImage(form.match(modes->takeAt(index)).captured(1));
}

int usage()
{
    QTextStream(stderr) << "usage: kd_virtual_camera NODE DESCRIPTION MODE ...\n";
    return 2;
}

} // namespace

int main(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(QString::fromUtf8(argv[i]));
    }
    if (arguments.size() < 3) {
        return usage();
    }
    const QByteArray node = arguments.takeFirst().toUtf8();
    const QByteArray description = arguments.takeFirst().toUtf8();
    const bool isFlashing = arguments.removeAll(QStringLiteral("flash")) > 0;
    const QImage still = takePicture(&arguments);
    QVector<Mode> modes;
    for (const QString& text : qAsConst(arguments)) {
        modes.append(modeFrom(text));
    }
    pw_init(nullptr, nullptr);
    pw_main_loop* loop = pw_main_loop_new(nullptr);
    pw_loop_add_signal(pw_main_loop_get_loop(loop), SIGTERM, quit, loop);
    BeepingMicrophone microphone;
    // Before any other thread, which would get the signals.
    Camera camera(loop, modes, isFlashing ? &microphone : nullptr, still);
    pw_context* context = pw_context_new(pw_main_loop_get_loop(loop), nullptr, 0);
    pw_core* core = pw_context_connect(context, nullptr, 0);
    const bool isHeard =
        core && (!isFlashing || microphone.plug(core, (node + "_microphone").constData(),
                                                (description + " Microphone").constData()));
    if (!isHeard || !camera.plug(core, node.constData(), description.constData())) {
        QTextStream(stderr) << "kd_virtual_camera: the video server does not answer\n";
        return 1;
    }
    return pw_main_loop_run(loop) == 0 ? 0 : 1;
}
