#include "baseapi/core/url.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>

namespace baseapi::inline v1 {
namespace {

/// The text behind "scheme:", or nothing where the text has another scheme or none.
std::optional<std::string_view> behindScheme(std::string_view text, std::string_view scheme) {
    const auto sameLetter = [](char left, char right) {
        return std::tolower(static_cast<unsigned char>(left)) == right;
    };
    if (text.size() <= scheme.size() || text[scheme.size()] != ':' ||
        !std::equal(scheme.begin(), scheme.end(), text.begin(),
                    [&](char right, char left) { return sameLetter(left, right); }))
        return std::nullopt;
    return text.substr(scheme.size() + 1);
}

/// What follows the authority, up to the query or the fragment.
std::string_view pathOf(std::string_view behindScheme) {
    auto path = behindScheme.substr(0, behindScheme.find_first_of("?#"));
    if (path.starts_with("//")) {
        const auto slash = path.find('/', 2);
        path = slash == std::string_view::npos ? std::string_view() : path.substr(slash);
    }
    return path;
}

/// Decodes each "%xx" but "%00"; what is no such sequence stays.
std::string percentDecoded(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned char byte = 0;
        if (text[i] == '%' && i + 2 < text.size()) {
            const auto* digits = text.data() + i + 1;
            if (std::from_chars(digits, digits + 2, byte, 16).ptr != digits + 2) byte = 0;
        }
        if (byte == 0) {
            decoded += text[i];
        } else {
            decoded += static_cast<char>(byte);
            i += 2;
        }
    }
    return decoded;
}

}  // namespace

URL::URL(std::string_view text) : text_(text) {
    if (const auto rest = behindScheme(text, "file")) {
        isFile_ = true;
        text_ = percentDecoded(pathOf(*rest));
    }
}

URL URL::file(const std::filesystem::path& path) {
    URL url;
    url.text_ = path.string();
    url.isFile_ = true;
    return url;
}

std::filesystem::path URL::path() const {
    return isFile_ ? std::filesystem::path(text_) : std::filesystem::path();
}

std::string URL::lastPathComponent() const {
    std::string decoded;
    std::string_view path = text_;
    if (!isFile_) {
        const auto colon = path.find(':');
        decoded = percentDecoded(pathOf(path.substr(colon == path.npos ? 0 : colon + 1)));
        path = decoded;
    }
    while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
    return std::string(path.size() > 1 ? path.substr(path.rfind('/') + 1) : path);
}

std::string URL::pathExtension() const {
    const auto name = lastPathComponent();
    const auto dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? std::string() : name.substr(dot + 1);
}

}  // namespace baseapi::inline v1
