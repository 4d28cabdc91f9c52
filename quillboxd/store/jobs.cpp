#include "quillboxd/store/jobs.h"

#include "quillboxd/json.h"
#include "quillboxd/store/database.h"
#include "quillboxd/store/time_text.h"

namespace quillboxd {
namespace {

const std::string selectJobs =
    "SELECT id, account, kind, name_rule, status, destination, wanted, password, created_time, begin_time, "
    "end_time FROM jobs ";
const std::string selectJobItems =
    "SELECT job, number, node, path, status, total, done, new_node, new_path, code, reason, content "
    "FROM job_items ";

const std::string selectEntries = "SELECT name, is_file, size, millis, node, code, reason FROM job_entries ";

std::string writeTexts(const std::vector<std::string>& texts) {
    return json::serialize(json::array(texts.begin(), texts.end()));
}

std::vector<std::string> readTexts(const std::string& stored) {
    std::vector<std::string> texts;
    const auto list = json::parse(stored);
    for (const auto& text : list.as_array()) texts.emplace_back(text.as_string());
    return texts;
}

Job readJob(const Query& row) {
    return {.id = row.integer(0),
            .account = row.integer(1),
            .kind = static_cast<JobKind>(row.integer(2)),
            .nameRule = static_cast<NameRule>(row.integer(3)),
            .status = static_cast<JobStatus>(row.integer(4)),
            .destination = row.optionalInteger(5),
            .wanted = readTexts(row.text(6)),
            .password = row.text(7),
            .createdTime = row.text(8),
            .beginTime = row.optionalText(9),
            .endTime = row.optionalText(10)};
}

JobItem readItem(const Query& row) {
    return {.job = row.integer(0),
            .number = row.integer(1),
            .node = row.integer(2),
            .path = row.text(3),
            .status = static_cast<JobStatus>(row.integer(4)),
            .total = row.integer(5),
            .done = row.integer(6),
            .newNode = row.optionalInteger(7),
            .newPath = row.text(8),
            .code = static_cast<int>(row.integer(9)),
            .reason = row.text(10),
            .content = row.optionalInteger(11)};
}

JobEntry readEntry(const Query& row) {
    return {.name = row.text(0),
            .isFile = row.boolean(1),
            .size = row.integer(2),
            .millis = row.integer(3),
            .node = row.optionalInteger(4),
            .code = static_cast<int>(row.integer(5)),
            .reason = row.text(6)};
}

/// A job that has ended keeps what it has done, and neither its steps nor its password.
void end(Database& database, std::int64_t job, JobStatus status) {
    const auto time = timestamp();
    database.run("UPDATE jobs SET status = ?, end_time = ?, password = '' WHERE id = ?",
                 static_cast<int>(status), time, job);
    database.run("UPDATE job_items SET content = NULL WHERE job = ?", job);
    database.run("DELETE FROM job_steps WHERE job = ?", job);
}

}  // namespace

std::int64_t Jobs::add(const Job& job, const std::vector<JobItem>& items) {
    const auto time = timestamp();
    const auto wanted = writeTexts(job.wanted);
    std::int64_t id = 0;
    {
        auto row = database_.query(
            "INSERT INTO jobs (account, kind, name_rule, destination, wanted, password, created_time) "
            "VALUES (?, ?, ?, ?, ?, ?, ?) RETURNING id",
            account_, static_cast<int>(job.kind), static_cast<int>(job.nameRule), job.destination, wanted,
            job.password, time);
        row.next();
        id = row.integer(0);
    }
    std::int64_t number = 0;
    for (const auto& item : items) {
        database_.run("INSERT INTO job_items (job, number, node, path) VALUES (?, ?, ?, ?)", id, ++number,
                      item.node, item.path);
    }
    return id;
}

std::optional<Job> Jobs::find(std::int64_t id) {
    auto row = database_.query(selectJobs + "WHERE id = ? AND account = ?", id, account_);
    return row.next() ? std::optional(readJob(row)) : std::nullopt;
}

std::vector<JobItem> Jobs::items(std::int64_t id) {
    auto rows = database_.query(selectJobItems + "WHERE job = ? ORDER BY number", id);
    std::vector<JobItem> items;
    while (rows.next()) items.push_back(readItem(rows));
    return items;
}

JobSums Jobs::sums(std::int64_t id) {
    auto row = database_.query(
        "SELECT sum(total), sum(done), min(status = 2), max(status = 2 OR done > 0 OR new_node IS NOT NULL), "
        "(SELECT code FROM job_items WHERE job = ?1 AND code <> 0 ORDER BY number LIMIT 1) "
        "FROM job_items WHERE job = ?1",
        id);
    row.next();
    return {.total = row.integer(0),
            .done = row.integer(1),
            .allDone = row.boolean(2),
            .anyTouched = row.boolean(3),
            .firstCode = static_cast<int>(row.integer(4))};
}

std::vector<JobEntry> Jobs::entries(std::int64_t id) {
    auto rows = database_.query(selectEntries + "WHERE job = ? ORDER BY item, number", id);
    std::vector<JobEntry> entries;
    while (rows.next()) entries.push_back(readEntry(rows));
    return entries;
}

std::vector<Job> Jobs::list(const JobFilter& filter) {
    auto rows = database_.query(
        selectJobs +
            "WHERE account = ?1 AND (?2 IS NULL OR kind = ?2) AND (?3 IS NULL OR status = ?3) "
            "ORDER BY id DESC LIMIT ?4 OFFSET ?5",
        account_, filter.kind, filter.status, filter.limit, filter.offset);
    std::vector<Job> jobs;
    while (rows.next()) jobs.push_back(readJob(rows));
    return jobs;
}

bool Jobs::cancel(std::int64_t id) {
    if (!OpenJobs(database_).isOpen(id)) return false;
    database_.run("UPDATE job_items SET status = ? WHERE job = ? AND status < 2",
                  static_cast<int>(JobStatus::cancelled), id);
    end(database_, id, JobStatus::cancelled);
    return true;
}

std::optional<Job> OpenJobs::next() {
    auto row = database_.query(selectJobs + "WHERE status < 2 ORDER BY id LIMIT 1");
    return row.next() ? std::optional(readJob(row)) : std::nullopt;
}

std::optional<JobItem> OpenJobs::unplannedItem(std::int64_t job) {
    auto row = database_.query(
        selectJobItems + "WHERE job = ? AND status = 0 AND total = 0 ORDER BY number LIMIT 1", job);
    return row.next() ? std::optional(readItem(row)) : std::nullopt;
}

std::optional<JobItem> OpenJobs::nextItem(std::int64_t job) {
    auto row = database_.query(selectJobItems + "WHERE job = ? AND status < 2 ORDER BY number LIMIT 1", job);
    return row.next() ? std::optional(readItem(row)) : std::nullopt;
}

bool OpenJobs::isOpen(std::int64_t job) {
    auto row = database_.query("SELECT 1 FROM jobs WHERE id = ? AND status < 2", job);
    return row.next();
}

void OpenJobs::begin(std::int64_t job) {
    const auto time = timestamp();
    database_.run("UPDATE jobs SET status = ?, begin_time = ? WHERE id = ?",
                  static_cast<int>(JobStatus::running), time, job);
}

void OpenJobs::save(const JobItem& item) {
    database_.run(
        "UPDATE job_items SET status = ?, total = ?, done = ?, new_node = ?, new_path = ?, code = ?, "
        "reason = ?, content = ? WHERE job = ? AND number = ?",
        static_cast<int>(item.status), item.total, item.done, item.newNode, item.newPath, item.code,
        item.reason, item.content, item.job, item.number);
}

void OpenJobs::finishIfDone(std::int64_t job) {
    if (nextItem(job)) return;
    bool failed = false;
    {
        auto row = database_.query("SELECT 1 FROM job_items WHERE job = ? AND code <> 0", job);
        failed = row.next();
    }
    end(database_, job, failed ? JobStatus::failed : JobStatus::done);
}

std::int64_t OpenJobs::planTree(const JobItem& item, std::int64_t account) {
    database_.run(
        "INSERT INTO job_steps (job, item, number, node, parent) "
        "WITH RECURSIVE below (id, parent, depth) AS ("
        "SELECT id, parent, 0 FROM items WHERE id = ?3 AND account = ?4 UNION "
        "SELECT items.id, items.parent, depth + 1 FROM items JOIN below ON items.parent = below.id "
        "WHERE account = ?4) "
        "SELECT ?1, ?2, row_number() OVER (ORDER BY depth, id) - 1, id, parent FROM below",
        item.job, item.number, item.node, account);
    auto count =
        database_.query("SELECT count(*) FROM job_steps WHERE job = ? AND item = ?", item.job, item.number);
    count.next();
    return count.integer(0);
}

JobStep OpenJobs::step(const JobItem& item, std::int64_t number) {
    auto row = database_.query("SELECT node, parent FROM job_steps WHERE job = ? AND item = ? AND number = ?",
                               item.job, item.number, number);
    row.next();
    return {row.integer(0), row.integer(1)};
}

void OpenJobs::noteCopy(const JobItem& item, std::int64_t number, std::int64_t copy) {
    database_.run("UPDATE job_steps SET copy = ? WHERE job = ? AND item = ? AND number = ?", copy, item.job,
                  item.number, number);
}

std::optional<std::int64_t> OpenJobs::copyOf(const JobItem& item, std::int64_t node) {
    auto row = database_.query("SELECT copy FROM job_steps WHERE job = ? AND item = ? AND node = ?", item.job,
                               item.number, node);
    return row.next() ? row.optionalInteger(0) : std::nullopt;
}

void OpenJobs::addEntry(const JobItem& item, std::int64_t number, const JobEntry& entry) {
    database_.run(
        "INSERT INTO job_entries (job, item, number, name, is_file, size, millis, code, reason) "
        "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
        item.job, item.number, number, entry.name, entry.isFile, entry.size, entry.millis, entry.code,
        entry.reason);
}

JobEntry OpenJobs::entry(const JobItem& item, std::int64_t number) {
    auto row = database_.query(selectEntries + "WHERE job = ? AND item = ? AND number = ?", item.job,
                               item.number, number);
    row.next();
    return readEntry(row);
}

void OpenJobs::saveEntry(const JobItem& item, std::int64_t number, const JobEntry& entry) {
    database_.run(
        "UPDATE job_entries SET node = ?, code = ?, reason = ? WHERE job = ? AND item = ? AND number = ?",
        entry.node, entry.code, entry.reason, item.job, item.number, number);
}

}  // namespace quillboxd
