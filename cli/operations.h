#pragma once

#include <cstdint>
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

/// What the command line gives an operation.
struct OperationArguments {
    /// The keys of the record, a JSON object.
    std::optional<std::string> record;
    std::optional<std::string> lockId;
    std::optional<std::int64_t> deviceId;
};

/// One service operation of the library, as its interface names it.
struct Operation {
    std::string_view interface;
    std::string_view name;
    /// The names of the records; no request record where the operation takes none.
    std::optional<std::string_view> request;
    std::string_view response;

    /// Calls the operation with the arguments that it takes, a missing one absent. Throws `UsageError` where
    /// the record's text is no such record, where an argument is given that the operation does not take, or
    /// one is missing that it cannot be without. `done` runs once, on a thread of the library's or inside
    /// this call.
    std::function<void(OperationArguments, std::function<void(OperationResult)> done)> call;
};

/// Every operation of the service interfaces, in the order of the interfaces.
const std::vector<Operation>& operations();

/// Throws `UsageError` where there is no such operation.
const Operation& operationNamed(std::string_view name);

}  // namespace quillbox
