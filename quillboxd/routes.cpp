#include "quillboxd/handlers/handlers.h"
#include "quillboxd/router.h"

namespace quillboxd {
namespace {

constexpr Route table[] = {
    // Users
    {"POST", "/quillbox/ose/v1/carrier/standard/user/auth", users::getToken, Admission::anyone},

    // Files; the list's kind is any text, so it stands behind the fixed names
    {"GET", "/quillbox/ose/v1/access", files::access},
    {"POST", "/quillbox/ose/v1/directory", files::createDirectory},
    {"POST", "/quillbox/ose/v1/files/complete", files::complete, Admission::detached},
    {"POST", "/quillbox/ose/v1/files/create", files::create},
    {"POST", "/quillbox/ose/v1/files/search", files::search},
    {"POST", "/quillbox/ose/v1/files/download", files::downloadUrls},
    {"GET", "/quillbox/ose/v1/files/path", files::path},
    {"GET", "/quillbox/ose/v1/files/statsDir", files::statsDir},
    {"POST", "/quillbox/ose/v1/files/multipart/uploadUrl", files::uploadUrls},
    {"POST", "/quillbox/ose/v1/files/rename/*", files::rename},
    {"GET", "/quillbox/ose/v1/files/preview/*/link", files::previewLink},
    {"POST", "/quillbox/ose/v1/files/*/detail", files::detail},
    {"POST", "/quillbox/ose/v1/files/*", files::list},

    // Signed addresses
    {"PUT", "/_part/*/*", addresses::putPart, Admission::address},
    {"GET", "/_content/*", addresses::getContent, Admission::address},
    {"HEAD", "/_content/*", addresses::getContent, Admission::address},
    {"GET", "/_content/*/inline", addresses::getContent, Admission::address},
    {"HEAD", "/_content/*/inline", addresses::getContent, Admission::address},

    // Control
    {"GET", "/_dev/health", control::health, Admission::control},
    {"POST", "/_dev/reset", control::reset, Admission::control},
    {"GET", "/_dev/requests", control::requests, Admission::control},
    {"POST", "/_dev/faults", control::planFault, Admission::control},
    {"GET", "/_dev/faults", control::listFaults, Admission::control},
    {"DELETE", "/_dev/faults", control::forgetFaults, Admission::control},
};

}  // namespace

std::span<const Route> routes() {
    return table;
}

}  // namespace quillboxd
