#include "baseapi/api/share/requests.h"

#include "baseapi/net/query_text.h"
#include "baseapi/platform/fatal_stop.h"

namespace baseapi::inline v1 {

int GetShareRequest::buildParams() {
    if (!bean) return refused;
    QueryText query;
    query.addIfNotZero("pageSize", bean->pageSize).addIfFilled("pageCursor", bean->pageCursor);
    query.addIfNotZero("sortType", given(bean->sortType, "baseapi/IShare: sortType"));
    query.addIfNotZero("sortDirection", given(bean->sortDirection, "baseapi/IShare: sortDirection"));
    query.addIfFilled("displayName", bean->displayName).addIfFilled("imageProcess", bean->imageProcess);
    setAddress("/quillbox/ose/v1/share", query.text());
    return built;
}

int CreateShareRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/share");
    return setBody(*bean);
}

int CancelShareRequest::buildParams() {
    if (!bean || !bean->shareIds) return refused;
    setAddress("/quillbox/ose/v1/share/cancel");
    return setBody(*bean);
}

int GetShareDetailRequest::buildParams() {
    if (!bean || !bean->shareId) return refused;
    setAddress("/quillbox/ose/v1/share/" + *bean->shareId);
    return built;
}

int ModifyShareDetailRequest::buildParams() {
    if (!bean || !bean->shareId) return refused;
    setAddress("/quillbox/ose/v1/share/" + *bean->shareId);
    return setBody(*bean);
}

int GetShareFilesRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/share/files");
    return setBody(*bean);
}

}  // namespace baseapi::inline v1
