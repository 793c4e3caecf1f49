#pragma once

#include <KdRecord/KdCaptureEngine.h>

/**
 * Loads the code of the elements that a take from such a device needs, which costs a tenth of a
 * second the first time: time that the first take would lose. Blocks; needs gst_init().
 */
void kdWarmUpElements(KdVBLMODEL::_KdDevType kind);
