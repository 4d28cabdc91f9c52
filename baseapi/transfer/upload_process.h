#pragma once

#include <atomic>
#include <cstdint>
#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "baseapi/api/files/records.h"
#include "baseapi/core/cancelable.h"
#include "baseapi/core/runnable.h"
#include "baseapi/core/slice_file.h"
#include "baseapi/core/url.h"
#include "baseapi/net/network_result.h"
#include "baseapi/transfer/sha256_result.h"
#include "baseapi/transfer/upload_manager.h"
#include "baseapi/transfer/upload_process_result.h"

namespace baseapi::inline v1 {

/// One file on its way to the service: hash it, have it created, send its parts, complete it. How it is
/// created and which code its failures carry is the derived class's.
///
/// The fields are set before `run`, which is called once. The process keeps itself alive until its last
/// event.
class UploadProcess : public Cancelable, public Runnable, public std::enable_shared_from_this<UploadProcess> {
  public:
    static constexpr std::string_view TAG = "UploadProcessTask";

    /// The id of the folder that takes the file; the root folder where it is absent.
    std::optional<std::string> cloudPath;
    std::optional<URL> file;
    /// Not read.
    std::optional<std::string> fileId;
    /// Not read.
    std::optional<std::string> fileName;
    /// The container of the new file.
    std::optional<std::string> containId;
    UploadProcessCallback onCallback;
    const std::shared_ptr<UploadManager> uploadManager = std::make_shared<UploadManager>();
    /// The policy for a name that is taken, as sent.
    std::int64_t autoName = 4;
    std::shared_ptr<ISliceFile> defaultSliceFile;
    /// Seconds since 1970; tells the process in the log.
    const std::int64_t timeStamp = std::time(nullptr);

    /// Hashes the file and sends the request that creates it, on the calling thread; a failure may be
    /// delivered before this returns. The rest follows on the threads that the answers come on.
    void run() override;

    void cancel() override;

  protected:
    explicit UploadProcess(std::int64_t failureCode) : failureCode_(failureCode) {}

    /// The step in which the kinds of upload differ: asks the service to create the file.
    virtual void requestCreation(FilesCreateBean bean, NetworkCallback<FilesCreateResponse> onCreated) = 0;

  private:
    /// What is known of the file before the service is asked.
    struct Prepared {
        std::string hash;
        std::vector<MultiPartInfo> parts;
        std::int64_t length = 0;
    };

    std::optional<Prepared> prepare() const;
    std::optional<std::string> slice() const;
    std::optional<Sha256Result> sliced() const;
    std::optional<std::int64_t> fileLength() const;
    FilesCreateBean creationBean(Prepared prepared) const;
    std::optional<std::string> proofCode(std::int64_t length) const;

    void onCreated(const FilesCreateResponse& response, const std::string& hash);
    void sendParts(const std::string& id, const std::string& hash, const std::vector<MultiPartInfo>& parts);
    bool canOpenFile() const;
    void addPart(const MultiPartInfo& part);
    void onParts(const UploadProcessResult& event, const std::string& id, const std::string& hash);
    void complete(const std::string& id, const std::string& hash);
    void onCompleted(const BaseResponse& response);

    void succeed(std::string msg);
    void fail();
    void end(UploadProcessResult last);
    void forward(const UploadProcessResult& event) const;

    const std::int64_t failureCode_;
    std::atomic<bool> hasCancel_ = false;
    std::atomic<bool> ended_ = false;
    /// Cleared by the last event.
    std::shared_ptr<UploadProcess> retainSelf_;
};

}  // namespace baseapi::inline v1
