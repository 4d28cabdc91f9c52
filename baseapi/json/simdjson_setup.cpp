#include "baseapi/json/simdjson_setup.h"

#include <simdjson.h>

namespace baseapi::inline v1::json {
namespace {

/// Another object of the same kind, or the same one where its kind is not known.
const simdjson::implementation* another(const simdjson::implementation* chosen) {
#if SIMDJSON_IMPLEMENTATION_ICELAKE
    if (chosen->name() == "icelake") return new simdjson::icelake::implementation;
#endif
#if SIMDJSON_IMPLEMENTATION_HASWELL
    if (chosen->name() == "haswell") return new simdjson::haswell::implementation;
#endif
#if SIMDJSON_IMPLEMENTATION_WESTMERE
    if (chosen->name() == "westmere") return new simdjson::westmere::implementation;
#endif
#if SIMDJSON_IMPLEMENTATION_ARM64
    if (chosen->name() == "arm64") return new simdjson::arm64::implementation;
#endif
#if SIMDJSON_IMPLEMENTATION_FALLBACK
    if (chosen->name() == "fallback") return new simdjson::fallback::implementation;
#endif
    return chosen;
}

}  // namespace

void setUpSimdjson() {
    [[maybe_unused]] static const bool ready = [] {
        // Until it is used for the first time, the active one only detects what the processor has.
        const auto* detected = simdjson::get_available_implementations().detect_best_supported();
        simdjson::get_active_implementation() = another(detected);
        return true;
    }();
}

}  // namespace baseapi::inline v1::json
