#include "baseapi/net/trace_id.h"

#include <string_view>

#include "baseapi/platform/uuid.h"

namespace baseapi::inline v1 {

std::string makeTraceId() {
    constexpr std::string_view front = "000000000000DSDK";
    constexpr std::string_view back = "000000";
    constexpr std::size_t digits = 16;
    std::string id;
    id.reserve(front.size() + digits + back.size());
    id += front;
    for (const char letter : randomUuid()) {
        if (letter != '-' && id.size() < front.size() + digits) id += letter;
    }
    return id += back;
}

}  // namespace baseapi::inline v1
