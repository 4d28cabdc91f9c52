#include "baseapi/net/trace_id.h"

#include <algorithm>

#include "baseapi/platform/uuid.h"

namespace baseapi {

std::string makeTraceId() {
    std::string digits = randomUuid();
    std::erase(digits, '-');
    return "000000000000DSDK" + digits.substr(0, 16) + "000000";
}

}  // namespace baseapi
