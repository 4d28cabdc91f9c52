#include "baseapi/platform/memory_size.h"

#include <gtest/gtest.h>

namespace baseapi {
namespace {

TEST(MemorySize, IsRefusedWhereNoObjectIsAsLarge) {
    EXPECT_EQ(memorySize(0), 0U);
    EXPECT_EQ(memorySize(PTRDIFF_MAX), std::size_t{PTRDIFF_MAX});
    EXPECT_THROW(memorySize(std::uint64_t{PTRDIFF_MAX} + 1), std::bad_alloc);
    EXPECT_THROW(memorySize(UINT64_MAX), std::bad_alloc);
}

}  // namespace
}  // namespace baseapi
