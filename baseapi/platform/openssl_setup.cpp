#include "baseapi/platform/openssl_setup.h"

#include <openssl/crypto.h>

namespace baseapi::inline v1 {

void setUpOpenSsl() {
    [[maybe_unused]] static const int ready = OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr);
}

}  // namespace baseapi::inline v1
