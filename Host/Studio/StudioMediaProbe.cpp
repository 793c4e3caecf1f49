#include <Studio/StudioMediaProbe.h>

#include <Studio/StudioGst.h>

#include <QCoreApplication>
#include <QFileInfo>

#include <gst/pbutils/pbutils.h>

namespace {

constexpr GstClockTime kTimeout = 5 * GST_SECOND;

/** @param problem a text of this file, before its translation, or words of the media framework */
StudioMediaInfo unreadable(const char* problem)
{
    StudioMediaInfo info;
    info.problem = QString::fromUtf8(problem);
    return info;
}

/** What the first sound stream is like. */
void describeSound(GstDiscovererInfo* found, StudioMediaInfo* info)
{
    GList* const streams = gst_discoverer_info_get_audio_streams(found);
    if (streams) {
        const auto* const sound = static_cast<GstDiscovererAudioInfo*>(streams->data);
        info->channels = static_cast<int>(gst_discoverer_audio_info_get_channels(sound));
        info->sampleRate = static_cast<int>(gst_discoverer_audio_info_get_sample_rate(sound));
    }
    gst_discoverer_stream_info_list_free(streams);
}

/** What the first moving picture is like. */
void describePicture(GstDiscovererInfo* found, StudioMediaInfo* info)
{
    GList* const streams = gst_discoverer_info_get_video_streams(found);
    for (const GList* stream = streams; stream && !info->picture.isValid(); stream = stream->next) {
        const auto* const picture = static_cast<GstDiscovererVideoInfo*>(stream->data);
        if (!gst_discoverer_video_info_is_image(picture)) {
            info->picture = QSize(static_cast<int>(gst_discoverer_video_info_get_width(picture)),
                                  static_cast<int>(gst_discoverer_video_info_get_height(picture)));
        }
    }
    gst_discoverer_stream_info_list_free(streams);
}

StudioMediaInfo describe(GstDiscovererInfo* found)
{
    StudioMediaInfo info;
    const GstClockTime duration = gst_discoverer_info_get_duration(found);
    describeSound(found, &info);
    describePicture(found, &info);
    if (info.channels == 0 && !info.picture.isValid()) {
        return unreadable(QT_TRANSLATE_NOOP("StudioMediaProbe",
                                            "There is neither sound nor a moving picture in it."));
    }
    if (!GST_CLOCK_TIME_IS_VALID(duration) || duration == 0) {
        return unreadable(QT_TRANSLATE_NOOP("StudioMediaProbe", "Its length is unknown."));
    }
    info.durationMs = static_cast<qint64>(GST_TIME_AS_MSECONDS(duration));
    info.readable = true;
    return info;
}

StudioMediaInfo discover(const QString& path)
{
    GError* error = nullptr;
    GstDiscoverer* const discoverer = gst_discoverer_new(kTimeout, &error);
    if (!discoverer) {
        g_clear_error(&error);
        return unreadable(
            QT_TRANSLATE_NOOP("StudioMediaProbe", "The media framework cannot look into files."));
    }
    GstDiscovererInfo* const found = gst_discoverer_discover_uri(
        discoverer, StudioGst::fileUri(path).toLatin1().constData(), &error);
    const bool understood = found && gst_discoverer_info_get_result(found) == GST_DISCOVERER_OK;
    StudioMediaInfo info =
        understood ? describe(found)
                   : unreadable(error ? error->message
                                      : QT_TRANSLATE_NOOP("StudioMediaProbe",
                                                          "It is neither sound nor a clip."));
    g_clear_error(&error);
    if (found) {
        gst_discoverer_info_unref(found);
    }
    g_object_unref(discoverer);
    return info;
}

} // namespace

StudioMediaInfo probeMedia(const QString& path)
{
    const QFileInfo file(path);
    if (!file.isFile()) {
        return unreadable(QT_TRANSLATE_NOOP("StudioMediaProbe", "There is no such file."));
    }
    if (!file.isReadable()) {
        return unreadable(QT_TRANSLATE_NOOP("StudioMediaProbe", "It may not be read."));
    }
    if (file.size() == 0) {
        return unreadable(QT_TRANSLATE_NOOP("StudioMediaProbe", "It is empty."));
    }
    if (!StudioGst::start()) {
        return unreadable(
            QT_TRANSLATE_NOOP("StudioMediaProbe", "The media framework cannot be started."));
    }
    return discover(path);
}

QString mediaProblemText(const QString& problem)
{
    return QCoreApplication::translate("StudioMediaProbe", problem.toUtf8().constData());
}
