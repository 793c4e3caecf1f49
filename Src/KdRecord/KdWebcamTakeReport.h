#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <QSize>
#include <QString>

/** The two JSON texts that go to the host with a finished webcam clip. GUI thread: some values are
 * words in its language. */
namespace KdWebcamTakeReport {

struct Values
{
    QSize resolution;
    double frameRate = 0.0; ///< frames per second
    int fileDuration = 0;   ///< s
    QString deviceName;     ///< may hold anything
    KdVBLMODEL::_KdCaptureRecordBackgroundMode background = KdVBLMODEL::fcbmNone;
    KdVBLMODEL::_KdCaptureRecordShape shape = KdVBLMODEL::fcrsSquare;
    bool isMirrored = false;
    bool isZoomed = false; ///< the dialog's size has been set
};

/** @return "video_resolution", "frame_rate", "record_type", "file_duration", "device_name",
 * "camera_record_backgroud", "camera_record_shape", "is_use_mirror" and "is_camera_zoom", indented.
 */
QString fileInfo(const Values& values);

/** @return "file_type", "file_format", "video_codec" and "video_muxer", always the same, indented.
 */
QString fileExportInfo();

} // namespace KdWebcamTakeReport
