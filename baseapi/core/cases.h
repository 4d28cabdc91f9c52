#pragma once

namespace baseapi {

/// A handler made of several functions, one for each case of a variant.
template <class... Functions>
struct Cases : Functions... {
    using Functions::operator()...;
};
// clang 14 does not make it for an aggregate.
template <class... Functions>
Cases(Functions...) -> Cases<Functions...>;

}  // namespace baseapi
