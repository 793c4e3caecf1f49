#pragma once

/** Tells assistive technology what the module's own controls are; Qt knows the roles of those that
 * derive from its. */
namespace KdRecordAccessibility {

/** May be called again. GUI thread. */
void install();

} // namespace KdRecordAccessibility
