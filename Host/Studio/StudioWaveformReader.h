#pragma once

#include <Studio/StudioPeaks.h>

#include <QString>

#include <atomic>

/**
 * Decodes a file as fast as it goes and folds its sound; memory stays the same however long it is.
 * Blocks: not for the GUI thread.
 * @param cancelled looked at several times a second; once true, the call returns what it has
 * @return empty when the file cannot be decoded
 */
StudioPeaks readWaveform(const QString& path, const std::atomic<bool>& cancelled);
