#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "baseapi/api/records/download_link.h"
#include "baseapi/json/record.h"
#include "baseapi/net/base_response.h"

namespace baseapi::inline v1 {

// ---- parts of a link

/// What those who have a link may do with its files.
struct SharePermission {
    std::optional<bool> preview;
    std::optional<bool> edit;
    std::optional<bool> download;

    BASEAPI_FIELDS(SharePermission, preview, edit, download)
};

/// A department that a link is for.
struct DeptInfo {
    std::optional<std::string> id;
    std::optional<std::string> name;

    BASEAPI_FIELDS(DeptInfo, id, name)
};

/// A group that a link is for.
struct GroupInfo {
    std::optional<std::string> id;
    std::optional<std::string> name;

    BASEAPI_FIELDS(GroupInfo, id, name)
};

/// A user that a link is for.
struct BaseUserInfo {
    std::optional<std::string> id;
    std::optional<std::string> name;

    BASEAPI_FIELDS(BaseUserInfo, id, name)
};

/// What every view of a shared file tells.
struct BaseShareFile {
    std::optional<std::string> id;
    std::optional<std::string> fileName;
    std::optional<std::string> fileType;
    /// In bytes.
    std::optional<std::int64_t> size;
    std::optional<std::vector<std::string>> parentFolder;
    std::optional<std::string> fileSuffix;
    std::optional<std::vector<std::string>> containers;
    std::optional<std::vector<DownloadLink>> downloadLinks;

    BASEAPI_FIELDS(BaseShareFile, id, fileName, fileType, size, parentFolder, fileSuffix, containers,
                   downloadLinks)
};

/// A shared file as a visitor of the link sees it.
struct ShareFile : BaseShareFile {
    std::optional<std::string> editedTime;

    BASEAPI_FIELDS_OF(ShareFile, BaseShareFile, editedTime)
};

/// A shared file in a list of links.
struct ShareFileInfo : BaseShareFile {
    std::optional<std::string> mimeType;
    std::optional<bool> recycled;

    BASEAPI_FIELDS_OF(ShareFileInfo, BaseShareFile, mimeType, recycled)
};

// ---- views of a link

/// What every view of a link tells, except `CommonShareLink`.
struct BaseShareLink {
    std::optional<std::string> shareId;
    std::optional<std::string> shortUrl;
    std::optional<std::string> linkUrl;
    std::optional<std::string> comment;
    std::optional<std::string> expireTime;

    BASEAPI_FIELDS(BaseShareLink, shareId, shortUrl, linkUrl, comment, expireTime)
};

/// A link as it was made.
struct ShareLink : BaseShareLink {
    std::optional<std::string> extractCode;

    BASEAPI_FIELDS_OF(ShareLink, BaseShareLink, extractCode)
};

/// A link after a change.
struct ShareLinkModify : BaseShareLink {
    std::optional<std::string> extractCode;
    std::optional<std::string> createTime;
    std::optional<std::string> updateTime;
    std::optional<std::string> shareTime;
    std::optional<std::int64_t> scope;
    std::optional<std::string> displayName;
    std::optional<std::int64_t> status;
    /// How often the link was looked at; its files downloaded and saved.
    std::optional<std::int64_t> viewCnt;
    std::optional<std::int64_t> downloadCnt;
    std::optional<std::int64_t> saveCnt;

    BASEAPI_FIELDS_OF(ShareLinkModify, BaseShareLink, extractCode, createTime, updateTime, shareTime, scope,
                      displayName, status, viewCnt, downloadCnt, saveCnt)
};

/// One of the caller's own links in their list.
struct ShareByMeLink : BaseShareLink {
    std::optional<std::string> shareTime;
    std::optional<std::int64_t> scope;
    std::optional<std::vector<ShareFileInfo>> files;
    std::optional<std::string> displayName;
    std::optional<std::int64_t> status;
    /// How often the link was looked at; its files downloaded and saved.
    std::optional<std::int64_t> viewCnt;
    std::optional<std::int64_t> downloadCnt;
    std::optional<std::int64_t> saveCnt;
    std::optional<std::string> containerId;
    std::optional<std::string> containerName;

    BASEAPI_FIELDS_OF(ShareByMeLink, BaseShareLink, shareTime, scope, files, displayName, status, viewCnt,
                      downloadCnt, saveCnt, containerId, containerName)
};

/// All about one of the caller's own links.
struct ShareByMeLinkDetail : BaseShareLink {
    std::optional<std::string> shareTime;
    std::optional<std::int64_t> scope;
    std::optional<std::vector<DeptInfo>> depts;
    std::optional<std::vector<GroupInfo>> groups;
    std::optional<std::vector<BaseUserInfo>> users;
    std::optional<std::string> displayName;
    std::optional<SharePermission> permission;
    std::optional<std::string> extractCode;
    std::optional<std::int64_t> status;

