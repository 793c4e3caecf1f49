#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QString>

/**
 * The devices of this engine are files: each *.wav of a folder is a microphone that plays it over
 * and over, each *.png a webcam that shows it. The folder stands in the environment variable
 * FILE_ENGINE_DEVICES.
 */
namespace FileDevices {

/** @return the devices of a kind in the order of their names; none for other kinds. */
QList<KdVBLMODEL::_KdCaptureDevInf> list(KdVBLMODEL::_KdDevType type);

/** @return whether the device is still what it was when it was listed; not the empty record. */
bool isThere(const KdVBLMODEL::_KdCaptureDevInf& device);

/** @return the samples of a microphone, 16 bits, behind the 44 bytes of its header. */
QByteArray sound(const KdVBLMODEL::_KdCaptureDevInf& device);
/** @return the picture of a webcam; null when it cannot be read. */
QImage picture(const KdVBLMODEL::_KdCaptureDevInf& device);

} // namespace FileDevices
