#pragma once

#include <string>

namespace baseapi::inline v1 {

/// A random UUID in its canonical text form with upper-case letters, as
/// "7D444840-9DC0-41D1-B245-5FFDCE74FAD2".
std::string randomUuid();

}  // namespace baseapi::inline v1
