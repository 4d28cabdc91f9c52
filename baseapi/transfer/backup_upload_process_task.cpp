#include "baseapi/transfer/backup_upload_process_task.h"

#include <utility>

#include "baseapi/api/backup/i_back_up.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/constants.h"
#include "baseapi/core/log.h"
#include "baseapi/platform/fatal_stop.h"

namespace baseapi::inline v1 {

BackupUploadProcessTask::BackupUploadProcessTask() : UploadProcess(Constants::BACKUP_PARAMS_INVALID) {
    logLine("UploadProcessTask retain self ", timeStamp);
}

void BackupUploadProcessTask::requestCreation(FilesCreateBean bean,
                                              NetworkCallback<FilesCreateResponse> onCreated) {
    if (!lockId) fatalStop("BackupUploadProcessTask: no lock id");
    RecordFileBean recordFile{std::move(bean), recordId};
    CloudInstance::shared().getBackupImpl().createRecordFile(std::move(recordFile), lockId,
                                                             std::move(onCreated));
}

}  // namespace baseapi::inline v1
