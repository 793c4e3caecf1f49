#include <KdVBLModel/KdPictureConverter.h>

#include <KdVBLModel/KdGst.h>

#include <gst/video/video.h>

#include <libyuv.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

/** A picture while it is mapped. */
class Frame
{
public:
    Frame(const GstVideoInfo& info, GstBuffer* buffer, GstMapFlags access)
        : m_isMapped(gst_video_frame_map(&m_frame, &info, buffer, access))
    {
    }
    ~Frame()
    {
        if (m_isMapped) {
            gst_video_frame_unmap(&m_frame);
        }
    }

    bool isMapped() const { return m_isMapped; }
    uint8_t* data(guint plane = 0) const
    {
        return static_cast<uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&m_frame, plane));
    }
    uint8_t* line(guint plane, int y) const
    {
        return data(plane) + static_cast<std::ptrdiff_t>(y) * stride(plane);
    }
    int stride(guint plane = 0) const { return GST_VIDEO_FRAME_PLANE_STRIDE(&m_frame, plane); }
    GstVideoFrame* raw() { return &m_frame; }

private:
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

    GstVideoFrame m_frame{};
    bool m_isMapped;
};

GstVideoInfo i420Info(QSize size)
{
    GstVideoInfo info;
    gst_video_info_set_format(&info, GST_VIDEO_FORMAT_I420, static_cast<guint>(size.width()),
                              static_cast<guint>(size.height()));
    return info;
}

const libyuv::YuvConstants* constantsOf(const GstVideoInfo& info)
{
    const bool isFull = info.colorimetry.range == GST_VIDEO_COLOR_RANGE_0_255;
    switch (info.colorimetry.matrix) {
    case GST_VIDEO_COLOR_MATRIX_BT709:
        return isFull ? &libyuv::kYuvF709Constants : &libyuv::kYuvH709Constants;
    case GST_VIDEO_COLOR_MATRIX_BT2020:
        return isFull ? &libyuv::kYuvV2020Constants : &libyuv::kYuv2020Constants;
    default:
        return isFull ? &libyuv::kYuvJPEGConstants : &libyuv::kYuvI601Constants;
    }
}

void makeOpaque(uchar* argb, int stride, QSize size)
{
    for (int y = 0; y < size.height(); ++y) {
        uchar* line = argb + static_cast<std::ptrdiff_t>(y) * stride;
        for (int x = 0; x < size.width(); ++x) {
            line[4 * x + 3] = 255;
        }
    }
}

} // namespace

class KdPictureConverter::Private
{
public:
    ~Private() { forget(); }

    void forget();
    bool yuvToArgb(const Frame& from, uchar* argb, int stride);
    bool packedYuvToArgb(const Frame& from, uchar* argb, int stride);
    bool rgbToArgb(const Frame& from, uchar* argb, int stride) const;
    bool anyToArgb(Frame* from, uchar* argb, int stride);
    bool isPackedYuv() const;

    GstVideoInfo info{}; ///< of the pictures that come
    bool isKnown = false;
    const libyuv::YuvConstants* constants = nullptr;
    std::vector<uint8_t> planes;           ///< of a packed picture, laid apart
    GstVideoConverter* anything = nullptr; ///< for formats that nothing else knows
    KdGstBufferPtr converted;              ///< by it
    GstVideoInfo convertedInfo{};
    int width() const { return GST_VIDEO_INFO_WIDTH(&info); }
    int height() const { return GST_VIDEO_INFO_HEIGHT(&info); }
};

void KdPictureConverter::Private::forget()
{
    isKnown = false;
    converted.reset();
    if (anything) {
        gst_video_converter_free(anything);
        anything = nullptr;
    }
}

bool KdPictureConverter::Private::isPackedYuv() const
{
    const GstVideoFormat format = GST_VIDEO_INFO_FORMAT(&info);
    return format == GST_VIDEO_FORMAT_YUY2 || format == GST_VIDEO_FORMAT_UYVY;
}

bool KdPictureConverter::Private::yuvToArgb(const Frame& from, uchar* argb, int stride)
{
    const auto planar = [&](auto convert, guint u, guint v) {
        return convert(from.data(0), from.stride(0), from.data(u), from.stride(u), from.data(v),
                       from.stride(v), argb, stride, constants, width(), height()) == 0;
    };
    const auto interleaved = [&](auto convert) {
        return convert(from.data(0), from.stride(0), from.data(1), from.stride(1), argb, stride,
                       constants, width(), height()) == 0;
    };
    switch (GST_VIDEO_INFO_FORMAT(&info)) {
    case GST_VIDEO_FORMAT_I420:
        return planar(libyuv::I420ToARGBMatrix, 1, 2);
    case GST_VIDEO_FORMAT_YV12:
        return planar(libyuv::I420ToARGBMatrix, 2, 1);
    case GST_VIDEO_FORMAT_Y42B:
        return planar(libyuv::I422ToARGBMatrix, 1, 2);
    case GST_VIDEO_FORMAT_Y444:
        return planar(libyuv::I444ToARGBMatrix, 1, 2);
    case GST_VIDEO_FORMAT_NV12:
        return interleaved(libyuv::NV12ToARGBMatrix);
    case GST_VIDEO_FORMAT_NV21:
        return interleaved(libyuv::NV21ToARGBMatrix);
    default:
        return isPackedYuv() && packedYuvToArgb(from, argb, stride);
    }
}

