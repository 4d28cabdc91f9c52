#pragma once

#include <string>

namespace baseapi::inline v1 {

/// Declared for hosts that name it; nothing reads or writes its field.
class DeviceIdentifier {
  public:
    std::string keychainKey;
};

}  // namespace baseapi::inline v1
