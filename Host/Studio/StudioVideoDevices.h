#pragma once

#include <QString>

/** The system's own video devices. Any thread. */
namespace StudioVideoDevices {

/**
 * @param folder where devices are, each as "video" and a number
 * @return whether one of them takes pictures: there are others, which play, decode, or carry what a
 * camera says beside its pictures. Opens them and blocks shortly.
 */
bool hasCamera(const QString& folder = QStringLiteral("/dev"));

} // namespace StudioVideoDevices
