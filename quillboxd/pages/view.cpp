#include "quillboxd/pages/view.h"

#include <algorithm>

#include "quillboxd/html.h"
#include "quillboxd/pages/style.h"

namespace quillboxd::pages {
namespace {

constexpr std::string_view header =
    "<header>\n<a class=\"skip\" href=\"#main\">Skip to the content</a>\n<a class=\"brand\" "
    "href=\"/\">quillboxd</a>\n<nav aria-label=\"What the service holds\">\n<a "
    "href=\"/#accounts\">Accounts</a>\n"
    "<a href=\"/#backups\">Backups</a>\n<a href=\"/#locks\">Locks</a>\n<a href=\"/#requests\">Requests</a>\n"
    "<a href=\"/#faults\">Faults</a>\n</nav>\n</header>\n";

constexpr std::string_view footer =
    "<footer>\n<p>Times are UTC. Looking at these pages is no request of a client: it stands in no journal "
    "and "
    "meets no fault.</p>\n</footer>\n";

std::string attribute(std::string_view name, std::string_view value) {
    if (value.empty()) return {};
    return ' ' + std::string(name) + "=\"" + std::string(value) + '"';
}

std::string cell(const Column& column, const std::string& html, bool first) {
    const std::string tag = first ? "th" : "td";
    return '<' + tag + attribute("scope", first ? "row" : "") + attribute("class", column.look) + '>' + html +
           "</" + tag + '>';
}

std::string tableHead(std::span<const Column> columns) {
    std::string cells;
    for (const auto& column : columns)
        cells +=
            "<th scope=\"col\"" + attribute("class", column.look) + '>' + std::string(column.title) + "</th>";
    return "<thead><tr>" + cells + "</tr></thead>\n";
}

std::string tableRow(std::span<const Column> columns, const Row& row) {
    std::string cells;
    for (std::size_t i = 0; i < columns.size(); ++i) cells += cell(columns[i], row[i], i == 0);
    return "<tr>" + cells + "</tr>\n";
}

std::size_t hexDigits(std::string_view text) {
    return std::min(text.size(), text.find_first_not_of("0123456789abcdefABCDEF"));
}

std::string withoutSecrets(std::string_view text) {
    constexpr std::size_t shortestSecret = 32;
    constexpr std::size_t shown = 6;
    std::string safe;
    while (!text.empty()) {
        const auto run = hexDigits(text);
        safe += run < shortestSecret ? std::string(text.substr(0, run))
                                     : std::string(text.substr(0, shown)) + "…";
        text.remove_prefix(run);
        if (text.empty()) break;
        safe += text.front();
        text.remove_prefix(1);
    }
    return safe;
}

bool continuesLetter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

std::string shortened(std::string text) {
    constexpr std::size_t longest = 300;
    if (text.size() <= longest) return text;
    auto end = longest;
    while (continuesLetter(text[end])) --end;
    return text.substr(0, end) + "…";
}

std::string valueText(const json::value& value) {
    return value.is_string() ? std::string(value.get_string()) : json::serialize(value);
}

}  // namespace

std::string table(std::string_view caption, std::span<const Column> columns, const std::vector<Row>& rows) {
    if (rows.empty()) return "<p class=\"quiet\">" + escapeHtml(caption) + ": there are none.</p>\n";
    std::string body;
    for (const auto& row : rows) body += tableRow(columns, row);
    const auto words = escapeHtml(caption);
    return "<div class=\"scroll\" role=\"region\" tabindex=\"0\"" + attribute("aria-label", words) +
           ">\n<table>\n<caption>" + words + "</caption>\n" + tableHead(columns) + "<tbody>\n" + body +
           "</tbody>\n</table>\n</div>\n";
}

std::string section(std::string_view id, std::string_view title, const std::string& content) {
    const std::string name(id);
    return "<section aria-labelledby=\"" + name + "\">\n<h2 id=\"" + name + "\">" + escapeHtml(title) +
           "</h2>\n" + content + "</section>\n";
}

std::string timeCell(std::string_view time) {
    if (time.empty()) return {};
    const auto day = time.substr(0, 10);
    const auto clock = time.substr(std::min<std::size_t>(time.size(), 11), 8);
    return "<time datetime=\"" + escapeHtml(time) + "\">" + escapeHtml(day) + ' ' + escapeHtml(clock) +
           "</time>";
}

std::string members(const json::object& object, std::initializer_list<std::string_view> without) {
    std::string text;
    for (const auto& [key, value] : object) {
        if (std::find(without.begin(), without.end(), std::string_view(key)) != without.end()) continue;
        if (!text.empty()) text += ", ";
        text.append(key).append(" ").append(valueText(value));
    }
    return plain(text);
}

std::string plain(std::string_view text) {
    return escapeHtml(shortened(withoutSecrets(text)));
}

std::string more(const std::string& address, std::string_view text) {
    return "<p>" + htmlLink(address, escapeHtml(text)) + "</p>\n";
}

std::string counted(std::int64_t number, std::string_view noun) {
    return std::to_string(number) + ' ' + std::string(noun) + (number == 1 ? "" : "s");
}

Reply page(std::string_view title, const std::string& content, int status) {
    return htmlPage(status, title, content + std::string(footer),
                    {.style = style, .header = header, .pictures = true});
}

}  // namespace quillboxd::pages
