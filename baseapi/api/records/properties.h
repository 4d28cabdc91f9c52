#pragma once

#include <map>
#include <optional>
#include <string>

#include "baseapi/json/json_value.h"
#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// A file's properties that only its user sees.
struct PrivateProperties {
    std::optional<AnyMap> attributes;
    std::optional<std::map<std::string, std::string>> properties;

    BASEAPI_FIELDS(PrivateProperties, attributes, properties)
};

/// `PrivateProperties` as search results have them.
struct FileListPrivateProperties {
    std::optional<std::map<std::string, std::string>> properties;

    BASEAPI_FIELDS(FileListPrivateProperties, properties)
};

/// Properties of a file by their names.
struct Properties {
    std::optional<std::string> localCreatedAt;
    std::optional<std::string> localUpdatedAt;
    std::optional<std::string> auditResult;

    BASEAPI_FIELDS(Properties, localCreatedAt, localUpdatedAt, auditResult)
};

}  // namespace baseapi::inline v1
