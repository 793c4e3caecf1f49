#pragma once

/**
 * Loads the code of the elements that a take needs, which costs a tenth of a second the first time:
 * time that the first take would lose. Blocks; needs gst_init().
 */
void kdWarmUpElements();
