#include "baseapi/net/query_text.h"

namespace baseapi::inline v1 {

QueryText& QueryText::add(std::string_view name, std::string_view value) {
    if (!text_.empty()) text_ += '&';
    text_.append(name).append("=").append(value);
    return *this;
}

QueryText& QueryText::addIfPresent(std::string_view name, const std::optional<std::string>& value) {
    return value ? add(name, *value) : *this;
}

QueryText& QueryText::addIfFilled(std::string_view name, const std::optional<std::string>& value) {
    return value && !value->empty() ? add(name, *value) : *this;
}

QueryText& QueryText::addIfNotZero(std::string_view name, std::int64_t value) {
    return value != 0 ? add(name, value) : *this;
}

}  // namespace baseapi::inline v1
