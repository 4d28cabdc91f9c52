#pragma once

#include <cstdint>
#include <string_view>

namespace baseapi::inline v1 {

/// The codes that the transfer engine and the runs report. Upload codes are negative, backup codes positive;
/// 100019 is deliberately not given to anything.
struct Constants {
    static constexpr std::string_view BACKUP_SCENE = "backup";

    static constexpr std::int64_t UPLOAD_ERRCODE_FILE_INVALID = -1001;
    static constexpr std::int64_t UPLOAD_ERRCODE_CANCEL = -1002;
    static constexpr std::int64_t UPLOAD_ERRCODE_SLICE_TOOL_NULL = -1003;
    static constexpr std::int64_t UPLOAD_ERRCODE_SLICE_RESULT_NULL = -1004;
    static constexpr std::int64_t UPLOAD_ERRCODE_CREATE_ORG_NULL = -1005;
    static constexpr std::int64_t UPLOAD_ERRCODE_UPLOAD_FILE_ERROR = -1006;
    static constexpr std::int64_t UPLOAD_ERRCODE_PART_ERROR = -1007;

    static constexpr std::int64_t BACKUP_SUCCESS = 0;
    static constexpr std::int64_t BACKUP_PARAMS_INVALID = 100001;
    static constexpr std::int64_t BACKUP_NO_WIFI = 100002;
    static constexpr std::int64_t BACKUP_NO_CONTACT_PERMISSION = 100003;
    static constexpr std::int64_t BACKUP_NO_ALBUM_PERMISSION = 100004;
    static constexpr std::int64_t BACKUP_NO_FILE_PERMISSION = 100005;
    static constexpr std::int64_t BACKUP_LOCK_ID_RESP_NULL = 100006;
    static constexpr std::int64_t BACKUP_LOCK_ID_EMPTY = 100007;
    static constexpr std::int64_t BACKUP_GENERATOR_CONTACT_FAILED = 100008;
    static constexpr std::int64_t BACKUP_USER_CANCEL = 100009;
    static constexpr std::int64_t BACKUP_CREATE_RECORD_RESP_NULL = 100010;
    static constexpr std::int64_t BACKUP_VCF_FILE_ERROR = 100011;
    static constexpr std::int64_t BACKUP_CREATE_CLOUD_PATH_ERROR = 100012;
    static constexpr std::int64_t BACKUP_FILE_SLICE_ERROR = 100013;
    static constexpr std::int64_t BACKUP_FILE_CREATE_RESP_NULL = 100014;
    static constexpr std::int64_t BACKUP_FILE_MULTIPARTS_EMPTY = 100015;
    static constexpr std::int64_t BACKUP_FILE_UPLOAD_PARTIALLY_FAILED = 100016;
    static constexpr std::int64_t BACKUP_COMPLETE_FAILED = 100017;
    static constexpr std::int64_t BACKUP_SCOPE_RESP_NULL = 100018;
    static constexpr std::int64_t BACKUP_FILE_RECORD_FAILURE = 100020;
    static constexpr std::int64_t BACKUP_FILE_DETAIL_FAILURE = 100021;
    static constexpr std::int64_t BACKUP_FILE_DOWNLOAD_FAILURE = 100022;
    static constexpr std::int64_t BACKUP_CONTACT_IMPORT_FAILURE = 100023;
    static constexpr std::int64_t BACKUP_FOLDER_CREATE_ERROR = 100024;
    static constexpr std::int64_t BACKUP_HAS_TASK_RUNNING = 100025;
};

}  // namespace baseapi::inline v1
