#pragma once

#include <string>

namespace baseapi::inline v1 {

/// A new trace id of 38 characters: the first 16 digits of a random UUID in upper case between fixed texts.
std::string makeTraceId();

}  // namespace baseapi::inline v1
