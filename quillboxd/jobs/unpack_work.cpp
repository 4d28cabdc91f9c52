#include <algorithm>
#include <optional>

#include "quillboxd/crypto/sha256.h"
#include "quillboxd/error.h"
#include "quillboxd/jobs/work.h"
#include "quillboxd/jobs/zip_archive.h"
#include "quillboxd/service.h"
#include "quillboxd/store/database.h"
#include "quillboxd/store/space.h"
#include "quillboxd/unicode.h"

namespace quillboxd {
namespace {

constexpr std::int64_t mostBytes = std::int64_t{16} << 30;
/// A small archive that grows beyond this many times its size is made to fill a disk.
constexpr std::int64_t mostGrowth = 200;
constexpr std::int64_t harmlessBytes = std::int64_t{64} << 20;
constexpr std::size_t mostNames = 100;

bool isFolder(const ZipEntry& entry) {
    return entry.name.ends_with('/');
}

/// The names of an entry's path; throws for a path that would leave the folder it is unpacked into.
std::vector<std::string> namesOf(const ZipEntry& entry) {
    std::string_view rest = entry.name;
    if (!isUtf8(rest)) badRequest("the name is no UTF-8");
    if (rest.starts_with('/')) badRequest("the path is absolute");
    if (isFolder(entry)) rest.remove_suffix(1);
    std::vector<std::string> names;
    while (true) {
        if (names.size() == mostNames) badRequest("the path has more than 100 names");
        names.emplace_back(rest.substr(0, rest.find('/')));
        if (names.back() == "..") badRequest("the path leads out of the folder");
        checkName(names.back());
        if (names.back().size() == rest.size()) return names;
        rest.remove_prefix(names.back().size() + 1);
    }
}

void checkEntry(const ZipEntry& entry) {
    namesOf(entry);
    if (entry.isLink) badRequest("it is a link");
}

/// Whether the entry is the wanted one or stands below it; "/" is all of the archive.
bool isBelow(std::string_view entry, std::string_view wanted) {
    if (wanted.starts_with('/')) wanted.remove_prefix(1);
    if (wanted.ends_with('/')) wanted.remove_suffix(1);
    if (wanted.empty()) return true;
    return entry.starts_with(wanted) && (entry.size() == wanted.size() || entry[wanted.size()] == '/');
}

std::string stem(const std::string& name) {
    const auto dot = name.rfind('.');
    return dot == 0 || dot == name.npos ? name : name.substr(0, dot);
}

/// The bytes of one entry on their way into the store.
struct Extraction {
    std::unique_ptr<BlobWriter> blob;
    Sha256 hash;
    std::int64_t size = 0;
    std::optional<ApiError> refusal;
};

class Unpacking : public Work {
  public:
    Unpacking(Service& service, const Job& job)
        : service_(service),
          job_(job),
          steps_(service.database),
          tree_(service.database, job.account),
          space_(service.database, job.account, service.quota) {}

    void plan(JobItem& item) override {
        const auto file = tree_.find(item.node);
        if (!file) notFound("it is gone");
        item.content = file->content;
        open(piecesOf(item));
        checkSize();
        makeFolder(item, *file);
        for (const auto& entry : entries_) addEntry(item, entry);
    }

    void prepare(const JobItem& item, const std::stop_token& stop) override {
        if (!archive_) {
            std::optional<Transaction> transaction(service_.database);
            const auto pieces = piecesOf(item);
            transaction.reset();
            open(pieces);
        }
        extraction_ = {};
        const auto& entry = entries_.at(static_cast<std::size_t>(item.done));
        try {
            checkEntry(entry);
            if (!isFolder(entry)) extract(entry, stop);
        } catch (const ApiError& error) {
            extraction_.refusal = error;
        }
    }

    void perform(JobItem& item) override {
        const auto& zipped = entries_.at(static_cast<std::size_t>(item.done));
        auto entry = steps_.entry(item, item.done);
        try {
            if (extraction_.refusal) throw *extraction_.refusal;
            Savepoint savepoint(service_.database);  // a refusal leaves no folders made for the entry
            entry.node = place(item, zipped);
            savepoint.keep();
        } catch (const ApiError& error) {
            entry.code = static_cast<int>(error.code());
            entry.reason = readable(error.what());
        }
        steps_.saveEntry(item, item.done, entry);
        if (entry.code == 0 || item.code != 0) return;
        item.code = entry.code;
        item.reason = "\"" + entry.name + "\": " + entry.reason;
    }

