#include "quillboxd/html.h"

#include <cstdio>
#include <iterator>

namespace quillboxd {
namespace {

constexpr std::string_view style = R"css(
:root { color-scheme: light dark; --line: #8886; --accent: #0b57d0; }
@media (prefers-color-scheme: dark) { :root { --accent: #a8c7fa; } }
body { font: 1rem/1.5 system-ui, sans-serif; max-width: 46rem; margin: 2rem auto; padding: 0 1rem; }
h1 { font-size: 1.4rem; overflow-wrap: anywhere; }
a { color: var(--accent); }
:focus-visible { outline: 3px solid var(--accent); outline-offset: 2px; }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; padding: .5rem .5rem .5rem 0; border-bottom: 1px solid var(--line); }
td:first-child { overflow-wrap: anywhere; }
input, button { font: inherit; padding: .4rem .7rem; }
.unseen { position: absolute; width: 1px; height: 1px; overflow: hidden; clip-path: inset(50%); }
.problem { border-left: 4px solid #c5221f; padding-left: .75rem; }
)css";

std::string_view escaped(char c) {
    switch (c) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        case '\'':
            return "&#39;";
        default:
            return {};
    }
}

std::string contentPolicy(const PageExtras& extras) {
    return std::string("default-src 'none'; style-src 'unsafe-inline'; ") +
           (extras.pictures ? "img-src 'self'; " : "") +
           "form-action 'self'; base-uri 'none'; frame-ancestors 'none'";
}

}  // namespace

std::string escapeHtml(std::string_view text) {
    std::string html;
    html.reserve(text.size());
    for (const char c : text) {
        const auto entity = escaped(c);
        if (entity.empty()) {
            html += c;
        } else {
            html += entity;
        }
    }
    return html;
}

std::string htmlLink(std::string_view address, const std::string& html) {
    return "<a href=\"" + escapeHtml(address) + "\">" + html + "</a>";
}

std::string sizeText(std::int64_t bytes) {
    if (bytes < 1024) return std::to_string(bytes) + " B";
    auto size = static_cast<double>(bytes);
    std::size_t unit = 0;
    constexpr const char* units[] = {"B", "KiB", "MiB", "GiB", "TiB"};
    while (size >= 1024 && unit + 1 < std::size(units)) {
        size /= 1024;
        ++unit;
    }
    char text[32];
    std::snprintf(text, sizeof text, "%.1f %s", size, units[unit]);
    return text;
}

Reply htmlPage(int status, std::string_view title, const std::string& content, const PageExtras& extras) {
    const auto heading = escapeHtml(title);
    std::string body = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n";
    // Without an icon of its own a browser would ask for /favicon.ico, and be counted as a client.
    body.append("<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n")
        .append("<link rel=\"icon\" href=\"data:,\">\n<title>")
        .append(heading)
        .append("</title>\n<style>")
        .append(style)
        .append(extras.style)
        .append("</style>\n</head>\n<body>\n")
        .append(extras.header)
        .append("<main id=\"main\">\n<h1>")
        .append(heading)
        .append("</h1>\n")
        .append(content)
        .append("</main>\n</body>\n</html>\n");
    return {.status = status,
            .contentType = "text/html; charset=utf-8",
            .headers = {{"Cache-Control", "no-store"},
                        {"Content-Security-Policy", contentPolicy(extras)},
                        {"X-Content-Type-Options", "nosniff"},
                        {"Referrer-Policy", "no-referrer"}},
            .body = std::move(body)};
}

}  // namespace quillboxd
