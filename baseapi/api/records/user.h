#pragma once

#include <optional>
#include <string>

#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// A user as files name their owners, editors and sharers.
struct User {
    std::optional<std::string> category;
    std::optional<bool> me;
    std::optional<std::string> permissionId;
    std::optional<std::string> userId;
    std::optional<std::string> displayName;

    BASEAPI_FIELDS(User, category, me, permissionId, userId, displayName)
};

/// A user by id alone.
struct UserBean {
    std::optional<std::string> userId;

    BASEAPI_FIELDS(UserBean, userId)
};

}  // namespace baseapi::inline v1