  private:
    std::vector<Piece> piecesOf(const JobItem& item) {
        return service_.contents.pieces(item.content.value(), 0, mostBytes);
    }

    void open(const std::vector<Piece>& pieces) {
        archive_ = std::make_unique<ZipArchive>(ContentReader(service_.blobs, pieces), job_.password);
        entries_.clear();
        std::copy_if(archive_->entries().begin(), archive_->entries().end(), std::back_inserter(entries_),
                     [this](const ZipEntry& entry) { return isWanted(entry); });
    }

    bool isWanted(const ZipEntry& entry) const {
        return job_.wanted.empty() ||
               std::any_of(job_.wanted.begin(), job_.wanted.end(),
                           [&](const std::string& wanted) { return isBelow(entry.name, wanted); });
    }

    void checkSize() {
        if (entries_.empty() && !job_.wanted.empty()) notFound("the archive has none of the paths asked for");
        std::int64_t bytes = 0;
        for (const auto& entry : entries_) {
            if (entry.size < 0 || entry.size > mostBytes - bytes)
                badRequest("the archive holds more than 16 GiB");
            bytes += entry.size;
        }
        if (bytes > harmlessBytes && bytes / mostGrowth > archive_->size())
            badRequest("the archive holds more than 200 times its own size");
        space_.requireRoom(bytes);
    }

    void makeFolder(JobItem& item, const Node& file) {
        const auto parent = tree_.find(job_.destination.value_or(file.parent));
        if (!parent) notFound("the folder where it goes is gone");
        auto folder = newNode(parent->id, stem(file.name), false);
        folder.name = tree_.chooseName(parent->id, folder.name, false, job_.nameRule);
        tree_.insert(folder, true);
        item.newNode = folder.id;
        item.newPath = namePath(tree_.path(folder));
    }

    void addEntry(JobItem& item, const ZipEntry& entry) {
        steps_.addEntry(item, item.total++,
                        {.name = readable(entry.name),
                         .isFile = !isFolder(entry),
                         .size = entry.size,
                         .millis = entry.millis});
    }

    void extract(const ZipEntry& entry, const std::stop_token& stop) {
        extraction_.blob.reset(new BlobWriter(service_.blobs.create(entry.size)));
        archive_->read(entry, [&](std::string_view bytes) {
            extraction_.size += static_cast<std::int64_t>(bytes.size());
            if (extraction_.size > entry.size) badRequest("it holds more bytes than the archive says");
            extraction_.hash.update(bytes);
            extraction_.blob->write(bytes);
            return !stop.stop_requested();
        });
        if (extraction_.size < entry.size) badRequest("it holds fewer bytes than the archive says");
    }

    std::int64_t place(const JobItem& item, const ZipEntry& entry) {
        auto names = namesOf(entry);
        auto parent = tree_.find(item.newNode.value());
        if (!parent) notFound("the folder where it goes is gone");
        if (isFolder(entry)) return folderAt(parent->id, names);
        const auto name = names.back();
        names.pop_back();
        auto file = newNode(folderAt(parent->id, names), name, true);
        tree_.chooseName(file.parent, file.name, true, NameRule::refuse);
        space_.requireRoom(extraction_.size);
        file.content = adopt();
        tree_.insert(file, true);
        return file.id;
    }

    std::int64_t folderAt(std::int64_t parent, const std::vector<std::string>& names) {
        for (const auto& name : names) {
            auto folder = tree_.child(parent, name);
            if (folder && folder->isFile) conflict(Code::nameExists, "a file has the name of its folder");
            if (!folder) {
                folder = newNode(parent, name, false);
                tree_.insert(*folder, true);
            }
            parent = folder->id;
        }
        return parent;
    }

    std::int64_t adopt() {
        const auto digest = hex(extraction_.hash.digest());
        if (const auto known = service_.contents.find(digest, extraction_.size)) return *known;
        if (extraction_.size == 0) return service_.contents.add(digest, 0, {});
        extraction_.blob->keep();  // a commit that fails leaves it to the sweeping at the next start
        return service_.contents.add(digest, extraction_.size,
                                     {{extraction_.blob->id(), 0, extraction_.size}});
    }

    Service& service_;
    const Job job_;
    OpenJobs steps_;
    Tree tree_;
    Space space_;
    std::unique_ptr<ZipArchive> archive_;
    std::vector<ZipEntry> entries_;
    Extraction extraction_;
};

}  // namespace

std::unique_ptr<Work> makeUnpacking(Service& service, const Job& job) {
    return std::make_unique<Unpacking>(service, job);
}

}  // namespace quillboxd
