#include "quillboxd/pages/picture.h"

#include <algorithm>

#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/parameters.h"
#include "quillboxd/pages/pages.h"

namespace quillboxd::pages {
namespace {

using namespace std::literals;

struct Format {
    std::size_t offset;
    std::string_view mark;
    std::string_view type;
};

// Pixels alone: a drawing may hold a script. Browsers look at the type and not at the bytes, so it is the
// service that tells it, and not whoever uploaded the file.
constexpr Format formats[] = {{0, "\xff\xd8\xff", "image/jpeg"},
                              {0, "\x89PNG\r\n\x1a\n", "image/png"},
                              {0, "GIF8", "image/gif"},
                              {8, "WEBP", "image/webp"},
                              {4, "ftypavif", "image/avif"}};
constexpr std::int64_t headLength = 16;
constexpr std::int64_t largest = 32 * 1024 * 1024;

/// Empty for what is shown as no picture.
std::string_view pictureType(Service& service, const Node& file) {
    if (!file.content || file.size < headLength || file.size > largest) return {};
    const auto head = service.contents.read(*file.content, 0, headLength);
    const auto* format = std::find_if(std::begin(formats), std::end(formats), [&](const Format& each) {
        return std::string_view(head).substr(each.offset).starts_with(each.mark);
    });
    return format == std::end(formats) ? ""sv : format->type;
}

}  // namespace

bool isPicture(Service& service, const Node& file) {
    return !pictureType(service, file).empty();
}

std::string pictureAddress(const Node& file) {
    return std::string(root) + "pictures/" + std::to_string(file.account) + '/' + std::to_string(file.id);
}

Reply picture(Call& call) {
    auto& service = call.service;
    const auto account = numberIn(call.wildcards[0], "the account in the path");
    const auto file = Tree(service.database, account).requireFile(call.wildcards[1]);
    const auto type = pictureType(service, file);
    if (type.empty()) notFound("the file \"" + file.name + "\" is shown as no picture");
    Reply reply{.contentType = std::string(type)};
    reply.headers = {{"Cache-Control", "no-store"},
                     {"Content-Security-Policy", "default-src 'none'; sandbox"},
                     {"Cross-Origin-Resource-Policy", "same-origin"},
                     {"X-Content-Type-Options", "nosniff"}};
    reply.pieces = service.contents.pieces(*file.content, 0, file.size);
    return reply;
}

}  // namespace quillboxd::pages