bool KdPictureConverter::Private::packedYuvToArgb(const Frame& from, uchar* argb, int stride)
{
    const bool isYuy2 = GST_VIDEO_INFO_FORMAT(&info) == GST_VIDEO_FORMAT_YUY2;
    if (constants == &libyuv::kYuvI601Constants) {
        // The same picture in a third of the time.
        const auto convert = isYuy2 ? libyuv::YUY2ToARGB : libyuv::UYVYToARGB;
        return convert(from.data(), from.stride(), argb, stride, width(), height()) == 0;
    }
    const int chromaWidth = (width() + 1) / 2;
    const auto luma = static_cast<std::size_t>(width()) * static_cast<std::size_t>(height());
    const auto chroma = static_cast<std::size_t>(chromaWidth) * static_cast<std::size_t>(height());
    planes.resize(luma + 2 * chroma);
    uint8_t* y = planes.data();
    uint8_t* u = y + luma;
    uint8_t* v = u + chroma;
    const auto layApart = isYuy2 ? libyuv::YUY2ToI422 : libyuv::UYVYToI422;
    return layApart(from.data(), from.stride(), y, width(), u, chromaWidth, v, chromaWidth, width(),
                    height()) == 0 &&
           libyuv::I422ToARGBMatrix(y, width(), u, chromaWidth, v, chromaWidth, argb, stride,
                                    constants, width(), height()) == 0;
}

// The names of libyuv read from the highest byte of a word, those of GStreamer from the first in
// memory.
bool KdPictureConverter::Private::rgbToArgb(const Frame& from, uchar* argb, int stride) const
{
    const auto convert = [&](auto function) {
        return function(from.data(), from.stride(), argb, stride, width(), height()) == 0;
    };
    bool isDone = false;
    switch (GST_VIDEO_INFO_FORMAT(&info)) {
    case GST_VIDEO_FORMAT_BGRx:
    case GST_VIDEO_FORMAT_BGRA:
        isDone = convert(libyuv::ARGBCopy);
        break;
    case GST_VIDEO_FORMAT_RGBx:
    case GST_VIDEO_FORMAT_RGBA:
        isDone = convert(libyuv::ABGRToARGB);
        break;
    case GST_VIDEO_FORMAT_xRGB:
    case GST_VIDEO_FORMAT_ARGB:
        isDone = convert(libyuv::BGRAToARGB);
        break;
    case GST_VIDEO_FORMAT_xBGR:
    case GST_VIDEO_FORMAT_ABGR:
        isDone = convert(libyuv::RGBAToARGB);
        break;
    case GST_VIDEO_FORMAT_RGB:
        return convert(libyuv::RAWToARGB);
    case GST_VIDEO_FORMAT_BGR:
        return convert(libyuv::RGB24ToARGB);
    case GST_VIDEO_FORMAT_GRAY8:
        return convert(libyuv::J400ToARGB);
    default:
        return false;
    }
    if (isDone) {
        makeOpaque(argb, stride, QSize(width(), height()));
    }
    return isDone;
}

bool KdPictureConverter::Private::anyToArgb(Frame* from, uchar* argb, int stride)
{
    if (!anything) {
        gst_video_info_set_format(&convertedInfo, GST_VIDEO_FORMAT_BGRx,
                                  static_cast<guint>(width()), static_cast<guint>(height()));
        convertedInfo.fps_n = info.fps_n; // it does not convert rates, and insists on equal ones
        convertedInfo.fps_d = info.fps_d;
        convertedInfo.interlace_mode = info.interlace_mode;
        anything = gst_video_converter_new(&info, &convertedInfo, nullptr);
        converted.reset(
            gst_buffer_new_allocate(nullptr, GST_VIDEO_INFO_SIZE(&convertedInfo), nullptr));
    }
    Frame to(convertedInfo, converted.get(), GST_MAP_READWRITE);
    if (!anything || !to.isMapped()) {
        return false;
    }
    gst_video_converter_frame(anything, from->raw(), to.raw());
    libyuv::ARGBCopy(to.data(), to.stride(), argb, stride, width(), height());
    makeOpaque(argb, stride, QSize(width(), height()));
    return true;
}

KdPictureConverter::KdPictureConverter() : d(std::make_unique<Private>()) {}

