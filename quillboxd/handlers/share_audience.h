#pragma once

#include <optional>
#include <string>

#include "quillboxd/call.h"
#include "quillboxd/store/shares.h"

namespace quillboxd::shares {

/// How a request and an answer name those of a kind.
struct AudienceKey {
    Audience kind;
    const char* ids;   ///< in a request
    const char* list;  ///< in an answer
    const char* noun;
};

constexpr AudienceKey audienceKeys[] = {{Audience::departments, "deptIds", "depts", "department"},
                                        {Audience::groups, "groupIds", "groups", "group"},
                                        {Audience::users, "userIds", "users", "user"}};

/// What a department, group or person is called; absent where there is none of this id.
std::optional<std::string> audienceName(Call& call, Audience kind, const std::string& id);

/// Whether the caller is this person, or in this department or group.
bool belongs(Call& call, Audience kind, const std::string& id);

}  // namespace quillboxd::shares
