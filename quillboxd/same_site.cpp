#include "quillboxd/same_site.h"

#include "quillboxd/unicode.h"

namespace quillboxd {
namespace {

std::string_view withoutPort(std::string_view authority) {
    return authority.substr(0, authority.starts_with('[') ? authority.find(']') + 1 : authority.find(':'));
}

bool isAddress(std::string_view host) {
    return host.starts_with('[') || host.find_first_not_of("0123456789.") == host.npos;
}

/// Sites out there have a dot in their name, and can have it mean 127.0.0.1.
bool isOwnName(std::string_view host) {
    return isAddress(host) || host.find('.') == host.npos || host.ends_with(".localhost");
}

}  // namespace

void requireSameSite(const Call& call) {
    const auto* host = call.request.header("Host");
    if (host && !isOwnName(withoutPort(*host)))
        forbidden("the host \"" + readable(*host) +
                  "\" may be another site; call the service 127.0.0.1 or localhost");
    const auto* origin = call.request.header("Origin");
    if (origin && *origin != call.origin)
        forbidden("the request comes from the site \"" + readable(*origin) + "\"");
}

}  // namespace quillboxd
