#pragma once

#include <functional>
#include <vector>

#include "baseapi/api/backup/records.h"
#include "baseapi/backup/file_detail_bean.h"

namespace quillbox {

class Output;

/// Hands over the files that a backup of these scopes sends, as the library finds them, and warns of a scope
/// that has nothing to send, or that lies in another.
void walkScopes(Output& output, const std::vector<baseapi::ScopeDetail>& scopes,
                const std::function<void(baseapi::FileDetailBean&&)>& file);

}  // namespace quillbox
