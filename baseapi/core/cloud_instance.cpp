#include "baseapi/core/cloud_instance.h"

namespace baseapi::inline v1 {

CloudInstance& CloudInstance::shared() {
    static CloudInstance& instance = *new CloudInstance;
    return instance;
}

}  // namespace baseapi::inline v1
