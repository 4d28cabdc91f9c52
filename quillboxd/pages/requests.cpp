#include <cstdio>

#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/parameters.h"
#include "quillboxd/pages/pages.h"
#include "quillboxd/pages/view.h"

namespace quillboxd::pages {
namespace {

constexpr Column requestColumns[] = {{"Number", "number"}, {"Verb"},           {"Path", "wide"},
                                     {"Status", "number"}, {"Body", "number"}, {"ms", "number"}};

std::string statusCell(std::int64_t status) {
    if (status == 0) return "<span class=\"quiet\">no answer</span>";
    const std::string look = status < 400 ? "good" : "bad";
    return "<span class=\"" + look + "\">" + std::to_string(status) + "</span>";
}

std::string tenths(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", number);
    return text;
}

Row requestRow(const json::object& request) {
    auto target = text(request, "path");
    if (const auto query = text(request, "query"); !query.empty()) target += '?' + query;
    return {std::to_string(integer(request, "seq", 0)),
            plain(text(request, "verb")),
            plain(target),
            statusCell(integer(request, "status", 0)),
            std::to_string(integer(request, "bodyLength", 0)),
            tenths(request.at("millis").to_number<double>())};
}

}  // namespace

std::string requestTable(Call& call, std::int64_t before, std::size_t count) {
    std::vector<Row> rows;
    const auto requests = call.service.journal.latest(before, count);
    for (const auto& request : requests) rows.push_back(requestRow(request.get_object()));
    auto html = table("Requests, the newest first, with the bytes of their bodies", requestColumns, rows);
    const auto last = rows.empty() ? 0 : integer(requests.back().get_object(), "seq", 0);
    if (rows.size() == count && !call.service.journal.latest(last, 1).empty())
        html += more(std::string(root) + "requests?before=" + std::to_string(last), "Earlier requests");
    return html;
}

Reply requests(Call& call) {
    return page("Requests", requestTable(call, integerParameter(call, "before", INT64_MAX), 200));
}

}  // namespace quillboxd::pages
