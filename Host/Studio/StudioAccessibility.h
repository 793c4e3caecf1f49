#pragma once

/** Tells assistive technology what Studio's own controls are; Qt knows the roles of those that
 * derive from its. */
namespace StudioAccessibility {

/** May be called again. GUI thread. */
void install();

} // namespace StudioAccessibility
