#include "baseapi/core/operation.h"

#include <utility>

namespace baseapi::inline v1 {

void Operation::start(QueuePlace place) {
    if (!spent_.exchange(true)) main(std::move(place));
}

void Operation::cancel() {
    spent_.store(true);
}

}  // namespace baseapi::inline v1
