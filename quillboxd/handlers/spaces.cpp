#include "quillboxd/store/space.h"

#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/parameters.h"
#include "quillboxd/store/users.h"

namespace quillboxd::spaces {
namespace {

/// The one kind of space there is: that of a person.
constexpr std::int64_t personal = 1;

/// The owner of a space that the caller may look at; no name stands for the caller.
User requireOwner(const Call& call, const std::string& name) {
    const auto id = name.empty() ? call.account.id : numberIn(name, "\"ownerId\"");
    const auto user = Users(call.service.database).find(id);
    if (!user) notFound("there is no user " + name);
    if (user->id != call.account.id && !call.account.administrator)
        forbidden("only an administrator looks at the space of others");
    return *user;
}

void checkType(std::int64_t type) {
    if (type != personal) notFound("there is no space of type " + std::to_string(type));
}

/// What both views of a space have.
json::object commonFields(const Call& call, const User& owner) {
    Space space(call.service.database, owner.id, call.service.quota);
    return {{"tenantId", Users::tenant},
            {"creator", std::to_string(owner.id)},
            {"createTime", owner.createdTime},
            {"type", personal},
            {"status", 0},
            {"capacity", space.capacity()},
            {"spaceUsed", space.used()},
            {"containerId", owner.container},
            {"rootFileId", Tree::wireId(0)}};
}

json::object entry(const Call& call, const json::object& wanted) {
    try {
        const auto owner = requireOwner(call, text(wanted, "ownerId"));
        checkType(integer(wanted, "type", personal));
        auto fields = commonFields(call, owner);
        fields["ownerId"] = owner.id;
        fields["capacityKb"] = fields.at("capacity").as_int64() / 1024;
        return {{"code", 0}, {"msg", "success"}, {"date", std::move(fields)}};
    } catch (const ApiError& error) {
        return {{"code", static_cast<int>(error.code())}, {"msg", error.what()}};
    }
}

}  // namespace

Reply space(Call& call) {
    const auto owner = requireOwner(call, call.wildcards.empty() ? "" : call.wildcards[0]);
    const auto type = call.request.parameter("type").value_or("");
    checkType(type.empty() ? personal : numberIn(type, "\"type\""));
    const auto container = call.request.parameter("containerId").value_or("");
    if (!container.empty() && container != owner.container && container != std::to_string(owner.id))
        forbidden("the container \"" + container + "\" is not this owner's");
    auto fields = commonFields(call, owner);
    fields["ownerId"] = std::to_string(owner.id);
    return success({{"data", std::move(fields)}});
}

Reply batch(Call& call) {
    static constexpr Field entryShape[] = {{"ownerId", Type::text}, {"type", Type::integer}};
    static constexpr Field shape[] = {{"batchGetSpaceReq", Type::records, entryShape}};
    const auto request = call.record(shape);
    const auto* list = present(request, "batchGetSpaceReq");
    if (!list) badRequest("\"batchGetSpaceReq\" is missing");
    json::array answers;
    for (const auto& wanted : list->get_array()) answers.push_back(entry(call, wanted.get_object()));
    return success({{"batchGetSpaceResponse", std::move(answers)}});
}

}  // namespace quillboxd::spaces
