#pragma once

#include <memory>

#include "cli/command.h"

namespace quillbox {

// Each function makes the command of the file of its name.
std::unique_ptr<Command> makeAlbum();
std::unique_ptr<Command> makeAlbumAdd();
std::unique_ptr<Command> makeAlbumMake();
std::unique_ptr<Command> makeAlbums();
std::unique_ptr<Command> makeBackupAlbum();
std::unique_ptr<Command> makeBackupContacts();
std::unique_ptr<Command> makeBackupDirs();
std::unique_ptr<Command> makeCall();
std::unique_ptr<Command> makeCopy();
std::unique_ptr<Command> makeDetail();
std::unique_ptr<Command> makeDevices();
std::unique_ptr<Command> makeDoctor();
std::unique_ptr<Command> makeDownload();
std::unique_ptr<Command> makeFavouriteAdd();
std::unique_ptr<Command> makeFavouriteRemove();
std::unique_ptr<Command> makeFavourites();
std::unique_ptr<Command> makeJobs();
std::unique_ptr<Command> makeLs();
std::unique_ptr<Command> makeMkdir();
std::unique_ptr<Command> makeMove();
std::unique_ptr<Command> makePath();
std::unique_ptr<Command> makeRecords();
std::unique_ptr<Command> makeRemove();
std::unique_ptr<Command> makeRename();
std::unique_ptr<Command> makeRestoreContacts();
std::unique_ptr<Command> makeRevisions();
std::unique_ptr<Command> makeScopeAdd();
std::unique_ptr<Command> makeScopeRemove();
std::unique_ptr<Command> makeScopes();
std::unique_ptr<Command> makeSearch();
std::unique_ptr<Command> makeShare();
std::unique_ptr<Command> makeShares();
std::unique_ptr<Command> makeSignIn();
std::unique_ptr<Command> makeSpace();
std::unique_ptr<Command> makeUnshare();
std::unique_ptr<Command> makeUnzip();
std::unique_ptr<Command> makeUpload();
std::unique_ptr<Command> makeVerify();
std::unique_ptr<Command> makeWatch();

}  // namespace quillbox
