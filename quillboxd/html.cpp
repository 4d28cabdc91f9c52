#include "quillboxd/html.h"

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

Reply htmlPage(int status, std::string_view title, const std::string& content) {
    const auto heading = escapeHtml(title);
    std::string body = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n";
    body.append("<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>")
        .append(heading)
        .append("</title>\n<style>")
        .append(style)
        .append("</style>\n</head>\n<body>\n<main>\n<h1>")
        .append(heading)
        .append("</h1>\n")
        .append(content)
        .append("</main>\n</body>\n</html>\n");
    return {
        .status = status,
        .contentType = "text/html; charset=utf-8",
        .headers = {{"Cache-Control", "no-store"},
                    {"Content-Security-Policy",
                     "default-src 'none'; style-src 'unsafe-inline'; form-action 'self'; base-uri 'none'; "
                     "frame-ancestors 'none'"},
                    {"X-Content-Type-Options", "nosniff"},
                    {"Referrer-Policy", "no-referrer"}},
        .body = std::move(body)};
}

}  // namespace quillboxd
