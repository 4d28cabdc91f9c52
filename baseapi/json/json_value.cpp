#include "baseapi/json/json_value.h"

namespace baseapi::inline v1 {

bool operator==(const JSONValue& left, const JSONValue& right) {
    if (left.value.index() != right.value.index()) return false;
    return std::visit(
        [&](const auto& held) {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::any>) {
                return false;
            } else {
                return held == std::get<Held>(right.value);
            }
        },
        left.value);
}

}  // namespace baseapi::inline v1
