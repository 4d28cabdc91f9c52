#pragma once

#include "quillboxd/call.h"

// What the pages show, and where they are. They only show: whatever changes the service is a request of its
// own.

namespace quillboxd::pages {

inline constexpr std::string_view root = "/_dev/pages/";

std::string folderAddress(std::int64_t account, std::int64_t folder);

/// The account's name, which leads to its root folder.
std::string accountLink(std::int64_t account, std::string_view name);

/// The journal of requests from the newest on, and where it goes on; `before` is the number of one that comes
/// after.
std::string requestTable(Call& call, std::int64_t before, std::size_t count);

/// The accounts by name, and where they go on.
std::string accountTable(Call& call, std::int64_t offset, std::int64_t count);

/// The backup records of all accounts from the newest on, and where they go on.
std::string recordTable(Call& call, std::int64_t before, std::int64_t count);

/// A call that is refused, as a page.
Reply refusal(const ApiError& error);

}  // namespace quillboxd::pages
