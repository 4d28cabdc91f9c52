#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quillboxd/http/message.h"

namespace quillboxd {

/// The text as it stands in a page or in a quoted attribute.
std::string escapeHtml(std::string_view text);

/// A link to an address, which is plain text, around HTML.
std::string htmlLink(std::string_view address, const std::string& html);

/// "5 B", "1.4 MiB".
std::string sizeText(std::int64_t bytes);

/// What a page has besides its title and its content.
struct PageExtras {
    std::string_view style = {};   ///< CSS behind that of every page
    std::string_view header = {};  ///< HTML before the main part, whose id is "main"
    bool pictures = false;         ///< whether it shows pictures that the service serves
};

/// A page that needs nothing but the service. The title is plain text, the content is HTML.
Reply htmlPage(int status, std::string_view title, const std::string& content, const PageExtras& extras = {});

}  // namespace quillboxd
