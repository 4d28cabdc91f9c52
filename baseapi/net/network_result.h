#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <variant>

#include "baseapi/core/cases.h"

namespace baseapi::inline v1 {

/// Why a call failed. The library's own failures have code -1; a service's failure keeps the service's code
/// and message.
struct NetworkFailure {
    std::int64_t code = -1;
    std::string message;
};

/// What every service callback receives.
///
///     result.visit([](NetworkResult<T>::success& it) { use(it.record); },
///                  [](NetworkResult<T>::failure& it) { tell(it.code, it.message); });
template <class T>
struct NetworkResult {
    /// An answer was read; a `code` in it that is not 0 is the service's word.
    struct success {
        T record;
    };
    /// There is no answer that can be used.
    using failure = NetworkFailure;

    std::variant<success, failure> value;

    /// Calls the function that takes the case at hand; one for each case must be given.
    template <class... Functions>
    decltype(auto) visit(Functions&&... functions) {
        return std::visit(Cases{std::forward<Functions>(functions)...}, value);
    }
    /// The same for a result that is not changed.
    template <class... Functions>
    decltype(auto) visit(Functions&&... functions) const {
        return std::visit(Cases{std::forward<Functions>(functions)...}, value);
    }
};

/// Receives the result of a service call, exactly once, on a thread of the delegate queue, or on the caller's
/// thread before the call returns where the request could not be built. Several callbacks may run at once.
/// What it throws is logged and goes no further.
template <class T>
using NetworkCallback = std::function<void(NetworkResult<T>)>;

}  // namespace baseapi::inline v1
