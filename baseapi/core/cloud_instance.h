#pragma once

#include <memory>
#include <optional>
#include <string>

#include "baseapi/core/guarded.h"
#include "baseapi/platform/export.h"

namespace baseapi::inline v1 {

class IAlbum;
class IBackUp;
class ICarrier;
class IFavor;
class IFile;
class IFolderSync;
class IJob;
class IPhoneBackup;
class IRevision;
class IShare;
class IShareFolder;
class ISliceFile;
class ISpace;
class ITransfer;
class IUser;

/// The one object that a host touches first: it holds the session values and hands out the service objects.
///
/// A host sets `host` (no trailing slash), asks `getUserImpl().getToken` for a token and sets `token` to it,
/// sets `contentId` and `sliceFile`, and then calls the service objects. Nothing enforces this order, nothing
/// is kept on disk, and the library never sets a session value itself. All values may be read and set from
/// any thread; a request reads `host` and `token` when it is sent, and what is under way keeps what it has
/// read.
class BASEAPI_API CloudInstance {
  public:
    /// The process-wide instance; made on first use, never destroyed.
    static CloudInstance& shared();

    CloudInstance(const CloudInstance&) = delete;
    CloudInstance& operator=(const CloudInstance&) = delete;

    /// For the host's own use; sent with nothing.
    Guarded<std::optional<std::string>> authCode;
    /// The header `Authorization` of each request as it stands; absent leaves the header out, the empty text
    /// does not.
    Guarded<std::optional<std::string>> token;
    /// The service's base address without a trailing slash, such as "https://cloud.example.org".
    Guarded<std::optional<std::string>> host;
    /// For the host's own use; sent with nothing.
    Guarded<std::optional<std::string>> innerUser;
    /// The container that uploads name; copied into an upload when it starts.
    Guarded<std::optional<std::string>> contentId;
    /// What hashes and cuts files for the backup runs; may be absent where there is none.
    Guarded<std::shared_ptr<ISliceFile>> sliceFile;

    /// "Your-App-Name" until it is replaced. It is kept for the host and sent with nothing: the header
    /// `User-Agent` is fixed.
    std::string userAgent() const { return userAgent_.get(); }
    /// Replaces what `userAgent` gives.
    void updateUserAgent(std::string userAgent) { userAgent_.set(std::move(userAgent)); }

    // The service objects. Each call gives the same object; they live as long as the process.
    /// Sign-in and users.
    IUser& getUserImpl() const { return *userImpl_; }
    /// Files and folders.
    IFile& getFileImpl() const { return *fileImpl_; }
    /// Share links.
    IShare& getShareImpl() const { return *shareImpl_; }
    /// Favourites.
    IFavor& getFavorImpl() const { return *favorImpl_; }
    /// Jobs that the service runs.
    IJob& getJobImpl() const { return *jobImpl_; }
    /// Storage packages.
    ICarrier& getCarrierImpl() const { return *carrierImpl_; }
    /// One file up, one file down.
    ITransfer& getTransferImpl() const { return *transferImpl_; }
    /// The service's store of backups.
    IBackUp& getBackupImpl() const { return *backupImpl_; }
    /// Folders that are shared with members.
    IShareFolder& getShareFolderImpl() const { return *shareFolderImpl_; }
    /// Albums of the cloud.
    IAlbum& getAlbumImpl() const { return *albumImpl_; }
    /// Revisions of a file.
    IRevision& getRevisionImpl() const { return *revisionImpl_; }
    /// Space used and free.
    ISpace& getSpaceImpl() const { return *spaceImpl_; }
    /// Sync folders and their feed of changes.
    IFolderSync& getfolderSyncImpl() const { return *folderSyncImpl_; }
    /// The runs that back up a phone.
    IPhoneBackup& getPhoneBackupImpl() const { return *phoneBackupImpl_; }

  private:
    /// Builds the service objects, in the order of the fields below.
    CloudInstance();

    Guarded<std::string> userAgent_{"Your-App-Name"};
    IUser* userImpl_;
    IFile* fileImpl_;
    IShare* shareImpl_;
    IFavor* favorImpl_;
    IJob* jobImpl_;
    ICarrier* carrierImpl_;
    ITransfer* transferImpl_;
    IBackUp* backupImpl_;
    IShareFolder* shareFolderImpl_;
    IAlbum* albumImpl_;
    IRevision* revisionImpl_;
    ISpace* spaceImpl_;
    IFolderSync* folderSyncImpl_;
    IPhoneBackup* phoneBackupImpl_;
};

}  // namespace baseapi::inline v1
