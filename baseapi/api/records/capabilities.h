#pragma once

#include <optional>

#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// What the user may do with a file; each may be absent.
struct UserCapabilities {
    std::optional<bool> addChildNodePermission;
    std::optional<bool> copyPermission;
    std::optional<bool> deletePermission;
    std::optional<bool> downloadPermission;
    std::optional<bool> editPermission;
    std::optional<bool> listChildNodePermission;
    std::optional<bool> removeChildNodePermission;
    std::optional<bool> renameFilePermission;
    std::optional<bool> shareFilePermission;
    std::optional<bool> uploadPermission;
    std::optional<bool> viewPermission;

    BASEAPI_FIELDS(UserCapabilities, addChildNodePermission, copyPermission, deletePermission,
                   downloadPermission, editPermission, listChildNodePermission, removeChildNodePermission,
                   renameFilePermission, shareFilePermission, uploadPermission, viewPermission)
};

/// What the user may do with a file. All keys must be there.
struct Capabilities {
    bool addChildNodePermission = false;
    bool copyPermission = false;
    bool deletePermission = false;
    bool downloadPermission = false;
    bool editPermission = false;
    bool listChildNodePermission = false;
    bool removeChildNodePermission = false;
    bool renameFilePermission = false;
    bool shareFilePermission = false;
    bool uploadPermission = false;
    bool viewPermission = false;

    BASEAPI_FIELDS(Capabilities, addChildNodePermission, copyPermission, deletePermission, downloadPermission,
                   editPermission, listChildNodePermission, removeChildNodePermission, renameFilePermission,
                   shareFilePermission, uploadPermission, viewPermission)
};

/// `Capabilities` and what only whole files have. All keys must be there.
struct CapabilitiesEx : Capabilities {
    bool writerHasChangeCopyPermission = false;
    bool commentPermission = false;
    bool readHistoryVersionPermission = false;
    bool recyclePermission = false;
    bool unrecyclePermission = false;

    BASEAPI_FIELDS_OF(CapabilitiesEx, Capabilities, writerHasChangeCopyPermission, commentPermission,
                      readHistoryVersionPermission, recyclePermission, unrecyclePermission)
};

}  // namespace baseapi::inline v1
