#pragma once

namespace baseapi {

/// Declared for hosts that name it; empty, and used by nothing.
class SDKUtils {};

}  // namespace baseapi
