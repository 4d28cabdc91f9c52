#pragma once

#include <functional>
#include <optional>
#include <string>

namespace quillbox {

class Host;

/// Goes through a list page by page. `page` takes the cursor of a page, absent for the first, and returns
/// that of the next, empty after the last. Ends early where nobody reads the output any more. Throws
/// `ServiceFailure`, with `what`, where a cursor leads to itself.
void followCursor(const Host& host, const std::string& what,
                  const std::function<std::string(const std::optional<std::string>& cursor)>& page);

}  // namespace quillbox
