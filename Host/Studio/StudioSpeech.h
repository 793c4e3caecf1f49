#pragma once

#include <QByteArray>
#include <QString>

/** Something to hear for a microphone that nobody speaks into. */
namespace StudioSpeech {

/** Samples of a sound like speech in rhythm and level: a WAV file, mono, 16 bits, 24000 Hz. */
QByteArray synthesise(double seconds);

/**
 * Writes spoken words to a WAV file, or the synthesised sound where no speech program is installed.
 * Blocks for a second or so.
 * @return false when the file cannot be written
 */
bool write(const QString& path);

} // namespace StudioSpeech
