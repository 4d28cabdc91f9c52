#include "baseapi/core/constants.h"

#include <gtest/gtest.h>

#include <vector>

namespace baseapi {
namespace {

using C = Constants;

TEST(Constants, HaveTheirValues) {
    EXPECT_EQ(C::BACKUP_SCENE, "backup");
    const std::vector<std::int64_t> upload{
        C::UPLOAD_ERRCODE_FILE_INVALID,    C::UPLOAD_ERRCODE_CANCEL,
        C::UPLOAD_ERRCODE_SLICE_TOOL_NULL, C::UPLOAD_ERRCODE_SLICE_RESULT_NULL,
        C::UPLOAD_ERRCODE_CREATE_ORG_NULL, C::UPLOAD_ERRCODE_UPLOAD_FILE_ERROR,
        C::UPLOAD_ERRCODE_PART_ERROR};
    EXPECT_EQ(upload, (std::vector<std::int64_t>{-1001, -1002, -1003, -1004, -1005, -1006, -1007}));
    const std::vector<std::int64_t> backup{C::BACKUP_SUCCESS,
                                           C::BACKUP_PARAMS_INVALID,
                                           C::BACKUP_NO_WIFI,
                                           C::BACKUP_NO_CONTACT_PERMISSION,
                                           C::BACKUP_NO_ALBUM_PERMISSION,
                                           C::BACKUP_NO_FILE_PERMISSION,
                                           C::BACKUP_LOCK_ID_RESP_NULL,
                                           C::BACKUP_LOCK_ID_EMPTY,
                                           C::BACKUP_GENERATOR_CONTACT_FAILED,
                                           C::BACKUP_USER_CANCEL,
                                           C::BACKUP_CREATE_RECORD_RESP_NULL,
                                           C::BACKUP_VCF_FILE_ERROR,
                                           C::BACKUP_CREATE_CLOUD_PATH_ERROR,
                                           C::BACKUP_FILE_SLICE_ERROR,
                                           C::BACKUP_FILE_CREATE_RESP_NULL,
                                           C::BACKUP_FILE_MULTIPARTS_EMPTY,
                                           C::BACKUP_FILE_UPLOAD_PARTIALLY_FAILED,
                                           C::BACKUP_COMPLETE_FAILED,
                                           C::BACKUP_SCOPE_RESP_NULL,
                                           C::BACKUP_FILE_RECORD_FAILURE,
                                           C::BACKUP_FILE_DETAIL_FAILURE,
                                           C::BACKUP_FILE_DOWNLOAD_FAILURE,
                                           C::BACKUP_CONTACT_IMPORT_FAILURE,
                                           C::BACKUP_FOLDER_CREATE_ERROR,
                                           C::BACKUP_HAS_TASK_RUNNING};
    EXPECT_EQ(backup, (std::vector<std::int64_t>{0,      100001, 100002, 100003, 100004, 100005, 100006,
                                                 100007, 100008, 100009, 100010, 100011, 100012, 100013,
                                                 100014, 100015, 100016, 100017, 100018, 100020, 100021,
                                                 100022, 100023, 100024, 100025}));
}

}  // namespace
}  // namespace baseapi
