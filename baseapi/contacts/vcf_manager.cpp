#include "baseapi/contacts/vcf_manager.h"

#include <array>
#include <ctime>

namespace baseapi::inline v1 {

std::string VCFManager::getCurrentTimestamp() {
    const auto now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    std::array<char, 32> text;
    return {text.data(), std::strftime(text.data(), text.size(), "%Y%m%d_%H%M%S", &local)};
}

}  // namespace baseapi::inline v1
