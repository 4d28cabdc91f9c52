#include "baseapi/api/user/requests.h"

#include "baseapi/core/log.h"
#include "baseapi/net/query_text.h"
#include "baseapi/platform/fatal_stop.h"

namespace baseapi::inline v1 {

int UserAuthReq::buildParams() {
    if (!bean || !bean->authCode) return refused;
    setAddress("/quillbox/ose/v1/carrier/standard/user/auth");
    return setBody(*bean);
}

int GetSpaceReq::buildParams() {
    if (!bean) return refused;
    QueryText query;
    query.add("type", bean->type.value_or("")).addIfPresent("containerId", bean->containerId);
    setAddress("/quillbox/ose/v1/space/" + bean->ownerId.value_or(""), query.text());
    return built;
}

int GetUserByIdReq::buildParams() {
    if (!bean || !bean->userId) return refused;
    setAddress("/quillbox/ose/v1/users/" + *bean->userId);
    return built;
}

int GetUserListReq::buildParams() {
    if (!bean) return refused;
    QueryText query;
    query.addIfFilled("deptId", bean->deptId);
    query.add("isDirect", given(bean->isDirect, "baseapi/IUser: isDirect"));
    query.addIfFilled("offset", bean->offset).addIfFilled("limit", bean->limit);
    query.addIfFilled("keyWord", bean->keyWord);
    logLine("getParamsStr = ", query.text());
    setAddress("/quillbox/ose/v1/userList", query.text());
    return built;
}

int ModifyUserRequest::buildParams() {
    if (!bean || !bean->userId || !bean->userBaseInfo) return refused;
    setAddress("/quillbox/ose/v1/users/" + *bean->userId);
    return setBody(*bean->userBaseInfo);
}

int DeleteUserByUserIdRequest::buildParams() {
    if (!bean || !bean->userId) return refused;
    setAddress("/quillbox/ose/v1/users/" + *bean->userId);
    return built;
}

int BatchGetSpaceRequest::buildParams() {
    if (!bean) return built;  // sent as it is, without path and body
    setAddress("/quillbox/ose/v1/space/batchGetSpace");
    return setBody(*bean);
}

}  // namespace baseapi::inline v1
