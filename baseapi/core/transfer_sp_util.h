#pragma once

namespace baseapi::inline v1 {

/// Declared for hosts that name it; empty, and used by nothing.
class TransferSpUtil {};

}  // namespace baseapi::inline v1
