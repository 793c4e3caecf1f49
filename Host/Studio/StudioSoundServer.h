#pragma once

#include <QProcessEnvironment>
#include <QStringList>

/** Telling a machine without a sound server from one without a microphone. Any thread. */
namespace StudioSoundServer {

/** The local sockets at which a PulseAudio or PipeWire server of this session would listen. */
QStringList socketPaths(const QProcessEnvironment& environment);

/**
 * @return whether a sound server answers. Also true where that cannot be told: a server on another
 * machine, another operating system.
 */
bool isReachable(const QProcessEnvironment& environment);

} // namespace StudioSoundServer
