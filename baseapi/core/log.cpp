#include "baseapi/core/log.h"

#include <span>

#include "baseapi/platform/platform.h"

namespace baseapi::inline v1 {

void logPieces(std::initializer_list<std::string_view> pieces) {
    platform().log->line(std::span(pieces.begin(), pieces.size()));
}

}  // namespace baseapi::inline v1
