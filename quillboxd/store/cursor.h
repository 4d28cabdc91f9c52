#pragma once

#include <optional>
#include <string>

#include "quillboxd/json.h"

namespace quillboxd {

/// The place after a page's last row, so that rows that come and go do not shift the next page. Clients put
/// it into queries as it stands, so it is written in hexadecimal digits.
std::string writeCursor(const json::array& place);

/// The place of a cursor; nothing where no writeCursor made it.
std::optional<json::array> readCursor(const std::string& cursor);

}  // namespace quillboxd
