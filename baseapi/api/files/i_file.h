#pragma once

#include <optional>

#include "baseapi/api/files/records.h"
#include "baseapi/json/record.h"
#include "baseapi/net/network_result.h"

namespace baseapi::inline v1 {

/// The file tree of the service: create, list, search, rename, path and statistics, and the service's side of
/// an upload. Reached through `CloudInstance::shared().getFileImpl()`; callable from any thread.
///
/// Each operation sends one request and returns at once. The callback gets the answer exactly once, as
/// `NetworkCallback` says. A record that is absent, that lacks a field that must be there, or that has
/// no JSON form, is refused: the callback gets failure -1 "params build faild" before the call returns, and
/// nothing is sent. Values go into path and query as they are: a value that an address does not allow ends in
/// failure -1 "callRequest error: invalidURL".
class IFile {
  public:
    virtual ~IFile() = default;

    /// The files of late. The record may be absent: the call then goes out without a query.
    virtual void getAccessFiles(std::optional<GetAccessFilesBean> bean,
                                NetworkCallback<GetAccessResponse> onCallback) = 0;

    /// Makes a folder.
    virtual void createDirectory(std::optional<CreateDirectoryBean> bean,
                                 NetworkCallback<CreateDirectoryResponse> onCallback) = 0;

    /// Ends an upload whose parts have all been sent.
    virtual void fileComplete(std::optional<FilesCompleteBean> bean,
                              NetworkCallback<BaseResponse> onCallback) = 0;

    /// Gives a file or a folder another name. `fileId` must be there.
    virtual void fileRename(std::optional<FilesRenameBean> bean,
                            NetworkCallback<BaseResponse> onCallback) = 0;

    /// Begins an upload. The answer holds the parts to send, unless it says `rapidUpload` or `exist`.
    virtual void filesCreate(std::optional<FilesCreateBean> bean,
                             NetworkCallback<FilesCreateResponse> onCallback) = 0;

    /// Searches files, one page a call.
    virtual void fileSearch(std::optional<FilesSearchBean> bean,
                            NetworkCallback<FileSearchResponse> onCallback) = 0;

    /// Lists files, one page a call. `type` must be there.
    virtual void filesList(std::optional<FilesListBean> bean,
                           NetworkCallback<FilesListResponse> onCallback) = 0;

    /// The folders on the way to a file, by id and by name.
    virtual void filesPath(std::optional<FilesPathBean> bean,
                           NetworkCallback<FilesPathResponse> onCallback) = 0;

    /// The size and the counts of a folder.
    virtual void filesStatsDir(std::optional<FilesStatsDirBean> bean,
                               NetworkCallback<FilesStatsDirResponse> onCallback) = 0;

    /// Addresses of the content of several files. A file that has none says so in its own entry; the call
    /// stays a success.
    virtual void getDownloadUrl(std::optional<GetDownloadUrlBean> bean,
                                NetworkCallback<GetDownloadUrlResponse> onCallback) = 0;

    /// All about one file. `fileId` must be there.
    virtual void getFileDetail(std::optional<GetFileDetailBean> bean,
                               NetworkCallback<GetFileDetailResponse> onCallback) = 0;

    /// Further upload addresses for the parts named.
    virtual void getUploadUrl(std::optional<GetUploadUrlBean> bean,
                              NetworkCallback<GetUploadUrlResponse> onCallback) = 0;

    /// A link to look at a file. A record without `fileId` is a programming error and ends the process.
    virtual void getFilePreviewUrl(std::optional<GetFilePreviewUrlBean> bean,
                                   NetworkCallback<FileRreviewAndEditLinkResponse> onCallback) = 0;

    BASEAPI_OPERATIONS(IFile, getAccessFiles, createDirectory, fileComplete, fileRename, filesCreate,
                       fileSearch, filesList, filesPath, filesStatsDir, getDownloadUrl, getFileDetail,
                       getUploadUrl, getFilePreviewUrl)
};

}  // namespace baseapi::inline v1
