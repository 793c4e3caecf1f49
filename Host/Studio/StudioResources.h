#pragma once

/** Makes Studio's icons and style sheets known: a static library's resources do not announce
 * themselves. */
void initStudioResources();
