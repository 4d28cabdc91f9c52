#include "cli/cursor.h"

#include "cli/host.h"

namespace quillbox {

void followCursor(const Host& host, const std::string& what,
                  const std::function<std::string(const std::optional<std::string>& cursor)>& page) {
    std::optional<std::string> cursor;
    while (!host.output().unread()) {
        auto next = page(cursor);
        if (next.empty()) return;
        if (next == cursor) throw ServiceFailure{what, -1, "the list has no end"};
        cursor = std::move(next);
    }
}

}  // namespace quillbox
