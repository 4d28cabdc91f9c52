#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "baseapi/net/network_result.h"

namespace quillbox {

/// What an operation answered: the response record as JSON text, or why there is none.
using OperationResult = std::variant<std::string, baseapi::NetworkFailure>;

/// One service operation of the library, as its interface names it.
struct Operation {
    std::string_view interface;
    std::string_view name;
    /// The names of the records; no request record where the operation takes none.
    std::optional<std::string_view> request;
    std::string_view response;

    /// Calls the operation with a record made of the keys of `record`, a JSON object, or with an absent one.
    /// Throws `UsageError` where the text is no such record. `done` runs once, on a thread of the library's
    /// or inside this call.
    std::function<void(std::optional<std::string> record, std::function<void(OperationResult)> done)> call;
};

/// Every operation that sends a request, in the order of the interfaces.
const std::vector<Operation>& operations();

/// Throws `UsageError` where there is no such operation.
const Operation& operationNamed(std::string_view name);

}  // namespace quillbox
