#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "baseapi/api/backup/records.h"
#include "baseapi/core/cases.h"
#include "baseapi/net/network_result.h"

namespace baseapi::inline v1 {

/// What became of the old records.
struct DeleteRecordResult {
    struct onSuccess {
        std::int64_t code = 0;
        std::string msg;
    };
    struct onFailure {
        std::int64_t errCode = 0;
        std::string errMsg;
    };

    std::variant<onSuccess, onFailure> value;

    /// Calls the function that takes the case at hand; one for each case must be given.
    template <class... Functions>
    decltype(auto) visit(Functions&&... functions) const {
        return std::visit(Cases{std::forward<Functions>(functions)...}, value);
    }
};

/// Receives the result exactly once, on a thread of the delegate queue. What it throws is logged and goes no
/// further.
using DeleteRecordCallback = std::function<void(DeleteRecordResult)>;

/// Deletes the records of a device and a module, all but the newest finished one; of more than 100 records
/// the rest stays until a later time. To be made with `std::make_shared`; it lives as long as its work goes
/// on. Nothing is repeated: a record that could not be deleted stays.
class DeleteRecordTask : public std::enable_shared_from_this<DeleteRecordTask> {
  public:
    /// The lock id must be there where there is a record to delete: without one the process ends.
    DeleteRecordTask(std::optional<std::string> lockId, std::optional<std::int64_t> deviceId,
                     std::optional<std::string> moduleCode, DeleteRecordCallback onCallback);

    /// Starts the work and returns. To be called once.
    void submit();

  private:
    void onRecords(GetRecordsResponse response);
    void deleteAll(std::vector<std::string> recordIds);
    void onDeleted(const NetworkResult<BaseResponse>& answer);
    /// The result, where that was the last answer.
    std::optional<DeleteRecordResult> counted(bool deleted);
    void finish(DeleteRecordResult result) const;

    const std::optional<std::string> lockId_;
    const std::optional<std::int64_t> deviceId_;
    const std::optional<std::string> moduleCode_;
    const DeleteRecordCallback onCallback_;
    const std::int64_t timeStamp_;

    // The answers come side by side.
    std::mutex mutex_;
    std::size_t totalCount_ = 0;
    std::size_t hasFinishCount_ = 0;
    std::size_t errCount_ = 0;
};

}  // namespace baseapi::inline v1
