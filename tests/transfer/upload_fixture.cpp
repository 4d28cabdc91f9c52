#include "tests/transfer/upload_fixture.h"

#include "baseapi/core/main_queue.h"

namespace baseapi {

void drainMainQueue() {
    Event drained;
    onMainQueue([&] { drained.set(); });
    EXPECT_TRUE(drained.wait());
}

}  // namespace baseapi
