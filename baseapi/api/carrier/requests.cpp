#include "baseapi/api/carrier/requests.h"

namespace baseapi::inline v1 {

int StandPackageRequest::buildParams() {
    setAddress("/quillbox/ose/v1/carrier/standard/packages");
    return built;
}

int StandPackagesOrdersRequest::buildParams() {
    setAddress("/quillbox/ose/v1/carrier/standard/packages/orders");
    return built;
}

int OperationReverseOrderRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/carrier/operation/reverseOrder");
    return setBody(*bean);
}

int NotifyPackageExpireRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/carrier/users/notifyPackageExpire");
    return setBody(*bean);
}

}  // namespace baseapi::inline v1
