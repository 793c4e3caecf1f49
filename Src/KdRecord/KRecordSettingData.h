#pragma once

#include <QString>

/** The recorder choices that survive a restart of the host. A plain value. */
struct KRecordSettingData
{
    QString selectedAudioDeviceName;  ///< the chosen microphone, empty: none
    QString selectedCameraDeviceName; ///< the chosen camera, empty: none
    qint32 cameraWidth = -1;          ///< pixels, -1: not set
    qint32 cameraHeight = -1;         ///< pixels, -1: not set
    double frameRate = -1.0;          ///< frames per second, -1.0: not set
    qint32 countdown = 0;             ///< seconds before a recording starts
    bool recordPreview = true;        ///< the webcam's record preview
};
