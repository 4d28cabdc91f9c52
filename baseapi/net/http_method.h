#pragma once

#include <string_view>

namespace baseapi::inline v1 {

enum class HTTPMethod { get, post, put, delete_, patch };

/// The verb on the wire, such as "GET".
constexpr std::string_view text(HTTPMethod method) {
    switch (method) {
        case HTTPMethod::get:
            return "GET";
        case HTTPMethod::post:
            return "POST";
        case HTTPMethod::put:
            return "PUT";
        case HTTPMethod::delete_:
            return "DELETE";
        case HTTPMethod::patch:
            return "PATCH";
    }
    return "";
}

}  // namespace baseapi::inline v1
