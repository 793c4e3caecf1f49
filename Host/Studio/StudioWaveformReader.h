#pragma once

#include <Studio/StudioPeaks.h>

#include <QString>

class StudioWorkGate;

/**
 * Decodes a file as fast as it goes and folds its sound; memory stays the same however long it is.
 * Blocks: not for the GUI thread.
 * @param gate passed several times a second; when it says to end, the call returns what it has
 * @return empty when the file cannot be decoded
 */
StudioPeaks readWaveform(const QString& path, StudioWorkGate& gate);
