#include "baseapi/platform/uuid.h"

#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid_io.hpp>

namespace baseapi::inline v1 {

std::string randomUuid() {
    auto text = boost::uuids::to_string(boost::uuids::random_generator_pure()());
    for (auto& letter : text) {
        if (letter >= 'a') letter = static_cast<char>(letter - 'a' + 'A');
    }
    return text;
}

}  // namespace baseapi::inline v1
