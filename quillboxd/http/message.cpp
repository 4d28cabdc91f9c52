#include "quillboxd/http/message.h"

#include <algorithm>
#include <ostream>

// Needs the streams before it.
#include <boost/beast/http/status.hpp>

#include "quillboxd/crypto/sha256.h"
#include "quillboxd/error.h"
#include "quillboxd/unicode.h"

namespace quillboxd {
namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    c = lower(c);
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

bool isUnreserved(char c) {
    return (c >= '0' && c <= '9') || (lower(c) >= 'a' && lower(c) <= 'z') || c == '-' || c == '.' ||
           c == '_' || c == '~';
}

}  // namespace

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

const std::string* findHeader(const Headers& headers, std::string_view name) {
    for (const auto& [key, value] : headers) {
        if (equalsIgnoringCase(key, name)) return &value;
    }
    return nullptr;
}

std::string_view Request::query() const {
    const auto question = target.find('?');
    return question == target.npos ? std::string_view() : std::string_view(target).substr(question + 1);
}

std::optional<std::string> Request::parameter(std::string_view name) const {
    return queryParameter(query(), name);
}

std::optional<std::string> queryParameter(std::string_view query, std::string_view name) {
    while (!query.empty()) {
        const auto pair = query.substr(0, query.find('&'));
        query.remove_prefix(std::min(query.size(), pair.size() + 1));
        const auto equals = std::min(pair.find('='), pair.size());
        if (pair.substr(0, equals) != name) continue;
        auto value = decodePercent(pair.substr(std::min(pair.size(), equals + 1)));
        if (!isUtf8(value)) badRequest("the query is no UTF-8");
        return value;
    }
    return std::nullopt;
}

std::int64_t Reply::bodyLength() const {
    auto length = static_cast<std::int64_t>(body.size());
    for (const auto& piece : pieces) length += piece.length;
    return length;
}

std::string writeHead(const Reply& reply, bool keepAlive) {
    const auto reason =
        boost::beast::http::obsolete_reason(static_cast<boost::beast::http::status>(reply.status));
    std::string head = "HTTP/1.1 " + std::to_string(reply.status) + ' ';
    head.append(reason.data(), reason.size()).append("\r\nServer: quillboxd\r\n");
    for (const auto& [name, value] : reply.headers)
        head.append(name).append(": ").append(value).append("\r\n");
    if (reply.status != 204) {
        head.append("Content-Type: ").append(reply.contentType).append("\r\n");
        if (!findHeader(reply.headers, "Content-Length")) {
            head.append("Content-Length: ").append(std::to_string(reply.bodyLength())).append("\r\n");
        }
    }
    if (!keepAlive) head += "Connection: close\r\n";
    return head += "\r\n";
}

std::string decodePercent(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && text.size() - i > 2 ? hexValue(text[i + 1]) : -1;
        const int low = high >= 0 ? hexValue(text[i + 2]) : -1;
        if (low < 0) {
            decoded += text[i];
            continue;
        }
        decoded += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return decoded;
}

std::string encodePercent(std::string_view text) {
    std::string encoded;
    for (const char c : text) {
        if (isUnreserved(c)) {
            encoded += c;
        } else {
            encoded.append("%").append(hex(std::string_view(&c, 1)));
        }
    }
    return encoded;
}

}  // namespace quillboxd
