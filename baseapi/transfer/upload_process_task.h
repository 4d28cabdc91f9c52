#pragma once

#include "baseapi/transfer/upload_process.h"

namespace baseapi::inline v1 {

/// The upload of one file into a folder; its failures carry the code 100016.
class UploadProcessTask final : public UploadProcess {
  public:
    UploadProcessTask();

  private:
    void requestCreation(FilesCreateBean bean, NetworkCallback<FilesCreateResponse> onCreated) override;
};

}  // namespace baseapi::inline v1
