#pragma once

#include <string>
#include <string_view>

#include "quillboxd/http/message.h"

namespace quillboxd {

/// The text as it stands in a page or in a quoted attribute.
std::string escapeHtml(std::string_view text);

/// A page that needs nothing but itself. The title is plain text, the content is HTML.
Reply htmlPage(int status, std::string_view title, const std::string& content);

}  // namespace quillboxd
