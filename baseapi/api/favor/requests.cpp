#include "baseapi/api/favor/requests.h"

#include "baseapi/net/query_text.h"

namespace baseapi::inline v1 {

int GetStarFilesRequest::buildParams() {
    if (!bean) return refused;
    QueryText query;
    query.addIfNotZero("pageSize", bean->pageSize.value_or(0)).addIfFilled("pageCursor", bean->pageCursor);
    query.addIfNotZero("sortType", bean->sortType.value_or(0));
    query.addIfNotZero("sortDirection", bean->sortDirection.value_or(0));
    query.addIfFilled("imageProcess", bean->imageProcess);
    setAddress("/quillbox/ose/v1/star/files", query.text());
    return built;
}

int GetStarBatchRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/star/batch");
    return setBody(*bean);
}

int UpdateRevisionRequest::buildParams() {
    if (!bean || !bean->fileId) return refused;
    setAddress("/quillbox/ose/v1/revision/updateRevision");
    return setBody(*bean);
}

}  // namespace baseapi::inline v1
