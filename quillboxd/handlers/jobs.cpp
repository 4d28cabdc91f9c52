#include "quillboxd/store/jobs.h"

#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/parameters.h"

namespace quillboxd::jobs {
namespace {

constexpr std::size_t mostItems = 1000;

constexpr Field fileShape[] = {{"fileId", Type::text}, {"filePath", Type::text}};
constexpr Field taskShape[] = {{"fileInfo", Type::records, fileShape},
                               {"newFilePath", Type::text},
                               {"srcContainerId", Type::text},
                               {"uncompressFilePaths", Type::texts}};
constexpr Field createShape[] = {{"taskType", Type::integer},
                                 {"actionType", Type::integer},
                                 {"taskInfo", Type::record, taskShape},
                                 {"dstContainerId", Type::text},
                                 {"password", Type::text}};

Jobs jobStore(Call& call) {
    return {call.service.database, call.account.id};
}

const char* nameOf(JobKind kind) {
    switch (kind) {
        case JobKind::copy:
            return "copy";
        case JobKind::move:
            return "move";
        case JobKind::remove:
            return "delete";
        case JobKind::unpack:
            return "uncompress";
    }
    return "";
}

JobKind readKind(const json::object& request) {
    const auto number = integer(request, "taskType", 0);
    if (number < 1 || number > 4)
        badRequest("\"taskType\" must be 1 (copy), 2 (move), 3 (delete) or 4 (uncompress)");
    return static_cast<JobKind>(number);
}

NameRule readNameRule(const json::object& request) {
    const auto number = integer(request, "actionType", 2);
    if (number != 1 && number != 2)
        badRequest("\"actionType\" must be 1 (refuse a name that is taken) or 2 (change it)");
    return static_cast<NameRule>(number);
}

JobItem readItem(Tree& tree, JobKind kind, const json::object& file) {
    const auto id = text(file, "fileId");
    const auto node = id.empty() ? tree.requireAt(requiredText(file, "filePath")) : tree.require(id);
    if (node.id == 0) forbidden(std::string("the root folder is nothing to ") + nameOf(kind));
    if (kind == JobKind::unpack && !node.isFile)
        badRequest("\"" + node.name + "\" is a folder, not an archive");
    JobItem item;
    item.node = node.id;
    item.path = namePath(tree.path(node));
    return item;
}

std::vector<JobItem> readItems(Tree& tree, JobKind kind, const json::object& task) {
    const auto* files = present(task, "fileInfo");
    if (!files || files->get_array().empty()) badRequest("\"taskInfo.fileInfo\" is missing or empty");
    if (files->get_array().size() > mostItems) badRequest("\"taskInfo.fileInfo\" has more than 1,000 items");
    std::vector<JobItem> items;
    for (const auto& file : files->get_array()) items.push_back(readItem(tree, kind, file.get_object()));
    return items;
}

/// The folder where things go, which only a deletion does without; an archive has its own by default.
std::optional<std::int64_t> readDestination(Tree& tree, JobKind kind, const json::object& task) {
    const auto path = text(task, "newFilePath");
    if (kind == JobKind::remove || (kind == JobKind::unpack && path.empty())) return std::nullopt;
    if (path.empty()) badRequest("\"taskInfo.newFilePath\" is missing or empty");
    const auto folder = tree.requireAt(path);
    if (folder.isFile) badRequest("\"" + path + "\" is a file, not a folder");
    return folder.id;
}

std::vector<std::string> readWanted(const json::object& task) {
    std::vector<std::string> wanted;
    const auto* paths = present(task, "uncompressFilePaths");
    if (!paths) return wanted;
    if (paths->get_array().size() > mostItems)
        badRequest("\"taskInfo.uncompressFilePaths\" has more than 1,000 paths");
    for (const auto& path : paths->get_array()) wanted.emplace_back(path.get_string());
    return wanted;
}

Job requireJob(Call& call, const std::string& id) {
    std::optional<Job> job;
    if (const auto number = Tree::fromWireId(id)) job = jobStore(call).find(*number);
    if (!job) notFound("there is no job \"" + id + "\"");
    return *std::move(job);
}

/// 0: all was done, 1: a part of it, 2: nothing.
int taskResult(const JobSums& sums) {
    if (sums.allDone) return 0;
    return sums.anyTouched ? 1 : 2;
}

/// Whole hundredths of what there is to do; a job that had nothing to do is at its end.
std::int64_t progress(const Job& job, const JobSums& sums) {
    if (sums.total == 0) return job.endTime && job.beginTime ? 100 : 0;
    return sums.done * 100 / sums.total;
}

/// What lists and details tell alike.
json::object commonFields(const Call& call, const Job& job, const JobSums& sums) {
    json::object fields{{"taskId", std::to_string(job.id)},
                        {"taskType", static_cast<int>(job.kind)},
                        {"actionType", static_cast<int>(job.nameRule)},
                        {"status", static_cast<int>(job.status)},
                        {"contentNum", sums.total},
                        {"containerId", call.account.container},
                        {"createTime", job.createdTime}};
    if (job.beginTime) fields["beginTime"] = *job.beginTime;
    if (!job.endTime) return fields;
    fields["endTime"] = *job.endTime;
    fields["taskResultCode"] = taskResult(sums);
    fields["resultCode"] = sums.firstCode;
    return fields;
}

std::string description(const JobItem& item) {
    if (item.status == JobStatus::done || item.total == item.done) return item.reason;
    const auto share = std::to_string(item.done) + " of " + std::to_string(item.total) + " done";
    return item.reason.empty() ? share : item.reason + "; " + share;
}

json::object itemFields(const Call& call, const Job& job, const JobItem& item) {
    json::object fields{{"id", std::to_string(item.number)},
                        {"fileId", Tree::wireId(item.node)},
                        {"filePath", item.path},
                        {"status", std::to_string(static_cast<int>(item.status))},
                        {"srcContainerId", call.account.container},
                        {"createTime", job.createdTime}};
    if (const auto text = description(item); !text.empty()) fields["resultDesc"] = text;
    if (item.newNode) {
        fields["newFileId"] = Tree::wireId(*item.newNode);
        fields["newFilePath"] = item.newPath;
    }
    if (job.endTime) fields["resultCode"] = std::to_string(item.code);
    return fields;
}

json::object entryFields(const Call& call, const JobEntry& entry) {
    json::object fields{{"containerId", call.account.container},
                        {"name", entry.name},
                        {"fileSize", entry.size},
                        {"type", entry.isFile ? 1 : 0},
                        {"updatedAt", entry.millis}};
    if (entry.node) fields["fileId"] = Tree::wireId(*entry.node);
    if (entry.node || entry.code != 0) fields["code"] = std::to_string(entry.code);
    if (entry.code != 0) fields["reason"] = entry.reason;
    return fields;
}

std::optional<std::int64_t> filterParameter(const Call& call, std::string_view name) {
    constexpr std::int64_t any = -1;
    const auto number = integerParameter(call, name, any);
    return number == any ? std::nullopt : std::optional(number);
}

}  // namespace

Reply create(Call& call) {
    const auto request = call.record(createShape);
    const auto task = record(request, "taskInfo");
    call.checkContainer(text(request, "dstContainerId"));
    call.checkContainer(text(task, "srcContainerId"));
    auto tree = call.tree();
    Job job;
    job.kind = readKind(request);
    job.nameRule = readNameRule(request);
    const auto items = readItems(tree, job.kind, task);
    job.destination = readDestination(tree, job.kind, task);
    job.wanted = readWanted(task);
    job.password = text(request, "password");
    const auto id = jobStore(call).add(job, items);
    call.service.jobs.wake();
    return success({{"data", std::to_string(id)}});
}

Reply cancel(Call& call) {
    static constexpr Field shape[] = {{"jobId", Type::text}};
    const auto request = call.record(shape);
    const auto job = requireJob(call, requiredText(request, "jobId"));
    if (!jobStore(call).cancel(job.id))
        conflict(Code::conflict, "the job " + std::to_string(job.id) + " has ended already");
    if (job.status == JobStatus::running) call.service.jobs.interrupt();
    return success({{"data", std::to_string(job.id)}});
}

Reply detail(Call& call) {
    const auto job = requireJob(call, call.wildcards[0]);
    auto store = jobStore(call);
    const auto sums = store.sums(job.id);
    auto info = commonFields(call, job, sums);
    info["taskName"] = nameOf(job.kind);
    info["userId"] = std::to_string(call.account.id);
    info["progress"] = progress(job, sums);
    json::object data{{"jobInfo", std::move(info)}};
    json::array tasks;
    for (const auto& item : store.items(job.id)) tasks.push_back(itemFields(call, job, item));
    data["taskInfos"] = std::move(tasks);
    if (job.kind == JobKind::unpack) {
        json::array entries;
        for (const auto& entry : store.entries(job.id)) entries.push_back(entryFields(call, entry));
        data["uncompressedFileList"] = std::move(entries);
    }
    return success({{"data", std::move(data)}});
}

Reply list(Call& call) {
    const JobFilter filter{.kind = filterParameter(call, "type"),
                           .status = filterParameter(call, "status"),
                           .offset = integerParameter(call, "offset", 0),
                           .limit = pageSize(integerParameter(call, "limit", 100), "limit")};
    if (filter.offset < 0) badRequest("\"offset\" must not be negative");
    auto store = jobStore(call);
    json::array jobs;
    for (const auto& job : store.list(filter)) jobs.push_back(commonFields(call, job, store.sums(job.id)));
    return success({{"data", std::move(jobs)}});
}

}  // namespace quillboxd::jobs
