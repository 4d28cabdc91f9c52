#include "quillboxd/store/users.h"

#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/parameters.h"

namespace quillboxd::users {
namespace {

constexpr std::int64_t largestPage = 1000;

User userInPath(Call& call) {
    const auto& id = call.wildcards[0];
    const auto user = Users(call.service.database).find(numberIn(id, "the user id in the path"));
    if (!user) notFound("there is no user " + id);
    return *user;
}

json::object userFields(const User& user) {
    json::object fields{{"id", user.id},
                        {"name", user.name},
                        {"userId", std::to_string(user.id)},
                        {"deptId", user.department},
                        {"deptName", user.departmentName},
                        {"role", static_cast<int>(user.role)},
                        {"status", static_cast<int>(user.status)}};
    if (!user.mobile.empty()) fields["mobile"] = user.mobile;
    return fields;
}

void requireDepartment(Call& call, std::int64_t id) {
    if (!Users(call.service.database).departmentName(id))
        notFound("there is no department " + std::to_string(id));
}

bool isDirect(const Call& call) {
    const auto direct = requiredParameter(call, "isDirect");
    if (direct != "true" && direct != "false") badRequest("\"isDirect\" must be true or false");
    return direct == "true";
}

template <class Enumeration>
std::optional<Enumeration> zeroOrOne(const json::object& request, const char* key) {
    if (!present(request, key)) return std::nullopt;
    const auto number = integer(request, key, 0);
    if (number != 0 && number != 1) badRequest("\"" + std::string(key) + "\" must be 0 or 1");
    return static_cast<Enumeration>(number);
}

UserChange changeIn(Call& call) {
    static constexpr Field shape[] = {
        {"deptId", Type::integer}, {"role", Type::integer}, {"status", Type::integer}};
    const auto request = call.record(shape);
    UserChange change{.role = zeroOrOne<Role>(request, "role"),
                      .status = zeroOrOne<UserStatus>(request, "status")};
    if (present(request, "deptId")) {
        change.department = requiredInteger(request, "deptId");
        requireDepartment(call, *change.department);
    }
    return change;
}

}  // namespace

Reply getToken(Call& call) {
    static constexpr Field shape[] = {{"authCode", Type::text}};
    const auto code = requiredText(call.record(shape), "authCode");
    Accounts accounts(call.service.database);
    const auto account = accounts.signIn(code);
    // The container stands in carrierUserId: the answer has no other place for it, and a client needs it.
    return success({{"accessToken", accounts.makeToken(account)},
                    {"innerUserId", account.id},
                    {"data",
                     {{"carrierUserId", account.container},
                      {"carrierUserName", code},
                      {"carrierUserGrade", "standard"},
                      {"carrierUserStatus", "active"}}}});
}

Reply user(Call& call) {
    return success({{"data", userFields(userInPath(call))}});
}

Reply list(Call& call) {
    UserFilter filter;
    filter.department = integerParameter(call, "deptId", Users::wholeOrganisation);
    filter.direct = isDirect(call);
    filter.keyWord = call.request.parameter("keyWord").value_or("");
    requireDepartment(call, filter.department);
    const auto offset = integerParameter(call, "offset", 0);
    if (offset < 0) badRequest("\"offset\" must not be negative");
    const auto limit = pageSize(integerParameter(call, "limit", largestPage), "limit");
    Users users(call.service.database);
    json::array list;
    for (const auto& user : users.list(filter, offset, limit)) list.push_back(userFields(user));
    return success({{"list", std::move(list)}, {"total", users.count(filter)}});
}

/// Clients send both with the same verb: one has a body.
Reply changeOrDelete(Call& call) {
    if (!call.account.administrator) forbidden("only an administrator changes or deletes users");
    const auto user = userInPath(call);
    // So that one administrator is always left.
    if (user.id == call.account.id) forbidden("nobody changes or deletes themselves");
    if (call.body.empty()) {
        Users(call.service.database).remove(user.id);
    } else {
        Users(call.service.database).change(user.id, changeIn(call));
    }
    return success();
}

}  // namespace quillboxd::users
