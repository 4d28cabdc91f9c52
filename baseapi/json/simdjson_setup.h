#pragma once

namespace baseapi::inline v1::json {

/// Comes before any use of simdjson. The library picks its code for this processor through static objects,
/// which are destroyed while transfers may still be under way; this puts one in their place that is never
/// destroyed.
void setUpSimdjson();

}  // namespace baseapi::inline v1::json
