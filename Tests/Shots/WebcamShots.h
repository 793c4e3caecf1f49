#pragma once

#include "Shot.h"

/** The webcam dialog in every state, with each choice, message and language, over the scripted
 * engine. */
bool takeWebcamShots(const Shot& shot);
