#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <functional>

/**
 * Loads the code of the elements that a take from such a device needs, which costs a tenth of a
 * second the first time: time that the first take would lose. Blocks; needs gst_init().
 * @param isWanted asked before each element; not null
 */
void kdWarmUpElements(KdVBLMODEL::_KdDevType kind, const std::function<bool()>& isWanted);
