#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "quillboxd/http/message.h"
#include "quillboxd/json.h"

// What the pages are put together from. Every text that comes back is HTML.

namespace quillboxd::pages {

struct Column {
    std::string_view title;
    std::string_view look =
        {};  ///< "number" for digits below each other; "any" or "wide" for text that breaks anywhere
};

/// The cells of a row as HTML; the first says what the row is about.
using Row = std::vector<std::string>;

/// A table, which scrolls by itself where the window is narrow; without rows a sentence that says so.
std::string table(std::string_view caption, std::span<const Column> columns, const std::vector<Row>& rows);

/// A heading that addresses can name by its id, and what it stands over.
std::string section(std::string_view id, std::string_view title, const std::string& content);

/// A time of the store, "2026-01-02T03:04:05.678Z", to the second; empty where it is.
std::string timeCell(std::string_view time);

/// The members of an object but those named in `without`: "times 2, status 503".
std::string members(const json::object& object, std::initializer_list<std::string_view> without = {});

/// Plain text, escaped. A run of hexadecimal digits that is long enough to be a token, a lock or a signature
/// shows its beginning alone; what is longer than a line or two ends in "…".
std::string plain(std::string_view text);

/// A paragraph with a link, for what did not fit on the page.
std::string more(const std::string& address, std::string_view text);

/// "1 file", "2 files".
std::string counted(std::int64_t number, std::string_view noun);

/// The whole page.
Reply page(std::string_view title, const std::string& content, int status = 200);

}  // namespace quillboxd::pages
