#pragma once

#include "Shot.h"

/** The page of advanced video settings in a window such as a host gives it, and a list open. */
bool takeVideoSettingsShots(const Shot& shot);
