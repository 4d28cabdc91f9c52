#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quillboxd {

/// Bytes that nobody can guess.
std::string randomBytes(std::size_t count);

/// A fresh id of an item: positive, so that it stands on the wire as plain decimal digits.
std::int64_t randomId();

}  // namespace quillboxd
