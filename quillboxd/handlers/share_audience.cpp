#include "quillboxd/handlers/share_audience.h"

#include "quillboxd/store/share_folders.h"
#include "quillboxd/store/users.h"

namespace quillboxd::shares {

std::optional<std::string> audienceName(Call& call, Audience kind, const std::string& id) {
    const auto number = Tree::fromWireId(id);
    if (!number) return std::nullopt;
    Users users(call.service.database);
    switch (kind) {
        case Audience::departments:
            return users.departmentName(*number);
        case Audience::groups: {
            const auto folder = ShareFolders(call.service.database, call.account.id).find(*number);
            return folder ? std::optional(folder->name) : std::nullopt;
        }
        case Audience::users:
            break;
    }
    const auto user = users.find(*number);
    return user ? std::optional(user->name) : std::nullopt;
}

bool belongs(Call& call, Audience kind, const std::string& id) {
    const auto number = Tree::fromWireId(id);
    if (!number) return false;
    switch (kind) {
        case Audience::departments:
            return Users(call.service.database).isIn(call.account.id, *number);
        case Audience::groups:
            return ShareFolders(call.service.database, call.account.id).hasMember(*number);
        case Audience::users:
            break;
    }
    return call.account.id == *number;
}

}  // namespace quillboxd::shares
