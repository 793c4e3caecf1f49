#include "ClipFeeder.h"

#include <KdVBLModel/KdAudioChain.h>
#include <Support/FlashBeep.h>

#include <gst/video/video.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace {

constexpr qint64 kBlock = 480;
constexpr qint64 kStepNs = 1000000;
/** So that a picture that is taken as the flash begins has it. */
constexpr double kRounding = 1e-6;
constexpr int kBright = 235;
constexpr int kDark = 16;

} // namespace

ClipFeeder::ClipFeeder(KdWebcamTake& take, const KdWebcamTakeFormat& format)
    : hasSound(format.hasSound)
    , cameraRate(format.frameRate)
    , m_take(take)
    , m_size(format.size)
    , m_soundNs(static_cast<double>(m_beginNs))
    , m_pictureNs(static_cast<double>(m_beginNs))
    , m_bright(TestPicture::plain(m_size, kBright))
    , m_dark(TestPicture::plain(m_size, kDark))
{
}

void ClipFeeder::run(double seconds)
{
    const qint64 end = m_nowNs + static_cast<qint64>(seconds * 1e9);
    for (; m_nowNs < end; m_nowNs += kStepNs) {
        while (m_nowNs >= m_heldUpUntilNs &&
               m_soundNs + static_cast<double>(kBlock) * 1e9 / soundRate <=
                   static_cast<double>(m_nowNs)) {
            giveSound();
        }
        while (m_pictureNs + static_cast<double>(cameraDelayNs) <= static_cast<double>(m_nowNs)) {
            givePicture();
        }
    }
}

void ClipFeeder::giveSound()
{
    KdGstBufferPtr buffer(gst_buffer_new_allocate(
        nullptr, static_cast<gsize>(kBlock) * KdAudioChain::kBytesPerFrame, nullptr));
    GstMapInfo map;
    gst_buffer_map(buffer.get(), &map, GST_MAP_WRITE);
    auto* samples = reinterpret_cast<float*>(map.data);
    const double begin = (m_soundNs - static_cast<double>(m_beginNs)) * 1e-9;
    for (int i = 0; i < kBlock; ++i) {
        const float value = FlashBeep::sample(begin + i / soundRate);
        *samples++ = value;
        *samples++ = value;
    }
    gst_buffer_unmap(buffer.get(), &map);
    m_soundNs += static_cast<double>(kBlock) * 1e9 / soundRate;
    if (hasSound) {
        if (const auto due = m_take.feedSound(buffer.get(), m_nowNs)) {
            times.append(*due);
        }
    }
}

void ClipFeeder::givePicture()
{
    const auto taken = static_cast<qint64>(m_pictureNs);
    const double second = (m_pictureNs - static_cast<double>(m_beginNs)) * 1e-9;
    m_pictureNs += 1e9 / cameraRate;
    if (!hasPictures) {
        return;
    }
    wait();
    m_random = m_random * 1664525U + 1013904223U;
    const qint64 error =
        jitterNs > 0 ? static_cast<qint64>(m_random >> 8) % (2 * jitterNs) - jitterNs : 0;
    GstBuffer* const picture = (FlashBeep::isFlash(second + kRounding) ? m_bright : m_dark).get();
    ++picturesGiven;
    if (const auto due = m_take.feedPicture(picture, taken + error)) {
        times.append(*due);
    }
}

// Time here runs faster than the encoder does, which a real camera's does not.
void ClipFeeder::wait() const
{
    constexpr int kFew = 4;
    constexpr std::chrono::milliseconds kShort(1500);
    while ((m_take.waitingPictures() > kFew || m_take.backlog() > kShort) && !m_take.mustEnd()) {
        // Until the condition holds; the take has no signal for it, as no camera would wait.
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

KdGstBufferPtr TestPicture::plain(QSize size, int y, int u, int v)
{
    return painted(size, [=](int plane, int, int) { return plane == 0 ? y : plane == 1 ? u : v; });
}

KdGstBufferPtr TestPicture::painted(QSize size,
                                    const std::function<int(int plane, int x, int y)>& value)
{
    GstVideoInfo info;
    gst_video_info_set_format(&info, GST_VIDEO_FORMAT_I420, static_cast<guint>(size.width()),
                              static_cast<guint>(size.height()));
    KdGstBufferPtr buffer(gst_buffer_new_allocate(nullptr, GST_VIDEO_INFO_SIZE(&info), nullptr));
    GstVideoFrame frame;
    gst_video_frame_map(&frame, &info, buffer.get(), GST_MAP_WRITE);
    for (int plane = 0; plane < 3; ++plane) {
        auto* const data = static_cast<guint8*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, plane));
        const int stride = GST_VIDEO_FRAME_PLANE_STRIDE(&frame, plane);
        for (int y = 0; y < GST_VIDEO_FRAME_COMP_HEIGHT(&frame, plane); ++y) {
            for (int x = 0; x < GST_VIDEO_FRAME_COMP_WIDTH(&frame, plane); ++x) {
                data[y * stride + x] = static_cast<guint8>(value(plane, x, y));
            }
        }
    }
    gst_video_frame_unmap(&frame);
    return buffer;
}
