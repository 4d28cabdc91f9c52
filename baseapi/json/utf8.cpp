#include "baseapi/json/utf8.h"

#include <simdjson.h>

namespace baseapi {

bool isValidUTF8(std::string_view bytes) {
    return simdjson::validate_utf8(bytes);
}

}  // namespace baseapi
