#include "quillboxd/store/cursor.h"

#include <boost/algorithm/hex.hpp>

namespace quillboxd {

std::string writeCursor(const json::array& place) {
    return boost::algorithm::hex_lower(json::serialize(place));
}

std::optional<json::array> readCursor(const std::string& cursor) try {
    json::error_code error;
    const auto place = json::parse(boost::algorithm::unhex(cursor), error);
    return error || !place.is_array() ? std::nullopt : std::optional(place.get_array());
} catch (const boost::algorithm::hex_decode_error&) {
    return std::nullopt;
}

}  // namespace quillboxd
