#include "baseapi/net/trace_id.h"

#include <algorithm>

#include "baseapi/platform/uuid.h"

namespace baseapi::inline v1 {

std::string makeTraceId() {
    const auto uuid = randomUuid();
    std::string id = "000000000000DSDK----------------000000";
    // The first 16 digits of the UUID, which stand in its text as 8, 4 and 4.
    auto place = id.begin() + 16;
    place = std::copy_n(uuid.begin(), 8, place);
    place = std::copy_n(uuid.begin() + 9, 4, place);
    std::copy_n(uuid.begin() + 14, 4, place);
    return id;
}

}  // namespace baseapi::inline v1
