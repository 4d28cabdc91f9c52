#pragma once

#include <string>

namespace baseapi {

/// Declared for hosts that name it; nothing reads or writes its field.
class DeviceIdentifier {
  public:
    std::string keychainKey;
};

}  // namespace baseapi
