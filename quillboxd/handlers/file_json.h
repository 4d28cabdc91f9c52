#pragma once

#include <string>

#include "quillboxd/call.h"

namespace quillboxd::files {

/// "txt" of "notes.txt"; empty without a dot behind the first character, and for a folder.
std::string suffix(const Node& node);

/// The members that every view of a file has.
json::object commonFields(const Node& node);

/// The members of a file in a list.
json::object listFields(const Call& call, const Node& node);

json::object allCapabilities();

/// The members that say whose the file is and what the caller may do with it.
void addOwner(const Call& call, json::object& fields);

/// A fresh address of the file's content, for its owner or for the visitor of a link.
std::string contentUrl(const Call& call, const Node& node, bool inlineView = false, std::int64_t share = 0);

/// The list of links of a detail: one, of usage "content".
json::array downloadLinks(const Call& call, const Node& node);

/// The folder that parentFolder names: the root where it is absent or empty.
std::int64_t requireParent(Tree& tree, const json::object& request);

/// pageInfo and the cursor in it; without it the first 1000.
PageRequest pageRequest(const json::object& record);

/// The order that sortType (1 name, 2 time of the last change, 3 size, 4 time of the creation; any other
/// number is the name too) and sortDirection (1 downwards) ask for.
void setOrder(PageRequest& page, std::int64_t sortType, std::int64_t sortDirection);

/// pageInfo, and the order of sortInfo: its numbers, by name without it.
PageRequest orderedPage(const json::object& record);

constexpr Field pageInfoShape[] = {{"pageSize", Type::integer}, {"pageCursor", Type::text}};
constexpr Field sortInfoShape[] = {{"sortType", Type::integer}, {"sortDirection", Type::integer}};

}  // namespace quillboxd::files
