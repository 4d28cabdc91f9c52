#include "quillboxd/store/backup_locks.h"

#include "quillboxd/handlers/backup_json.h"
#include "quillboxd/handlers/handlers.h"

namespace quillboxd::backup {
namespace {

BackupLocks locks(Call& call) {
    return {call.service.database, call.account.id};
}

}  // namespace

std::string lockId(const Call& call) {
    const auto* id = call.request.header("x-backup-lock-id");
    if (!id) forbidden("the header x-backup-lock-id is missing");
    return *id;
}

Reply takeLock(Call& call) {
    static constexpr Field shape[] = {{"moduleCode", Type::text}};
    const auto module = requiredText(call.record(shape), "moduleCode");
    return success({{"data", {{"lockId", locks(call).take(module, call.token)}}}});
}

Reply renewLock(Call& call) {
    locks(call).renew(lockId(call));
    return success();
}

Reply releaseLock(Call& call) {
    locks(call).release(lockId(call));
    return success();
}

}  // namespace quillboxd::backup
