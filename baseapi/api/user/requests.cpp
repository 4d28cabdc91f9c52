#include "baseapi/api/user/requests.h"

namespace baseapi {

int UserAuthReq::buildParams() {
    if (!bean || !bean->authCode) return refused;
    setAddress("/quillbox/ose/v1/carrier/standard/user/auth");
    return setBody(*bean);
}

}  // namespace baseapi
