#pragma once

#include "Shot.h"

/** The voice-over dialog in every state and with each of its messages, over the scripted engine. */
bool takeVoiceOverShots(const Shot& shot);

/** The advanced settings dialog: as opened, with its tip, its list open, and its toast. */
bool takeAdvancedSettingsShots(const Shot& shot);
