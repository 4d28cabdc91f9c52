#include "baseapi/transfer/upload_process_task.h"

#include <utility>

#include "baseapi/api/files/i_file.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/constants.h"

namespace baseapi::inline v1 {

UploadProcessTask::UploadProcessTask() : UploadProcess(Constants::BACKUP_FILE_UPLOAD_PARTIALLY_FAILED) {}

void UploadProcessTask::requestCreation(FilesCreateBean bean,
                                        NetworkCallback<FilesCreateResponse> onCreated) {
    CloudInstance::shared().getFileImpl().filesCreate(std::move(bean), std::move(onCreated));
}

}  // namespace baseapi::inline v1