KdPictureConverter::~KdPictureConverter() = default;

bool KdPictureConverter::setFormat(const GstCaps* caps)
{
    d->forget();
    d->isKnown = caps && gst_caps_is_fixed(caps) && gst_video_info_from_caps(&d->info, caps) &&
                 GST_VIDEO_INFO_FORMAT(&d->info) != GST_VIDEO_FORMAT_ENCODED;
    if (!d->isKnown) {
        return false;
    }
    const bool saysColours =
        gst_structure_has_field(gst_caps_get_structure(caps, 0), "colorimetry");
    if (GST_VIDEO_INFO_IS_YUV(&d->info) && !saysColours) {
        gst_video_colorimetry_from_string(&d->info.colorimetry, kI420Colours);
    }
    d->constants = constantsOf(d->info);
    return true;
}

QSize KdPictureConverter::size() const
{
    return d->isKnown ? QSize(d->width(), d->height()) : QSize(0, 0);
}

bool KdPictureConverter::toArgb(GstBuffer* picture, uchar* argb, int stride)
{
    if (!d->isKnown || !picture) {
        return false;
    }
    Frame from(d->info, picture, GST_MAP_READ);
    return from.isMapped() &&
           (d->yuvToArgb(from, argb, stride) || d->rgbToArgb(from, argb, stride) ||
            d->anyToArgb(&from, argb, stride));
}

bool KdPictureConverter::givesI420() const
{
    if (!d->isKnown || d->constants != &libyuv::kYuvI601Constants) {
        return false;
    }
    switch (GST_VIDEO_INFO_FORMAT(&d->info)) {
    case GST_VIDEO_FORMAT_I420:
    case GST_VIDEO_FORMAT_NV12:
    case GST_VIDEO_FORMAT_YUY2:
    case GST_VIDEO_FORMAT_UYVY:
        return true;
    default:
        return false;
    }
}

bool KdPictureConverter::toI420(GstBuffer* picture, GstBuffer* i420)
{
    if (!givesI420() || !picture) {
        return false;
    }
    const Frame from(d->info, picture, GST_MAP_READ);
    const Frame to(i420Info(size()), i420, GST_MAP_WRITE);
    if (!from.isMapped() || !to.isMapped()) {
        return false;
    }
    const auto packed = [&](auto convert) {
        return convert(from.data(), from.stride(), to.data(0), to.stride(0), to.data(1),
                       to.stride(1), to.data(2), to.stride(2), d->width(), d->height()) == 0;
    };
    switch (GST_VIDEO_INFO_FORMAT(&d->info)) {
    case GST_VIDEO_FORMAT_YUY2:
        return packed(libyuv::YUY2ToI420);
    case GST_VIDEO_FORMAT_UYVY:
        return packed(libyuv::UYVYToI420);
    case GST_VIDEO_FORMAT_NV12:
        return libyuv::NV12ToI420(from.data(0), from.stride(0), from.data(1), from.stride(1),
                                  to.data(0), to.stride(0), to.data(1), to.stride(1), to.data(2),
                                  to.stride(2), d->width(), d->height()) == 0;
    default:
        return libyuv::I420Copy(from.data(0), from.stride(0), from.data(1), from.stride(1),
                                from.data(2), from.stride(2), to.data(0), to.stride(0), to.data(1),
                                to.stride(1), to.data(2), to.stride(2), d->width(),
                                d->height()) == 0;
    }
}

GstBuffer* KdPictureConverter::createI420(QSize size)
{
    const GstVideoInfo info = i420Info(size);
    return gst_buffer_new_allocate(nullptr, GST_VIDEO_INFO_SIZE(&info), nullptr);
}

bool KdPictureConverter::argbToI420(const uchar* argb, int stride, bool isOpaque, QSize size,
                                    GstBuffer* i420)
{
    const Frame to(i420Info(size), i420, GST_MAP_WRITE);
    if (!to.isMapped()) {
        return false;
    }
    const auto convert = [&](const uint8_t* from, int fromStride, int y, int lines) {
        libyuv::ARGBToI420(from, fromStride, to.line(0, y), to.stride(0), to.line(1, y / 2),
                           to.stride(1), to.line(2, y / 2), to.stride(2), size.width(), lines);
    };
    if (isOpaque) {
        convert(argb, stride, 0, size.height());
        return true;
    }
    // Two lines at a time, which share their chroma.
    std::vector<uint8_t> overBlack(static_cast<std::size_t>(8 * size.width()));
    for (int y = 0; y < size.height(); y += 2) {
        const int lines = std::min(2, size.height() - y);
        libyuv::ARGBAttenuate(argb + static_cast<std::ptrdiff_t>(y) * stride, stride,
                              overBlack.data(), 4 * size.width(), size.width(), lines);
        convert(overBlack.data(), 4 * size.width(), y, lines);
    }
    return true;
}
