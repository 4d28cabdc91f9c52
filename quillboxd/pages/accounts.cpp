#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/parameters.h"
#include "quillboxd/html.h"
#include "quillboxd/pages/pages.h"
#include "quillboxd/pages/view.h"
#include "quillboxd/store/users.h"

namespace quillboxd::pages {
namespace {

constexpr Column accountColumns[] = {{"Name", "any"},      {"Department"},     {"Folders", "number"},
                                     {"Files", "number"},  {"Used", "number"}, {"Of", "number"},
                                     {"User id", "number"}};

Row accountRow(Call& call, const User& user) {
    auto& service = call.service;
    const auto held = Tree(service.database, user.id).stats(0, true);
    Space space(service.database, user.id, service.quota);
    const std::string suspended = user.status == UserStatus::suspended ? " (suspended)" : "";
    return {accountLink(user.id, user.name) + suspended,
            plain(user.departmentName),
            std::to_string(held.folders),
            std::to_string(held.files),
            sizeText(space.used()),
            sizeText(space.capacity()),
            std::to_string(user.id)};
}

}  // namespace

std::string accountTable(Call& call, std::int64_t offset, std::int64_t count) {
    Users users(call.service.database);
    std::vector<Row> rows;
    for (const auto& user : users.list({}, offset, count)) rows.push_back(accountRow(call, user));
    const auto total = users.count({});
    auto html = table(counted(total, "account") + ", by name", accountColumns, rows);
    if (offset + count < total)
        html +=
            more(std::string(root) + "accounts?offset=" + std::to_string(offset + count), "More accounts");
    return html;
}

Reply accounts(Call& call) {
    const auto offset = integerParameter(call, "offset", 0);
    if (offset < 0) badRequest("\"offset\" must not be negative");
    return page("Accounts", accountTable(call, offset, 100));
}

}  // namespace quillboxd::pages
