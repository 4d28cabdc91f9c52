#include "baseapi/core/cloud_instance.h"

namespace baseapi {

CloudInstance& CloudInstance::shared() {
    static CloudInstance& instance = *new CloudInstance;
    return instance;
}

}  // namespace baseapi
