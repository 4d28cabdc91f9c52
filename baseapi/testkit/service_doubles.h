#pragma once

#include "baseapi/api/album/i_album.h"
#include "baseapi/api/backup/i_back_up.h"
#include "baseapi/api/carrier/i_carrier.h"
#include "baseapi/api/favor/i_favor.h"
#include "baseapi/api/favor/i_revision.h"
#include "baseapi/api/files/i_file.h"
#include "baseapi/api/job/i_job.h"
#include "baseapi/api/share/i_share.h"
#include "baseapi/api/sharefolder/i_share_folder.h"
#include "baseapi/api/sync/i_folder_sync.h"
#include "baseapi/api/user/i_space.h"
#include "baseapi/api/user/i_user.h"
#include "baseapi/testkit/interface_double.h"

namespace baseapi::inline v1::testkit {

/// Sign-in and users.
class UserDouble final : public InterfaceDouble<IUser> {
  public:
    BASEAPI_DOUBLE_OPERATIONS(IUser, getToken, getSpace, getUserById, getUserList, updateUser, deleteUser)
};

/// Files and folders.
class FileDouble final : public InterfaceDouble<IFile> {
  public:
    BASEAPI_DOUBLE_OPERATIONS(IFile, getAccessFiles, createDirectory, fileComplete, fileRename, filesCreate,
                              fileSearch, filesList, filesPath, filesStatsDir, getDownloadUrl, getFileDetail,
                              getUploadUrl, getFilePreviewUrl)
};

/// Share links.
class ShareDouble final : public InterfaceDouble<IShare> {
  public:
    BASEAPI_DOUBLE_OPERATIONS(IShare, getShares, createShare, cancelShare, getShareDetail, modifyShareDetail,
                              getShareFiles)
};

/// Favourites.
class FavorDouble final : public InterfaceDouble<IFavor> {
  public:
    BASEAPI_DOUBLE_OPERATIONS(IFavor, getStarFiles, getStarBatch)
};

/// Jobs that the service runs.
class JobDouble final : public InterfaceDouble<IJob> {
  public:
    BASEAPI_DOUBLE_OPERATIONS(IJob, cancelJobs, createJobs, getJobDetailById, getJobs)
};

/// Storage packages.
class CarrierDouble final : public InterfaceDouble<ICarrier> {
  public:
    void standardPackages(NetworkCallback<GetstandPackagesResponse> callback) override {
        called(&operationKey<&ICarrier::standardPackages>, "standardPackages", keep(std::tuple<>()),
               handlersIn(callback));
    }
    void standardPackagesOrders(NetworkCallback<GetStandPackagesOrdersResponse> callback) override {
        called(&operationKey<&ICarrier::standardPackagesOrders>, "standardPackagesOrders",
               keep(std::tuple<>()), handlersIn(callback));
    }
    BASEAPI_DOUBLE_OPERATIONS(ICarrier, operationBatch, notifyPackageExpire)
};

/// The service's store of backups. `updateConfigInfo` only records its calls: the library's own never calls
/// back either.
class BackUpDouble final : public InterfaceDouble<IBackUp> {
  public:
    BASEAPI_DOUBLE_OPERATIONS(IBackUp, unbindDevice, bindDevice, createBackupLock, keepBackupLock,
                              deleteBackupLock, backupGet, getRecords, getRecordFiles, addScope, deleteScope,
                              getScope, listConfigInfos, getConfigInfo, addConfigInfo)

    void getDevices(NetworkCallback<DevicesResponse> callback) override {
        called(&operationKey<&IBackUp::getDevices>, "getDevices", keep(std::tuple<>()), handlersIn(callback));
    }
    void backupComplete(std::optional<CompleteRecordBean> bean, std::optional<std::string> lockId,
                        NetworkCallback<BaseResponse> callback) override {
        called(&operationKey<&IBackUp::backupComplete>, "backupComplete", keep(std::tuple(bean, lockId)),
               handlersIn(callback));
    }
    void backupDelete(std::optional<BaseRecordBean> bean, std::optional<std::string> lockId,
                      NetworkCallback<BaseResponse> callback) override {
        called(&operationKey<&IBackUp::backupDelete>, "backupDelete", keep(std::tuple(bean, lockId)),
               handlersIn(callback));
    }
    void createRecord(std::optional<CreateRecordBean> bean, std::optional<std::string> lockId,
                      NetworkCallback<RecordDetailResponse> callback) override {
        called(&operationKey<&IBackUp::createRecord>, "createRecord", keep(std::tuple(bean, lockId)),
               handlersIn(callback));
    }
    void createRecordFile(std::optional<RecordFileBean> bean, std::optional<std::string> lockId,
                          NetworkCallback<FilesCreateResponse> callback) override {
        called(&operationKey<&IBackUp::createRecordFile>, "createRecordFile", keep(std::tuple(bean, lockId)),
               handlersIn(callback));
    }
    void updateConfigInfo(std::optional<UpdateConfigInfoBean> bean,
                          NetworkCallback<UpdateConfigInfosResponse>) override {
        log(&operationKey<&IBackUp::updateConfigInfo>)->take(keep(bean));
    }
};

/// Folders that are shared with members.
class ShareFolderDouble final : public InterfaceDouble<IShareFolder> {
  public:
    BASEAPI_DOUBLE_OPERATIONS(IShareFolder, shareFolderCreate, shareFolderRename, shareFolderDelete,
                              shareFolderDetail, shareFolderList, shareFolderAlbumList)
};

/// Albums of the cloud.
class AlbumDouble final : public InterfaceDouble<IAlbum> {
  public:
    BASEAPI_DOUBLE_OPERATIONS(IAlbum, albumCreate, albumUpdate, albumDelete, albumList, albumContentList,
                              albumContentAdd, albumContentDelete)
};

/// Revisions of a file.
class RevisionDouble final : public InterfaceDouble<IRevision> {
  public:
    BASEAPI_DOUBLE_OPERATIONS(IRevision, updateRevision)
};

/// Space used and free.
class SpaceDouble final : public InterfaceDouble<ISpace> {
  public:
    BASEAPI_DOUBLE_OPERATIONS(ISpace, batchGetSpace)
};

/// Sync folders and their feed of changes.
class FolderSyncDouble final : public InterfaceDouble<IFolderSync> {
  public:
    BASEAPI_DOUBLE_OPERATIONS(IFolderSync, createSyncFolder, closeSyncFolder, getSyncFolderStartCursor,
                              listChangeSyncFolder, walkFileSyncFolder)
};

}  // namespace baseapi::inline v1::testkit
