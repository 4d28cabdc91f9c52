#include <algorithm>

#include "quillboxd/handlers/file_json.h"
#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/share_visit.h"
#include "quillboxd/html.h"

// What a link opens in a browser: a form for its extract code, then its files. The code that a visitor has
// given stays with the browser in a cookie for the pages of this one link.

namespace quillboxd::shares {
namespace {

constexpr std::string_view cookieName = "qbstoken";

std::string cookie(const Request& request, std::string_view name) {
    const auto* header = request.header("Cookie");
    std::string_view rest = header ? *header : std::string_view();
    while (!rest.empty()) {
        auto pair = rest.substr(0, rest.find(';'));
        rest.remove_prefix(std::min(rest.size(), pair.size() + 1));
        pair.remove_prefix(std::min(pair.size(), pair.find_first_not_of(' ')));
        if (pair.starts_with(name) && pair.substr(name.size()).starts_with('='))
            return decodePercent(pair.substr(name.size() + 1));
    }
    return {};
}

/// A value of a form that was sent.
std::string formValue(std::string form, std::string_view name) {
    std::replace(form.begin(), form.end(), '+', ' ');
    return queryParameter(form, name).value_or("");
}

std::string row(const Call& call, const Share& share, const Node& node) {
    const auto name = escapeHtml(node.name);
    if (!node.isFile) {
        const auto address = "/s/" + share.shortUrl + "/" + Tree::wireId(node.id);
        return "<tr><td>" + htmlLink(address, name + "/") + "</td><td></td><td></td></tr>\n";
    }
    const auto shown =
        share.permission.preview ? htmlLink(files::contentUrl(call, node, true, share.id), name) : name;
    const auto download = share.permission.download
                              ? htmlLink(files::contentUrl(call, node, false, share.id),
                                         "Download<span class=\"unseen\"> " + name + "</span>")
                              : std::string();
    return "<tr><td>" + shown + "</td><td>" + sizeText(node.size) + "</td><td>" + download + "</td></tr>\n";
}

std::string table(const Call& call, const Share& share, const Page& page) {
    if (page.nodes.empty()) return "<p>Nothing is in here.</p>\n";
    std::string rows;
    for (const auto& node : page.nodes) rows += row(call, share, node);
    return "<table>\n<thead><tr><th scope=\"col\">Name</th><th scope=\"col\">Size</th>"
           "<th scope=\"col\">Download</th></tr></thead>\n<tbody>\n" +
           rows + "</tbody>\n</table>\n";
}

/// The way from the link's first page to the folder that is shown.
std::string trail(Call& call, const Share& share, const std::string& folder) {
    if (folder.empty()) return {};
    const auto first = "/s/" + share.shortUrl;
    auto html = "<nav aria-label=\"Folders\">" + htmlLink(first, "All files");
    for (const auto& step : Shares(call.service.database).pathInside(share, folder))
        html += " / " + htmlLink(first + "/" + Tree::wireId(step.id), escapeHtml(step.name));
    return html + "</nav>\n";
}

std::string about(Call& call, const Share& share) {
    auto html = "<p>Shared by " + escapeHtml(ownerName(call, share));
    if (!share.expireTime.empty()) html += ", until " + share.expireTime.substr(0, 16) + " UTC";
    html += "</p>\n";
    return share.comment.empty() ? html : html + "<p>" + escapeHtml(share.comment) + "</p>\n";
}

Reply filesPage(Call& call, const Share& share) {
    const auto folder = call.wildcards.size() > 1 ? call.wildcards[1] : std::string();
    PageRequest page;
    page.size = 200;
    page.cursor = call.request.parameter("cursor").value_or("");
    const auto found = listFiles(call, share, folder, "", page);
    if (folder.empty() && page.cursor.empty()) Shares(call.service.database).countView(share.id);
    auto html = about(call, share) + trail(call, share, folder) + table(call, share, found);
    if (!found.nextCursor.empty()) {
        const auto more = std::string(call.request.path()) + "?cursor=" + encodePercent(found.nextCursor);
        html += "<p>" + htmlLink(more, "More files") + "</p>\n";
    }
    return htmlPage(200, share.title.empty() ? "A link to files that are gone" : share.title, html);
}

std::string problem(std::string text) {
    if (!text.empty() && text[0] >= 'a' && text[0] <= 'z') text[0] = static_cast<char>(text[0] - 'a' + 'A');
    return "<p class=\"problem\" role=\"alert\">" + escapeHtml(text) + ".</p>\n";
}

Reply codePage(int status, const std::string& above) {
    return htmlPage(status, "Extract code",
                    above +
                        "<form method=\"post\">\n<p><label for=\"code\">This link asks for its extract "
                        "code.</label></p>\n<p><input id=\"code\" name=\"extractCode\" autocomplete=\"off\" "
                        "autofocus required> <button>Open</button></p>\n</form>\n");
}

/// The page that `make` makes; a refusal is a page too.
template <class Make>
Reply page(Make make) {
    try {
        return make();
    } catch (const ApiError& error) {
        return htmlPage(error.status(), "This link does not open", problem(error.what()));
    }
}

}  // namespace

Reply openPage(Call& call) {
    return page([&] {
        const auto share = requireLink(call, call.wildcards[0]);
        const bool mayEnter = codeFits(call, share, cookie(call.request, cookieName));
        return mayEnter ? filesPage(call, share) : codePage(200, "");
    });
}

Reply takeCode(Call& call) {
    return page([&] {
        const auto share = requireLink(call, call.wildcards[0]);
        const auto code = formValue(call.body, "extractCode");
        if (!codeFits(call, share, code)) return codePage(403, problem("the extract code is wrong"));
        Reply reply{.status = 303};
        reply.headers = {{"Location", std::string(call.request.path())},
                         {"Set-Cookie", std::string(cookieName) + "=" + encodePercent(code) + "; Path=/s/" +
                                            share.shortUrl + "; HttpOnly; SameSite=Lax"}};
        return reply;
    });
}

}  // namespace quillboxd::shares
