#include "quillboxd/store/space.h"

#include <algorithm>
#include <string>

#include "quillboxd/error.h"
#include "quillboxd/store/database.h"
#include "quillboxd/store/packages.h"
#include "quillboxd/store/uploads.h"

namespace quillboxd {

std::int64_t Space::capacity() {
    return quota_ + Orders(database_, account_).capacity();
}

std::int64_t Space::used() {
    auto row = database_.query("SELECT space_used FROM accounts WHERE id = ?", account_);
    row.next();
    return row.integer(0);
}

void Space::requireRoom(std::int64_t length) {
    const auto reserved = Uploads(database_).underWay(account_);
    const auto all = capacity();
    const auto free = std::max<std::int64_t>(0, all - used() - reserved);
    if (length <= free) return;
    auto message = std::to_string(length) + " bytes do not fit: " + std::to_string(free) + " of " +
                   std::to_string(all) + " bytes are free";
    if (reserved > 0) message += ", uploads under way keep " + std::to_string(reserved);
    throw ApiError(507, Code::spaceFull, message);
}

}  // namespace quillboxd
