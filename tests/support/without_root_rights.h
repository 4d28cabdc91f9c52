#pragma once

#include <functional>

namespace test_support {

/// Takes from this thread, and from what it executes from now on, the right of root to read what it may not.
void dropRootRights();

/// Runs the function on a thread that is bound by the permissions of files, also where the tests run as root.
void withoutRootRights(const std::function<void()>& run);

}  // namespace test_support
