#pragma once

/** Tells assistive technology what the kit's own controls are; Qt knows the roles of those that
 * derive from its. */
namespace KdAccessibility {

/** May be called again. GUI thread. */
void install();

} // namespace KdAccessibility
