#pragma once

/** What KdWebcamRecorderHelper::slotWebcamRecorderOrderType() is told to do. Others are ignored. */
namespace KdWebcamOrder {

enum Order : int
{
    Init = 0,   ///< make the recorder and read the devices
    Uninit = 1, ///< detach from the recorder and release it
    StartTake = 2,
    PauseTake = 3,
    ResumeTake = 4,
    StopTake = 5,
    StartPreview = 6,
    StopPreview = 7,
    StopEverything = 8, ///< the preview, then the take
    CheckDevices = 9    ///< answered by two responses, one for the webcam, one for the audio input
};

} // namespace KdWebcamOrder

/** What KdWebcamRecorderHelper::sigRecorderResponeType() tells. */
namespace KdWebcamResponse {

enum Response : int
{
    WebcamOccupied = 0, ///< another application holds the webcam
    WebcamSwitched = 1, ///< and its default resolution applied
    AudioInputSwitched = 2,
    WebcamGone = 3,     ///< found by CheckDevices; there are no resolutions and rates now
    AudioInputGone = 4, ///< found by CheckDevices
    WebcamListChanged = 5,
    AudioInputListChanged = 6,
    WebcamPresent = 7,        ///< found by CheckDevices; also when no webcam is current
    AudioInputPresent = 8,    ///< found by CheckDevices; also when no audio input is current
    ResolutionSwitched = 9,   ///< whether the engine accepted it or not
    WebcamGoneInTake = 10,    ///< during a countdown or a take
    AudioInputGoneInTake = 11 ///< during a countdown or a take
};

} // namespace KdWebcamResponse
