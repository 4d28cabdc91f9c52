#pragma once

#include <string>

#include "baseapi/api/files/records.h"

namespace bench {

/// Reads a page of files with simdjson On-Demand as one writes it by hand for this one record: every key has
/// its line. False where the text does not fit.
bool readByHand(std::string& text, baseapi::FilesListResponse& response);

}  // namespace bench
