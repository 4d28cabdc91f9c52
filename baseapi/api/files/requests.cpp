#include "baseapi/api/files/requests.h"

#include "baseapi/net/query_text.h"
#include "baseapi/platform/fatal_stop.h"

namespace baseapi::inline v1 {

int GetAccessReq::buildParams() {
    QueryText query;
    if (bean) query.addIfPresent("imageProcess", bean->imageProcess);
    setAddress("/quillbox/ose/v1/access", query.text());
    return built;
}

int CreateDirectoryRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/directory");
    return setBody(*bean);
}

int FileCompleteRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/files/complete");
    return setBody(*bean);
}

int FileRenameRequest::buildParams() {
    if (!bean || !bean->fileId) return refused;
    setAddress("/quillbox/ose/v1/files/rename/" + *bean->fileId);
    return setBody(*bean);
}

int FilesCreateRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/files/create");
    return setBody(*bean);
}

int FileSearchRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/files/search");
    return setBody(*bean);
}

int FilesListRequest::buildParams() {
    if (!bean || !bean->type) return refused;
    setAddress("/quillbox/ose/v1/files/" + *bean->type);
    return setBody(*bean);
}

int FilesPathRequest::buildParams() {
    if (!bean) return refused;
    QueryText query;
    query.addIfFilled("fileId", bean->fileId).addIfFilled("containerId", bean->containerId);
    setAddress("/quillbox/ose/v1/files/path", query.text());
    return built;
}

int FilesStatsDirRequest::buildParams() {
    if (!bean) return refused;
    QueryText query;
    query.addIfFilled("fileId", bean->fileId).addIfFilled("containerId", bean->containerId);
    query.add("recursive", bean->recursive);
    setAddress("/quillbox/ose/v1/files/statsDir", query.text());
    return built;
}

int GetDownloadUrlRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/files/download");
    return setBody(*bean);
}

int GetFileDetailRequest::buildParams() {
    if (!bean || !bean->fileId) return refused;
    setAddress("/quillbox/ose/v1/files/" + *bean->fileId + "/detail");
    return setBody(*bean);
}

int GetUploadUrlRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/files/multipart/uploadUrl");
    return setBody(*bean);
}

int GetFilePreviewUrlRequest::buildParams() {
    if (!bean) return refused;
    const auto& fileId = given(bean->fileId, "baseapi/GetFilePreviewUrlRequest: fileId");
    setAddress("/quillbox/ose/v1/files/preview/" + fileId + "/link");
    return built;
}

}  // namespace baseapi::inline v1
