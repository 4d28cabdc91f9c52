#pragma once

namespace baseapi::inline v1 {

/// A handler made of several functions, one for each case of a variant.
template <class... Functions>
struct Cases : Functions... {
    using Functions::operator()...;
};
/// A handler is deduced from its functions; clang 14 does not do so for an aggregate by itself.
template <class... Functions>
Cases(Functions...) -> Cases<Functions...>;

}  // namespace baseapi::inline v1