    BASEAPI_FIELDS_OF(ShareByMeLinkDetail, BaseShareLink, shareTime, scope, depts, groups, users, displayName,
                      permission, extractCode, status)
};

/// A link that others made for the caller. No operation answers it; it is there for the host's own use.
struct ShareWithMeLink : BaseShareLink {
    std::optional<std::string> shareTime;
    std::optional<std::string> ownerId;
    std::optional<std::string> ownerName;
    std::optional<std::string> displayName;
    std::optional<std::vector<ShareFileInfo>> files;
    std::optional<SharePermission> permission;
    std::optional<std::int64_t> status;
    std::optional<std::string> containerId;
    std::optional<std::int64_t> downloadCnt;
    std::optional<std::int64_t> saveCnt;
    std::optional<std::int64_t> scope;
    std::optional<std::string> updateTime;
    std::optional<std::int64_t> viewCnt;

    BASEAPI_FIELDS_OF(ShareWithMeLink, BaseShareLink, shareTime, ownerId, ownerName, displayName, files,
                      permission, status, containerId, downloadCnt, saveCnt, scope, updateTime, viewCnt)
};

/// All about a link that others made for the caller. No operation answers it; it is there for the host's
/// own use.
struct ShareWithMeLinkDetail : BaseShareLink {
    std::optional<std::string> shareTime;
    std::optional<std::string> ownerId;
    std::optional<std::string> ownerName;
    std::optional<std::string> displayName;
    std::optional<SharePermission> permission;
    std::optional<std::int64_t> status;

    BASEAPI_FIELDS_OF(ShareWithMeLinkDetail, BaseShareLink, shareTime, ownerId, ownerName, displayName,
                      permission, status)
};

/// The link as a visitor sees it.
struct CommonShareLink {
    /// What a visitor may do; not the record of the same name.
    enum class SharePermission { read, write, admin };
    friend constexpr auto wireTexts(SharePermission) {
        return std::array<std::string_view, 3>{"READ", "WRITE", "ADMIN"};
    }

    std::optional<std::string> shareId;
    std::optional<std::string> shortUrl;
    std::optional<std::string> shareTime;
    std::optional<std::string> ownerId;
    std::optional<std::string> ownerName;
    std::optional<SharePermission> permission;
    std::optional<std::string> expireTime;
    std::optional<std::int64_t> status;
    std::optional<std::string> expireDate;

    BASEAPI_FIELDS(CommonShareLink, shareId, shortUrl, shareTime, ownerId, ownerName, permission, expireTime,
                   status, expireDate)
};

// ---- requests and answers

/// What `getShares` takes.
struct GetShareBean {
    /// All six values, as none of them has a default.
    GetShareBean(std::int64_t size, std::optional<std::string> cursor, std::optional<std::int64_t> type,
                 std::optional<std::int64_t> direction, std::optional<std::string> name,
                 std::optional<std::string> image)
        : pageSize(size),
          pageCursor(std::move(cursor)),
          sortType(type),
          sortDirection(direction),
          displayName(std::move(name)),
          imageProcess(std::move(image)) {}
    /// What an answer is read into; not for a request.
    static GetShareBean empty() { return {}; }

    /// 0 is not sent.
    std::int64_t pageSize = 0;
    std::optional<std::string> pageCursor;
    /// It must be there; 0 is not sent.
    std::optional<std::int64_t> sortType;
    /// It must be there; 0 is not sent.
    std::optional<std::int64_t> sortDirection;
    std::optional<std::string> displayName;
    std::optional<std::string> imageProcess;

    BASEAPI_FIELDS(GetShareBean, pageSize, pageCursor, sortType, sortDirection, displayName, imageProcess)

  private:
    GetShareBean() = default;
};

/// What `getShares` answers.
struct GetShareResponse : BaseResponse {
    /// What the next call takes as `pageCursor`.
    std::optional<std::string> nextCursor;
    std::optional<std::vector<ShareByMeLink>> shareLinks;

