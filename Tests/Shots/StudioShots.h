#pragma once

#include "Shot.h"

/** Studio's window: empty, with takes, while a take runs, with an unfinished take. */
bool takeStudioShots(const Shot& shot);
