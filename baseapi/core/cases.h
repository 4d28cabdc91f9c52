#pragma once

namespace baseapi {

/// A handler made of several functions, one for each case of a variant.
template <class... Functions>
struct Cases : Functions... {
    using Functions::operator()...;
};

}  // namespace baseapi
