#pragma once

#include "quillboxd/call.h"

// The handlers of all endpoints, by family; routes.cpp says which belongs to which.

namespace quillboxd::users {
Reply getToken(Call& call);
Reply user(Call& call);
Reply list(Call& call);
Reply changeOrDelete(Call& call);
}  // namespace quillboxd::users

namespace quillboxd::spaces {
Reply space(Call& call);
Reply batch(Call& call);
}  // namespace quillboxd::spaces

namespace quillboxd::files {
Reply access(Call& call);
Reply createDirectory(Call& call);
Reply complete(Call& call);
Reply rename(Call& call);
Reply create(Call& call);
Reply search(Call& call);
Reply list(Call& call);
Reply path(Call& call);
Reply statsDir(Call& call);
Reply downloadUrls(Call& call);
Reply detail(Call& call);
Reply uploadUrls(Call& call);
Reply previewLink(Call& call);
}  // namespace quillboxd::files

namespace quillboxd::favourites {
Reply list(Call& call);
Reply star(Call& call);
}  // namespace quillboxd::favourites

namespace quillboxd::revisions {
Reply update(Call& call);
}

namespace quillboxd::backup {
Reply unbindDevice(Call& call);
Reply bindDevice(Call& call);
Reply devices(Call& call);
Reply takeLock(Call& call);
Reply renewLock(Call& call);
Reply releaseLock(Call& call);
Reply finishRecord(Call& call);
Reply removeRecord(Call& call);
Reply record(Call& call);
Reply addRecord(Call& call);
Reply records(Call& call);
Reply recordFiles(Call& call);
Reply addRecordFile(Call& call);
Reply addScopes(Call& call);
Reply removeScopes(Call& call);
Reply scopes(Call& call);
Reply values(Call& call);
Reply value(Call& call);
Reply setValue(Call& call);
}  // namespace quillboxd::backup

namespace quillboxd::shares {
Reply list(Call& call);
Reply create(Call& call);
Reply cancel(Call& call);
Reply files(Call& call);
Reply detail(Call& call);
Reply modify(Call& call);
Reply openPage(Call& call);
Reply takeCode(Call& call);
}  // namespace quillboxd::shares

namespace quillboxd::jobs {
Reply create(Call& call);
Reply cancel(Call& call);
Reply detail(Call& call);
Reply list(Call& call);
}  // namespace quillboxd::jobs

namespace quillboxd::sharefolders {
Reply create(Call& call);
Reply rename(Call& call);
Reply remove(Call& call);
Reply detail(Call& call);
Reply list(Call& call);
Reply albums(Call& call);
}  // namespace quillboxd::sharefolders

namespace quillboxd::albums {
Reply create(Call& call);
Reply update(Call& call);
Reply remove(Call& call);
Reply list(Call& call);
Reply contents(Call& call);
Reply addContents(Call& call);
Reply removeContent(Call& call);
}  // namespace quillboxd::albums

namespace quillboxd::sync {
Reply create(Call& call);
Reply close(Call& call);
Reply startCursor(Call& call);
Reply listChange(Call& call);
Reply walk(Call& call);
}  // namespace quillboxd::sync

namespace quillboxd::packages {
Reply list(Call& call);
Reply orders(Call& call);
Reply change(Call& call);
Reply noteExpiry(Call& call);
}  // namespace quillboxd::packages

namespace quillboxd::addresses {
Reply putPart(Call& call);
Reply getContent(Call& call);
}  // namespace quillboxd::addresses

namespace quillboxd::pages {
Reply overview(Call& call);
Reply accounts(Call& call);
Reply folder(Call& call);
Reply picture(Call& call);
Reply backups(Call& call);
Reply requests(Call& call);
}  // namespace quillboxd::pages

namespace quillboxd::control {
Reply health(Call& call);
Reply reset(Call& call);
Reply requests(Call& call);
Reply planFault(Call& call);
Reply forgetFaults(Call& call);
Reply listFaults(Call& call);
Reply expireLocks(Call& call);
Reply expireShares(Call& call);
Reply joinShareFolder(Call& call);
Reply holdJobs(Call& call);
Reply releaseJobs(Call& call);
}  // namespace quillboxd::control
