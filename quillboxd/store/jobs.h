#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "quillboxd/store/tree.h"

namespace quillboxd {

/// What a job does with its items; the numbers stand on the wire.
enum class JobKind { copy = 1, move = 2, remove = 3, unpack = 4 };

/// Of a job and of each of its items; the numbers stand on the wire.
enum class JobStatus { waiting = 0, running = 1, done = 2, failed = 3, cancelled = 4 };

struct Job {
    std::int64_t id = 0;
    std::int64_t account = 0;
    JobKind kind = JobKind::copy;
    NameRule nameRule = NameRule::rename;
    JobStatus status = JobStatus::waiting;
    std::optional<std::int64_t> destination;  ///< of an unpacking: absent for the folder of the archive
    std::vector<std::string> wanted;          ///< of an unpacking: paths inside the archive; empty for all
    std::string password;
    std::string createdTime;
    std::optional<std::string> beginTime;
    std::optional<std::string> endTime;
};

/// One of the files and folders that a job was asked for.
struct JobItem {
    std::int64_t job = 0;
    std::int64_t number = 0;
    std::int64_t node = 0;
    std::string path;  ///< by names, when the job was made
    JobStatus status = JobStatus::waiting;
    std::int64_t total = 0;  ///< steps, counted when the job begins
    std::int64_t done = 0;
    std::optional<std::int64_t> newNode;
    std::string newPath;
    int code = 0;
    std::string reason;
    std::optional<std::int64_t> content;  ///< the archive as it was when the job began
};

/// What a job still has to do is a list of these, made when it begins and gone when it has ended.
struct JobStep {
    std::int64_t node = 0;
    std::int64_t parent = 0;
};

/// One entry of an archive.
struct JobEntry {
    std::string name;
    bool isFile = true;
    std::int64_t size = 0;
    std::int64_t millis = 0;
    std::optional<std::int64_t> node;  ///< what came of it
    int code = 0;
    std::string reason;
};

/// What a job's items come to.
struct JobSums {
    std::int64_t total = 0;
    std::int64_t done = 0;
    bool allDone = false;     ///< every item, to its end
    bool anyTouched = false;  ///< something was done for one
    int firstCode = 0;        ///< of the items that failed, or 0
};

struct JobFilter {
    std::optional<std::int64_t> kind;
    std::optional<std::int64_t> status;
    std::int64_t offset = 0;
    std::int64_t limit = 100;
};

/// The jobs of one account, as people ask for them.
class Jobs {
  public:
    Jobs(Database& database, std::int64_t account) : database_(database), account_(account) {}

    std::int64_t add(const Job& job, const std::vector<JobItem>& items);
    std::optional<Job> find(std::int64_t id);
    std::vector<JobItem> items(std::int64_t id);
    JobSums sums(std::int64_t id);
    std::vector<JobEntry> entries(std::int64_t id);
    /// The newest first.
    std::vector<Job> list(const JobFilter& filter);
    /// Nothing more is done for it. False where it has ended already.
    bool cancel(std::int64_t id);

  private:
    Database& database_;
    std::int64_t account_;
};

/// The jobs of all accounts that have not ended, as they are worked through.
class OpenJobs {
  public:
    explicit OpenJobs(Database& database) : database_(database) {}

    /// The oldest.
    std::optional<Job> next();
    /// The first whose steps have not been counted yet.
    std::optional<JobItem> unplannedItem(std::int64_t job);
    /// The first that has not ended.
    std::optional<JobItem> nextItem(std::int64_t job);
    bool isOpen(std::int64_t job);
    void begin(std::int64_t job);
    void save(const JobItem& item);
    /// Ends the job where all its items have ended.
    void finishIfDone(std::int64_t job);

    /// The item's node and all that is below it, each folder before what it holds; returns their count.
    std::int64_t planTree(const JobItem& item, std::int64_t account);
    JobStep step(const JobItem& item, std::int64_t number);
    void noteCopy(const JobItem& item, std::int64_t number, std::int64_t copy);
    /// What has become of the node of an earlier step.
    std::optional<std::int64_t> copyOf(const JobItem& item, std::int64_t node);

    void addEntry(const JobItem& item, std::int64_t number, const JobEntry& entry);
    void saveEntry(const JobItem& item, std::int64_t number, const JobEntry& entry);
    JobEntry entry(const JobItem& item, std::int64_t number);

  private:
    Database& database_;
};

}  // namespace quillboxd
