#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/api/job/records.h"

namespace quillbox {

class Host;

/// What a job of the service does; the numbers are the service's.
enum class JobType { copy = 1, move = 2, remove = 3, unzip = 4 };

/// "copy", or the number of a type that is not known here.
std::string jobTypeText(std::optional<std::int64_t> type);

/// "running", or the number of a status that is not known here.
std::string jobStatusText(std::optional<std::int64_t> status);

/// The record of a job over the files and folders of these ids, which go to the folder of this id.
baseapi::CreateJobBean jobOver(const Host& host, JobType type, const std::vector<std::string>& ids,
                               const std::optional<std::string>& folder);

/// Makes the job, shows how far it has come, and tells its end item by item; false where something was not
/// done. Ctrl-C cancels the job. Throws as `Host::ask`.
bool runJob(Host& host, const baseapi::CreateJobBean& bean);

}  // namespace quillbox
