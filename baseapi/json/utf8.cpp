#include "baseapi/json/utf8.h"

#include <simdjson.h>

#include "baseapi/json/simdjson_setup.h"

namespace baseapi::inline v1 {

bool isValidUTF8(std::string_view bytes) {
    json::setUpSimdjson();
    return simdjson::validate_utf8(bytes);
}

}  // namespace baseapi::inline v1
