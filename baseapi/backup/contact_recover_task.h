#pragma once

#include <memory>
#include <optional>
#include <string>

#include "baseapi/api/files/records.h"
#include "baseapi/backup/contact_result.h"
#include "baseapi/core/task.h"
#include "baseapi/core/url.h"

namespace baseapi::inline v1 {

/// Brings the contacts of one backup record back into the address book: finds its one file, downloads it,
/// imports it. One object is one run; it keeps itself alive until its last callback. A restore cannot be
/// stopped.
class ContactRecoverTask final : public std::enable_shared_from_this<ContactRecoverTask> {
  public:
    /// Set before the start, as are the others.
    std::string recordId;
    /// Given back with every event.
    std::string hash;
    ContactCallback onCallback;

    /// Starts the run and returns at once. Without permission or without a record id it has ended by then.
    void startRecover();

  private:
    Detached run();
    Task<std::optional<std::string>> findFile();
    Task<std::optional<GetFileDetailResponse>> fileDetail(std::string fileId);
    std::optional<std::string> contentLink(const GetFileDetailResponse& detail);
    void importContacts(const URL& file);
    void tellProgress(double value) const;
    void fail(std::int64_t code, std::string message) const;
    void tell(ContactResult event) const;
};

}  // namespace baseapi::inline v1