    BASEAPI_FIELDS_OF(GetShareResponse, BaseResponse, nextCursor, shareLinks)
};

/// What `createShare` takes.
struct CreateShareBean {
    std::int64_t scope = 0;
    std::optional<std::vector<std::string>> deptIds;
    std::optional<std::vector<std::string>> groupIds;
    std::optional<std::vector<std::string>> userIds;
    std::optional<std::vector<std::string>> fileIds;
    std::optional<std::string> containerId;
    std::optional<SharePermission> permission;
    std::optional<std::string> extractCode;
    std::optional<std::string> expireTime;
    std::optional<std::string> comment;
    /// How long the link is good, in days.
    std::optional<std::int64_t> validDays;
    std::optional<std::string> expiredType;

    BASEAPI_FIELDS(CreateShareBean, scope, deptIds, groupIds, userIds, fileIds, containerId, permission,
                   extractCode, expireTime, comment, validDays, expiredType)
};

/// What `createShare` answers.
struct CreateShareResponse : BaseResponse {
    std::optional<ShareLink> shareLink;

    BASEAPI_FIELDS_OF(CreateShareResponse, BaseResponse, shareLink)
};

/// What `cancelShare` takes.
struct CancelShareBean {
    /// Without it the call is refused; an empty one is sent.
    std::optional<std::vector<std::string>> shareIds;

    BASEAPI_FIELDS(CancelShareBean, shareIds)
};

/// What became of one of the links.
struct ShareSubResponse {
    std::optional<std::string> shareId;
    /// The result for this one link; a failure here is none of the call.
    std::optional<std::int64_t> code;
    std::optional<std::string> msg;

    BASEAPI_FIELDS(ShareSubResponse, shareId, code, msg)
};

/// What `cancelShare` answers.
struct CancelShareResponse : BaseResponse {
    std::optional<std::vector<ShareSubResponse>> subResponseList;

    BASEAPI_FIELDS_OF(CancelShareResponse, BaseResponse, subResponseList)
};

/// What `getShareDetail` takes.
struct GetShareDetailBean {
    /// It goes into the path.
    std::optional<std::string> shareId;

    BASEAPI_FIELDS(GetShareDetailBean, shareId)
};

/// What `getShareDetail` answers.
struct GetShareDetailResponse : BaseResponse {
    std::optional<ShareByMeLinkDetail> shareLink;

    BASEAPI_FIELDS_OF(GetShareDetailResponse, BaseResponse, shareLink)
};

/// What `modifyShareDetail` takes.
struct ModifyShareDetailBean {
    /// It goes into the path as well.
    std::optional<std::string> shareId;
    std::optional<std::vector<std::string>> deptIds;
    std::optional<std::vector<std::string>> groupIds;
    std::optional<std::vector<std::string>> userIds;
    std::optional<SharePermission> permission;
    std::optional<std::string> expireTime;
    std::optional<std::string> extractCode;
    std::optional<std::string> comment;
    /// How long the link is good, in days.
    std::optional<std::int64_t> validDays;

    BASEAPI_FIELDS(ModifyShareDetailBean, shareId, deptIds, groupIds, userIds, permission, expireTime,
                   extractCode, comment, validDays)
};

/// What `modifyShareDetail` answers.
struct ModifyShareDetailResponse : BaseResponse {
    std::optional<ShareLinkModify> shareLink;

    BASEAPI_FIELDS_OF(ModifyShareDetailResponse, BaseResponse, shareLink)
};

/// What `getShareFiles` takes.
struct GetShareFilesBean {
    /// Which link.
    std::optional<std::string> shortUrl;
    /// The folder to list.
    std::optional<std::string> parentFolder;
    std::int64_t pageSize = 100;
    std::optional<std::string> pageCursor;
    std::optional<std::int64_t> sortType;
    std::optional<std::int64_t> sortDirection;
    /// The visitor's token.
    std::optional<std::string> qbstoken;
    std::optional<bool> refreshCount;
    std::optional<std::string> fileName;
    std::optional<std::string> imageProcess;

    BASEAPI_FIELDS(GetShareFilesBean, shortUrl, parentFolder, pageSize, pageCursor, sortType, sortDirection,
                   qbstoken, refreshCount, fileName, imageProcess)
};

/// What `getShareFiles` answers.
struct GetShareFilesResponse : BaseResponse {
    /// What the next call takes as `pageCursor`.
    std::optional<std::string> nextCursor;
    std::optional<std::vector<ShareFile>> files;
    std::optional<CommonShareLink> link;

    BASEAPI_FIELDS_OF(GetShareFilesResponse, BaseResponse, nextCursor, files, link)
};

}  // namespace baseapi::inline v1
