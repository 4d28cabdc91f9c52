#pragma once

#include <string>

#include "baseapi/api/files/records.h"

namespace bench {

/// Writes the request with RapidJSON's Writer as one writes it by hand for this one record.
std::string writeByHand(const baseapi::FilesCreateBean& request);

}  // namespace bench
