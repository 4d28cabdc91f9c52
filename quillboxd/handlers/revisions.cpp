#include "quillboxd/store/revisions.h"

#include "quillboxd/handlers/handlers.h"

namespace quillboxd::revisions {
namespace {

/// An empty id stands for what the file holds now.
Revision require(const Call& call, std::int64_t file, const std::string& id) {
    for (const auto& revision : Revisions(call.service.database).list(file))
        if (id.empty() || id == std::to_string(revision.id)) return revision;
    notFound("the file has no revision \"" + id + "\"");
}

}  // namespace

Reply update(Call& call) {
    static constexpr Field shape[] = {{"containerId", Type::text},
                                      {"fileId", Type::text},
                                      {"revisionId", Type::text},
                                      {"keepForever", Type::boolean}};
    const auto request = call.record(shape);
    call.checkContainer(text(request, "containerId"));
    if (!present(request, "keepForever")) badRequest("\"keepForever\" is missing");
    const auto file = call.tree().requireFile(requiredText(request, "fileId"));
    const auto revision = require(call, file.id, text(request, "revisionId"));
    Revisions(call.service.database).keep(revision.id, flag(request, "keepForever", false));
    return success();
}

}  // namespace quillboxd::revisions
