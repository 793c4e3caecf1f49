#pragma once

#include "Shot.h"

/** The webcam's preview with and without its strip of options, in its shapes, and the strip's
 * buttons in their states. */
bool takePreviewShots(const Shot& shot);
