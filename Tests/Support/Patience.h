#pragma once

namespace KdTest {

/** A bound on waiting, in ms: in builds with a sanitizer, which are several times slower, as many
 * times longer as the engine's own. */
int patience(int msec);

} // namespace KdTest
