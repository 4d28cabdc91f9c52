#include "quillboxd/crypto/random.h"

#include <openssl/rand.h>

#include <cstring>
#include <stdexcept>

namespace quillboxd {

std::string randomBytes(std::size_t count) {
    std::string bytes(count, '\0');
    if (RAND_bytes(reinterpret_cast<unsigned char*>(bytes.data()), static_cast<int>(count)) != 1) {
        throw std::runtime_error("the system gives no random bytes");
    }
    return bytes;
}

std::int64_t randomId() {
    std::uint64_t number = 0;
    std::memcpy(&number, randomBytes(sizeof number).data(), sizeof number);
    constexpr std::uint64_t lowest = std::uint64_t{1} << 60;
    return static_cast<std::int64_t>(number % lowest + lowest);
}

}  // namespace quillboxd
