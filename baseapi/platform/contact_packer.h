#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "baseapi/platform/packed_contact.h"

namespace baseapi::inline v1 {

/// Packs many contacts side by side, some hundred to a chunk of memory, which is theirs together: it goes
/// with the last of them. For one thread at a time.
class ContactPacker {
  public:
    ContactPacker() = default;
    ContactPacker(const ContactPacker&) = delete;
    ContactPacker& operator=(const ContactPacker&) = delete;

    /// The same as `shareContact`.
    SharedContact share(const ContactTexts& texts);

  private:
    std::shared_ptr<std::uint32_t[]> chunk_;
    /// What the last chunk has left.
    std::span<std::uint32_t> room_;
};

}  // namespace baseapi::inline v1
