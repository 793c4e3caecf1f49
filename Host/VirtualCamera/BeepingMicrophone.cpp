#include "BeepingMicrophone.h"

#include "FlashBeepPattern.h"

#include <spa/param/audio/format-utils.h>
#include <spa/pod/builder.h>

#include <algorithm>
#include <array>
#include <chrono>

namespace {

constexpr uint32_t kRate = 48000;
constexpr uint32_t kChannels = 2;
constexpr uint32_t kStride = kChannels * sizeof(float);

double monotonicSeconds()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

} // namespace

bool BeepingMicrophone::plug(pw_core* core, const char* node, const char* description)
{
    static const pw_stream_events events = [] {
        pw_stream_events calls{};
        calls.version = PW_VERSION_STREAM_EVENTS;
        calls.process = &BeepingMicrophone::onProcess;
        return calls;
    }();
    m_stream = pw_stream_new(core, node,
                             pw_properties_new(PW_KEY_MEDIA_CLASS, "Audio/Source", PW_KEY_NODE_NAME,
                                               node, PW_KEY_NODE_DESCRIPTION, description,
                                               "session.suspend-timeout-seconds", "0", nullptr));
    pw_stream_add_listener(m_stream, &m_listener, &events, this);
    std::array<char, 1024> memory{};
    spa_pod_builder builder = SPA_POD_BUILDER_INIT(memory.data(), memory.size());
    spa_audio_info_raw raw{};
    raw.format = SPA_AUDIO_FORMAT_F32;
    raw.rate = kRate;
    raw.channels = kChannels;
    raw.position[0] = SPA_AUDIO_CHANNEL_FL;
    raw.position[1] = SPA_AUDIO_CHANNEL_FR;
    const spa_pod* format = spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &raw);
    const auto flags =
        static_cast<pw_stream_flags>(PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS);
    return pw_stream_connect(m_stream, PW_DIRECTION_OUTPUT, PW_ID_ANY, flags, &format, 1) == 0;
}

// Block follows block without a gap, save after the server has let some time pass.
double BeepingMicrophone::beginOf(uint32_t frames)
{
    constexpr double kMostOff = 0.03;
    constexpr double kRecovery = 2.5;
    const double length = static_cast<double>(frames) / kRate;
    const double heard = monotonicSeconds() - length;
    const bool isGap = std::abs(heard - m_next) >= kMostOff;
    if (isGap) {
        m_steadyFrom = heard + kRecovery;
    }
    const double begin = isGap ? heard : m_next;
    m_next = begin + length;
    return begin;
}

void BeepingMicrophone::give()
{
    pw_buffer* buffer = pw_stream_dequeue_buffer(m_stream);
    if (!buffer) {
        return;
    }
    spa_data& data = buffer->buffer->datas[0];
    const uint32_t room = data.maxsize / kStride;
    const auto asked = static_cast<uint32_t>(buffer->requested);
    const uint32_t frames = asked > 0 ? std::min(asked, room) : std::min(480U, room);
    const double begin = beginOf(frames);
    const double beep = m_beep;
    auto* samples = static_cast<float*>(data.data);
    for (uint32_t i = 0; samples && i < frames; ++i) {
        const float value = FlashBeep::tone(begin + static_cast<double>(i) / kRate - beep);
        *samples++ = value;
        *samples++ = value;
    }
    data.chunk->offset = 0;
    data.chunk->stride = kStride;
    data.chunk->size = frames * kStride;
    pw_stream_queue_buffer(m_stream, buffer);
}
