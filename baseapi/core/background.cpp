#include "baseapi/core/background.h"

#include <utility>

#include "baseapi/platform/worker_pool.h"

namespace baseapi::inline v1 {

void inBackground(std::function<void()> job) {
    // Never destroyed: runs may be under way while the process ends.
    static auto* pool = new WorkerPool("baseapi-background");
    pool->post(std::move(job));
}

}  // namespace baseapi::inline v1
