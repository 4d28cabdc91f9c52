#pragma once

#include "quillboxd/call.h"
#include "quillboxd/store/shares.h"

namespace quillboxd::shares {

// The views of a link. Those of its owner:
json::object createdLink(const Call& call, const Share& share);
json::object changedLink(const Call& call, const Share& share);
json::object detailedLink(Call& call, const Share& share);
json::object listedLink(Call& call, const Share& share);

// Those of a visitor; an item that the link names itself does not say which folder it is in.
json::object visitedLink(Call& call, const Share& share);
json::object visitedFile(const Call& call, const Share& share, const Node& node, bool inFolder);

}  // namespace quillboxd::shares
