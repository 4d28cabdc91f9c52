// The one file that names every implementation.

#include "baseapi/api/album/album_impl.h"
#include "baseapi/api/backup/backup_impl.h"
#include "baseapi/api/carrier/carrier_impl.h"
#include "baseapi/api/favor/favor_impl.h"
#include "baseapi/api/favor/revision_impl.h"
#include "baseapi/api/files/file_impl.h"
#include "baseapi/api/job/job_impl.h"
#include "baseapi/api/share/share_impl.h"
#include "baseapi/api/sharefolder/share_folder_impl.h"
#include "baseapi/api/sync/folder_sync_impl.h"
#include "baseapi/api/user/space_impl.h"
#include "baseapi/api/user/user_impl.h"
#include "baseapi/backup/phone_backup_impl.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/transfer/transfer_impl.h"

namespace baseapi::inline v1 {

CloudInstance::CloudInstance()
    : userImpl_(makeUserImpl().release()),
      fileImpl_(makeFileImpl().release()),
      shareImpl_(makeShareImpl().release()),
      favorImpl_(makeFavorImpl().release()),
      jobImpl_(makeJobImpl().release()),
      carrierImpl_(makeCarrierImpl().release()),
      transferImpl_(new TransferImpl),
      backupImpl_(makeBackupImpl().release()),
      shareFolderImpl_(makeShareFolderImpl().release()),
      albumImpl_(makeAlbumImpl().release()),
      revisionImpl_(makeRevisionImpl().release()),
      spaceImpl_(makeSpaceImpl().release()),
      folderSyncImpl_(makeFolderSyncImpl().release()),
      phoneBackupImpl_(new PhoneBackupImpl) {}

}  // namespace baseapi::inline v1
