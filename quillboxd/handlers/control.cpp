#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/parameters.h"
#include "quillboxd/store/backup_locks.h"
#include "quillboxd/store/share_folders.h"
#include "quillboxd/store/shares.h"
#include "quillboxd/store/users.h"

namespace quillboxd::control {

Reply health(Call& call) {
    (void)call;
    return jsonReply(200, {{"name", "quillboxd"}, {"version", QUILLBOXD_VERSION}, {"state", "ready"}});
}

Reply reset(Call& call) {
    call.service.reset();
    return success();
}

Reply requests(Call& call) {
    return jsonReply(200, {{"requests", call.service.journal.entries()}});
}

Reply planFault(Call& call) {
    return success({{"id", call.service.faults.plan(call.body)}});
}

Reply forgetFaults(Call& call) {
    call.service.faults.clear();
    return success();
}

Reply listFaults(Call& call) {
    return jsonReply(200, {{"faults", call.service.faults.list()}});
}

Reply expireLocks(Call& call) {
    BackupLocks::expireAll(call.service.database);
    return success();
}

Reply joinShareFolder(Call& call) {
    static constexpr Field shape[] = {{"userId", Type::text}};
    const auto user = requiredText(call.record(shape), "userId");
    Transaction transaction(call.service.database);
    const auto number = Tree::fromWireId(user);
    if (!number || !Users(call.service.database).find(*number)) notFound("there is no user \"" + user + "\"");
    ShareFolders(call.service.database, *number)
        .join(numberIn(call.wildcards[0], "the share folder in the path"));
    transaction.commit();
    return success();
}

Reply expireShares(Call& call) {
    Transaction transaction(call.service.database);
    Shares(call.service.database).expireAll();
    transaction.commit();
    return success();
}

Reply holdJobs(Call& call) {
    static constexpr Field shape[] = {{"steps", Type::integer}};
    const auto steps = requiredInteger(call.record(shape), "steps");
    if (steps < 0) badRequest("\"steps\" must not be negative");
    call.service.jobs.allow(steps);
    return success();
}

Reply releaseJobs(Call& call) {
    call.service.jobs.allow(std::nullopt);
    return success();
}

}  // namespace quillboxd::control
