#include "quillboxd/service.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <cstring>
#include <set>

#include "quillboxd/crypto/random.h"
#include "quillboxd/error.h"
#include "quillboxd/store/schema.h"

namespace quillboxd {
namespace {

std::string databasePath(const std::filesystem::path& folder) {
    return folder.empty() ? ":memory:" : folder / "quillboxd.sqlite";
}

/// The key outlives a restart, and so do the addresses signed with it.
std::string signingKey(Database& database) {
    prepareSchema(database);
    Transaction transaction(database);
    const auto fresh = randomBytes(32);
    database.run("INSERT OR IGNORE INTO settings (key, value) VALUES ('signing key', ?)", Blob{fresh});
    std::string key;
    {
        auto row = database.query("SELECT value FROM settings WHERE key = 'signing key'");
        row.next();
        key = row.text(0);
    }
    transaction.commit();
    return key;
}

std::set<std::string> namedBlobs(Database& database) {
    Transaction transaction(database);
    Contents::removeUnused(database);
    std::set<std::string> names;
    {
        auto rows =
            database.query("SELECT blob FROM segments UNION SELECT blob FROM parts WHERE blob IS NOT NULL");
        while (rows.next()) names.insert(rows.text(0));
    }
    transaction.commit();
    return names;
}

}  // namespace

FolderLock::FolderLock(const std::filesystem::path& folder) {
    if (folder.empty()) return;
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) throw StartError("the data folder " + folder.string() + " cannot be made: " + error.message());
    file_.reset(::open((folder / "lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!file_) {
        throw StartError("the data folder " + folder.string() +
                         " cannot be written: " + std::strerror(errno));
    }
    if (::flock(file_.get(), LOCK_EX | LOCK_NB) != 0) {
        throw StartError("the data folder " + folder.string() +
                         " is in use by another quillboxd; end that one first");
    }
}

Service::Service(const std::filesystem::path& folder, std::int64_t bytesForEach)
    : lock_(folder),
      quota(bytesForEach),
      database(databasePath(folder)),
      blobs(folder.empty() ? folder : folder / "blobs"),
      contents(database, blobs),
      signer(signingKey(database)),
      jobs(*this) {
    blobs.removeAllBut(namedBlobs(database));
    jobs.wake();
}

void Service::reset() {
    faults.clear();
    jobs.allow(std::nullopt);
    Transaction transaction(database);
    emptyTables(database);
    jobs.interrupt();
    transaction.commit();
    // Still alone with the database: nobody can have stored anything new yet.
    blobs.clear();
    journal.clear();
}

}  // namespace quillboxd
