#include <algorithm>

#include "quillboxd/handlers/handlers.h"
#include "quillboxd/html.h"
#include "quillboxd/pages/pages.h"
#include "quillboxd/pages/view.h"
#include "quillboxd/store/all_backups.h"

namespace quillboxd::pages {
namespace {

constexpr std::size_t shortList = 20;

/// The first rows, and how many there are besides.
std::string firstRows(std::string_view caption, std::span<const Column> columns, std::vector<Row> rows) {
    const auto all = rows.size();
    rows.resize(std::min(all, shortList));
    auto html = table(caption, columns, rows);
    if (all > shortList) html += "<p class=\"quiet\">And " + std::to_string(all - shortList) + " more.</p>\n";
    return html;
}

std::string lockTable(Call& call) {
    constexpr Column columns[] = {{"Account", "any"}, {"Module"}, {"Lock"}, {"Used"}, {"Until"}};
    std::vector<Row> rows;
    for (const auto& lock : AllBackups(call.service.database).locksInForce(now())) {
        rows.push_back({accountLink(lock.account, lock.accountName), plain(lock.module), plain(lock.id),
                        lock.used ? "yes" : "not yet", timeCell(lock.until)});
    }
    return firstRows("Locks in force", columns, std::move(rows));
}

std::string faultTable(Call& call) {
    constexpr Column columns[] = {{"Fault", "number"},
                                  {"Kind"},
                                  {"Verb"},
                                  {"Path", "wide"},
                                  {"Details", "wide"},
                                  {"Lets pass", "number"},
                                  {"Hits at most", "number"},
                                  {"Has hit", "number"}};
    std::vector<Row> rows;
    for (const auto& each : call.service.faults.list()) {
        const auto& fault = each.get_object();
        rows.push_back({std::to_string(integer(fault, "id", 0)), plain(text(fault, "kind")),
                        plain(text(fault, "verb", "any")), plain(text(fault, "path")),
                        members(fault, {"id", "kind", "verb", "path", "after", "times", "hits"}),
                        std::to_string(integer(fault, "after", 0)),
                        std::to_string(integer(fault, "times", 1)),
                        std::to_string(integer(fault, "hits", 0))});
    }
    return firstRows("Planned faults, in the order of their making", columns, std::move(rows));
}

}  // namespace

Reply overview(Call& call) {
    return page("What the service holds",
                section("accounts", "Accounts", accountTable(call, 0, shortList)) +
                    section("backups", "Backups", recordTable(call, INT64_MAX, 10)) +
                    section("locks", "Locks", lockTable(call)) +
                    section("requests", "Requests", requestTable(call, INT64_MAX, shortList)) +
                    section("faults", "Faults", faultTable(call)));
}

Reply refusal(const ApiError& error) {
    return page("This page cannot be shown", "<p class=\"problem\">" + plain(error.what()) + "</p>\n",
                error.status());
}

}  // namespace quillboxd::pages
