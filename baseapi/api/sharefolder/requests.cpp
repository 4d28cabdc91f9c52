#include "baseapi/api/sharefolder/requests.h"

#include "baseapi/net/query_text.h"

namespace baseapi::inline v1 {

// An absent record is not refused here: nothing is set, and the request goes out as it is.

int CreateShareFolderRequest::buildParams() {
    if (!bean) return built;
    setAddress("/quillbox/ose/v1/sharefolder/create");
    return setBody(*bean);
}

int RenameShareFolderRequest::buildParams() {
    if (!bean) return built;
    setAddress("/quillbox/ose/v1/sharefolder/rename");
    return setBody(*bean);
}

int DeleteShareFolderRequest::buildParams() {
    if (!bean) return built;
    setAddress("/quillbox/ose/v1/sharefolder/delete");
    return setBody(*bean);
}

int GetShareFolderDetailRequest::buildParams() {
    if (!bean) return built;
    setAddress("/quillbox/ose/v1/sharefolder/metadata/" + std::to_string(bean->shareFolderId.value_or(0)));
    return built;
}

int ListShareFolderRequest::buildParams() {
    if (!bean) return built;
    QueryText query;
    query.add("offset", bean->offset.value_or(0)).add("limit", bean->limit.value_or(0));
    query.addIfPresent("keyWord", bean->keyWord).addIfPresent("status", bean->status);
    if (bean->queryType) query.add("queryType", *bean->queryType);
    setAddress("/quillbox/ose/v1/sharefolder/list", query.text());
    return built;
}

int GetShareFolderAlbumListRequest::buildParams() {
    if (!bean) return built;
    QueryText query;
    query.add("offset", bean->offset.value_or(0)).add("limit", bean->limit.value_or(0));
    query.add("shareFolderId", bean->shareFolderId.value_or("")).addIfPresent("keyWord", bean->keyWord);
    setAddress("/quillbox/ose/v1/sharefolder/album/list", query.text());
    return built;
}

}  // namespace baseapi::inline v1
