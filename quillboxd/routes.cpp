#include "quillboxd/handlers/handlers.h"
#include "quillboxd/router.h"

namespace quillboxd {
namespace {

constexpr Route table[] = {
    // Users
    {"POST", "/quillbox/ose/v1/carrier/standard/user/auth", users::getToken, Admission::anyone},
    {"GET", "/quillbox/ose/v1/users/*", users::user},
    {"GET", "/quillbox/ose/v1/userList", users::list},
    {"DELETE", "/quillbox/ose/v1/users/*", users::changeOrDelete},

    // Space; without an owner it is the caller's
    {"POST", "/quillbox/ose/v1/space/batchGetSpace", spaces::batch},
    {"GET", "/quillbox/ose/v1/space/", spaces::space},
    {"GET", "/quillbox/ose/v1/space/*", spaces::space},

    // Files; the list's kind is any text, so it stands behind the fixed names
    {"GET", "/quillbox/ose/v1/access", files::access},
    {"POST", "/quillbox/ose/v1/directory", files::createDirectory},
    {"POST", "/quillbox/ose/v1/files/complete", files::complete, Admission::detached},
    {"POST", "/quillbox/ose/v1/files/create", files::create},
    {"POST", "/quillbox/ose/v1/files/search", files::search},
    {"POST", "/quillbox/ose/v1/files/download", files::downloadUrls},
    {"GET", "/quillbox/ose/v1/files/path", files::path},
    {"GET", "/quillbox/ose/v1/files/statsDir", files::statsDir},
    {"POST", "/quillbox/ose/v1/files/multipart/uploadUrl", files::uploadUrls},
    {"POST", "/quillbox/ose/v1/files/rename/*", files::rename},
    {"GET", "/quillbox/ose/v1/files/preview/*/link", files::previewLink},
    {"POST", "/quillbox/ose/v1/files/*/detail", files::detail},
    {"POST", "/quillbox/ose/v1/files/*", files::list},

    // Favourites and revisions
    {"GET", "/quillbox/ose/v1/star/files", favourites::list},
    {"POST", "/quillbox/ose/v1/star/batch", favourites::star},
    {"POST", "/quillbox/ose/v1/revision/updateRevision", revisions::update},

    // Backups; each call is known under one of the two prefixes alone
    {"DELETE", "/quillbox/ose/v1/backup/device/*", backup::unbindDevice},
    {"POST", "/quillbox/cloudfileh5/v1/backup/device", backup::bindDevice},
    {"GET", "/quillbox/cloudfileh5/v1/backup/device", backup::devices},
    {"POST", "/quillbox/ose/v1/backup/lock", backup::takeLock},
    {"PATCH", "/quillbox/cloudfileh5/v1/backup/lock", backup::renewLock},
    {"DELETE", "/quillbox/ose/v1/backup/lock", backup::releaseLock},
    {"PATCH", "/quillbox/cloudfileh5/v1/backup/record/*", backup::finishRecord},
    {"DELETE", "/quillbox/ose/v1/backup/record/*", backup::removeRecord},
    {"GET", "/quillbox/ose/v1/backup/record/*", backup::record},
    {"POST", "/quillbox/ose/v1/backup/record", backup::addRecord},
    {"GET", "/quillbox/cloudfileh5/v1/backup/record", backup::records},
    {"GET", "/quillbox/ose/v1/backup/record/*/files", backup::recordFiles},
    {"POST", "/quillbox/ose/v1/backup/record/*/file", backup::addRecordFile},
    {"POST", "/quillbox/ose/v1/backup/device/*/scope", backup::addScopes},
    {"DELETE", "/quillbox/ose/v1/backup/device/*/scope", backup::removeScopes},
    {"GET", "/quillbox/ose/v1/backup/device/*/scope", backup::scopes},
    {"GET", "/quillbox/ose/v1/backup/device/*/configs", backup::values},
    {"GET", "/quillbox/ose/v1/backup/device/*/config", backup::value},
    {"POST", "/quillbox/ose/v1/backup/device/*/config", backup::setValue},

    // Share links, and the pages that they open in a browser
    {"GET", "/quillbox/ose/v1/share", shares::list},
    {"POST", "/quillbox/ose/v1/share", shares::create},
    {"POST", "/quillbox/ose/v1/share/cancel", shares::cancel},
    {"POST", "/quillbox/ose/v1/share/files", shares::files, Admission::visitor},
    {"GET", "/quillbox/ose/v1/share/*", shares::detail},
    {"PUT", "/quillbox/ose/v1/share/*", shares::modify},
    {"GET", "/s/*", shares::openPage, Admission::visitor},
    {"GET", "/s/*/*", shares::openPage, Admission::visitor},
    {"POST", "/s/*", shares::takeCode, Admission::anyone},
    {"POST", "/s/*/*", shares::takeCode, Admission::anyone},

    // Sync folders
    {"POST", "/quillbox/ose/v1/syncDir/create", sync::create},
    {"POST", "/quillbox/ose/v1/syncDir/close", sync::close},
    {"POST", "/quillbox/ose/v1/syncDir/getStartCursor", sync::startCursor},
    {"POST", "/quillbox/ose/v1/syncDir/listChange", sync::listChange},
    {"POST", "/quillbox/ose/v1/file/walkFile", sync::walk},

    // Packages of the carrier
    {"GET", "/quillbox/ose/v1/carrier/standard/packages", packages::list},
    {"GET", "/quillbox/ose/v1/carrier/standard/packages/orders", packages::orders},
    {"POST", "/quillbox/ose/v1/carrier/operation/reverseOrder", packages::change},
    {"POST", "/quillbox/ose/v1/carrier/users/notifyPackageExpire", packages::noteExpiry},

    // Jobs; the id of one stands where other endpoints have their name, so it comes behind all of these
    {"POST", "/quillbox/ose/v1/cancel", jobs::cancel},
    {"POST", "/quillbox/ose/v1/jobs", jobs::create},
    {"GET", "/quillbox/ose/v1/jobs", jobs::list},
    {"GET", "/quillbox/ose/v1/*", jobs::detail},

    // Share folders
    {"POST", "/quillbox/ose/v1/sharefolder/create", sharefolders::create},
    {"POST", "/quillbox/ose/v1/sharefolder/rename", sharefolders::rename},
    {"POST", "/quillbox/ose/v1/sharefolder/delete", sharefolders::remove},
    {"GET", "/quillbox/ose/v1/sharefolder/metadata/*", sharefolders::detail},
    {"GET", "/quillbox/ose/v1/sharefolder/list", sharefolders::list},
    {"GET", "/quillbox/ose/v1/sharefolder/album/list", sharefolders::albums},

    // Albums; two of them go by the id alone
    {"POST", "/quillbox/ose/v1/album/create", albums::create},
    {"GET", "/quillbox/ose/v1/album/list", albums::list},
    {"DELETE", "/quillbox/ose/v1/album/*", albums::remove},
    {"GET", "/quillbox/ose/v1/album/*/list", albums::contents},
    {"POST", "/quillbox/ose/v1/album/*/add", albums::addContents},
    {"POST", "/quillbox/ose/v1/*/update", albums::update},
    {"DELETE", "/quillbox/ose/v1/*/batchDelete", albums::removeContent},

    // Signed addresses
    {"PUT", "/_part/*/*", addresses::putPart, Admission::address},
    {"GET", "/_content/*", addresses::getContent, Admission::address},
    {"HEAD", "/_content/*", addresses::getContent, Admission::address},
    {"GET", "/_content/*/revision/*", addresses::getContent, Admission::address},
    {"HEAD", "/_content/*/revision/*", addresses::getContent, Admission::address},
    {"GET", "/_content/*/inline", addresses::getContent, Admission::address},
    {"HEAD", "/_content/*/inline", addresses::getContent, Admission::address},
    {"GET", "/_content/*/share/*", addresses::getContent, Admission::address},
    {"HEAD", "/_content/*/share/*", addresses::getContent, Admission::address},
    {"GET", "/_content/*/share/*/inline", addresses::getContent, Admission::address},
    {"HEAD", "/_content/*/share/*/inline", addresses::getContent, Admission::address},

    // What a browser shows
    {"GET", "/", pages::overview, Admission::page},
    {"GET", "/_dev/pages/accounts", pages::accounts, Admission::page},
    {"GET", "/_dev/pages/folders/*/*", pages::folder, Admission::page},
    {"GET", "/_dev/pages/pictures/*/*", pages::picture, Admission::page},
    {"GET", "/_dev/pages/backups", pages::backups, Admission::page},
    {"GET", "/_dev/pages/requests", pages::requests, Admission::page},

    // Control
    {"GET", "/_dev/health", control::health, Admission::control},
    {"POST", "/_dev/reset", control::reset, Admission::control},
    {"GET", "/_dev/requests", control::requests, Admission::control},
    {"POST", "/_dev/faults", control::planFault, Admission::control},
    {"GET", "/_dev/faults", control::listFaults, Admission::control},
    {"DELETE", "/_dev/faults", control::forgetFaults, Admission::control},
    {"DELETE", "/_dev/locks", control::expireLocks, Admission::control},
    {"DELETE", "/_dev/shares", control::expireShares, Admission::control},
    {"POST", "/_dev/sharefolders/*/members", control::joinShareFolder, Admission::control},
    {"POST", "/_dev/jobs", control::holdJobs, Admission::control},
    {"DELETE", "/_dev/jobs", control::releaseJobs, Admission::control},
};

}  // namespace

std::span<const Route> routes() {
    return table;
}

}  // namespace quillboxd
