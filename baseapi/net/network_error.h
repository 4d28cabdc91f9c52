#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>
#include <variant>

namespace baseapi::inline v1 {

/// The frame's own error, thrown inside the send routine and caught by the frame. Only `invalidURL` is
/// raised.
class NetworkError : public std::exception {
  public:
    struct statusCode {
        std::int64_t code = 0;
    };
    struct decodingError {
        std::string error;
    };
    struct unknown {
        std::string error;
    };
    struct invalidURL {};
    struct invalidResponse {};
    using Case = std::variant<statusCode, decodingError, unknown, invalidURL, invalidResponse>;

    explicit NetworkError(Case which) : value(std::move(which)) {}

    /// The name of the case.
    const char* what() const noexcept override {
        static constexpr const char* names[] = {"statusCode", "decodingError", "unknown", "invalidURL",
                                                "invalidResponse"};
        return names[value.index()];
    }

    Case value;
};

}  // namespace baseapi::inline v1
