#include "baseapi/core/operation.h"

namespace baseapi::inline v1 {

void Operation::start() {
    if (!spent_.exchange(true)) main();
}

void Operation::cancel() {
    spent_.store(true);
}

}  // namespace baseapi::inline v1
