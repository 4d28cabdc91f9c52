#pragma once

namespace baseapi {

/// Declared for hosts that name it; empty, and used by nothing.
class BaseRequestConstants {};

}  // namespace baseapi
