#include "baseapi/api/album/requests.h"

#include "baseapi/net/query_text.h"

namespace baseapi::inline v1 {

int CreateAlbumRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/album/create");
    return setBody(*bean);
}

int UpdateAlbumRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/" + bean->albumId.value_or("") + "/update");  // no "album/", as on the wire
    if (bean->req) return setBody(*bean->req);
    body = "null";
    return built;
}

int DeleteAlbumRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/album/" + bean->albumId.value_or(""));
    return built;
}

int GetAlbumListRequest::buildParams() {
    if (!bean) return refused;
    QueryText query;
    query.add("userId", bean->userId.value_or(""));
    query.add("albumKind", bean->albumKind.value_or(0)).add("albumType", bean->albumType.value_or(0));
    query.add("pageSize", bean->pageSize).add("pageNum", bean->pageNum.value_or(0));
    query.addIfPresent("groupId", bean->groupId);
    setAddress("/quillbox/ose/v1/album/list", query.text());
    return built;
}

int GetAlbumFileListRequest::buildParams() {
    if (!bean) return refused;
    QueryText query;
    query.add("pageSize", bean->pageSize).add("pageCursor", bean->pageCursor.value_or(""));
    query.add("sortType", bean->sortType.value_or(1));
    query.add("sortDirection", bean->sortType.value_or(2));  // the type, as on the wire
    setAddress("/quillbox/ose/v1/album/" + bean->albumId.value_or("") + "/list", query.text());
    return built;
}

int AddAlbumContentRequest::buildParams() {
    if (!bean || !bean->req || !bean->albumId) return refused;
    setAddress("/quillbox/ose/v1/album/" + *bean->albumId + "/add");
    return setBody(*bean->req);
}

int BatchDeleteAlbumsRequest::buildParams() {
    if (!bean || !bean->req || !bean->albumId) return refused;
    setAddress("/quillbox/ose/v1/" + *bean->albumId + "/batchDelete");  // no "album/", as on the wire
    return setBody(*bean->req);
}

}  // namespace baseapi::inline v1
