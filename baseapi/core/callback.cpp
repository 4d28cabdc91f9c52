#include "baseapi/core/callback.h"

#include "baseapi/core/log.h"

namespace baseapi::inline v1 {

void callbackThrew(const char* what) noexcept {
    logLine("callback threw: ", std::string_view(what));
}

}  // namespace baseapi::inline v1
