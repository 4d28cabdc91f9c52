#include "baseapi/api/sync/requests.h"

namespace baseapi::inline v1 {

int CreateSyncDirRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/syncDir/create");
    return setBody(*bean);
}

int CloseSyncDirRequest::buildParams() {
    if (!bean || !bean->syncDirId) return refused;
    setAddress("/quillbox/ose/v1/syncDir/close");
    return setBody(*bean);
}

int GetSyncDirStartCursorRequest::buildParams() {
    if (!bean || !bean->fileId) return refused;
    setAddress("/quillbox/ose/v1/syncDir/getStartCursor");
    return setBody(*bean);
}

int ListChangeSyncDirRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/syncDir/listChange");
    return setBody(*bean);
}

int WalkFileSyncDirRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/file/walkFile");  // not under "syncDir/", as on the wire
    return setBody(*bean);
}

}  // namespace baseapi::inline v1
