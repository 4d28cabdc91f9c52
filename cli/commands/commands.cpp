#include "cli/commands/commands.h"

namespace quillbox {

std::vector<std::unique_ptr<Command>> allCommands() {
    std::vector<std::unique_ptr<Command>> all;
    all.push_back(makeSignIn());
    all.push_back(makeUpload());
    all.push_back(makeDownload());
    all.push_back(makeVerify());
    all.push_back(makeLs());
    all.push_back(makeMkdir());
    all.push_back(makeRename());
    all.push_back(makeCopy());
    all.push_back(makeMove());
    all.push_back(makeRemove());
    all.push_back(makeUnzip());
    all.push_back(makeJobs());
    all.push_back(makeWatch());
    all.push_back(makeSearch());
    all.push_back(makePath());
    all.push_back(makeDetail());
    all.push_back(makeRevisions());
    all.push_back(makeFavourites());
    all.push_back(makeFavouriteAdd());
    all.push_back(makeFavouriteRemove());
    all.push_back(makeShare());
    all.push_back(makeShares());
    all.push_back(makeUnshare());
    all.push_back(makeAlbums());
    all.push_back(makeAlbumMake());
    all.push_back(makeAlbumAdd());
    all.push_back(makeAlbum());
    all.push_back(makeSpace());
    all.push_back(makeDevices());
    all.push_back(makeScopes());
    all.push_back(makeScopeAdd());
    all.push_back(makeScopeRemove());
    all.push_back(makeRecords());
    all.push_back(makeBackupDirs());
    all.push_back(makeBackupAlbum());
    all.push_back(makeBackupContacts());
    all.push_back(makeRestoreContacts());
    all.push_back(makeCall());
    all.push_back(makeDoctor());
    return all;
}

}  // namespace quillbox
