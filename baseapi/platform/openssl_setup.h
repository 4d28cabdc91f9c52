#pragma once

namespace baseapi::inline v1 {

/// Readies libcrypto, once, before its first use: its clean-up at exit stays off, since threads of the
/// library may still be at work while `main` returns.
void setUpOpenSsl();

}  // namespace baseapi::inline v1
