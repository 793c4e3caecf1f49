#include <KdRecord/KdWebcamTakeReport.h>

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

class Texts
{
    Q_DECLARE_TR_FUNCTIONS(KdWebcamTakeReport)
};

QString backgroundText(KdVBLMODEL::_KdCaptureRecordBackgroundMode background)
{
    switch (background) {
    case KdVBLMODEL::fcbmRemove:
        return Texts::tr("remove");
    case KdVBLMODEL::fcbmBlur:
        return Texts::tr("blur");
    default:
        return QStringLiteral("");
    }
}

QString shapeText(KdVBLMODEL::_KdCaptureRecordShape shape)
{
    switch (shape) {
    case KdVBLMODEL::fcrsCircle:
        return Texts::tr("circle");
    case KdVBLMODEL::fcrsSquare:
        return Texts::tr("square");
    default:
        return QStringLiteral("");
    }
}

QString asText(const QJsonObject& object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson());
}

} // namespace

QString KdWebcamTakeReport::fileInfo(const Values& values)
{
    const QJsonObject object{
        {QStringLiteral("video_resolution"),
         QStringLiteral("%1x%2").arg(values.resolution.width()).arg(values.resolution.height())},
        {QStringLiteral("frame_rate"), QStringLiteral("%1fps").arg(values.frameRate)},
        {QStringLiteral("record_type"), QStringLiteral("camera_record")},
        {QStringLiteral("file_duration"), values.fileDuration},
        {QStringLiteral("device_name"), values.deviceName},
        // Hosts read this name as it stands.
        {QStringLiteral("camera_record_backgroud"), backgroundText(values.background)},
        {QStringLiteral("camera_record_shape"), shapeText(values.shape)},
        {QStringLiteral("is_use_mirror"), values.isMirrored},
        {QStringLiteral("is_camera_zoom"), values.isZoomed},
    };
    return asText(object);
}

QString KdWebcamTakeReport::fileExportInfo()
{
    return asText({
        {QStringLiteral("file_type"), QStringLiteral("video")},
        {QStringLiteral("file_format"), QStringLiteral("MP4")},
        {QStringLiteral("video_codec"), QStringLiteral("H264")},
        {QStringLiteral("video_muxer"), QStringLiteral("MP4")},
    });
}
