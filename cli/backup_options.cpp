#include "cli/backup_options.h"

#include "cli/options.h"

namespace quillbox {

void BackupOptions::addOptions(Options& options) {
    options.requiredInteger("--device-id", deviceId, "N", "The device, by its id in quillbox devices");
    options.seconds("--cancel-after", cancelAfter, "SECONDS", "Cancel the backup so long after its start");
}

void BackupOptions::addFileOptions(Options& options) {
    addOptions(options);
    options.flag("--fail-on-partial", failOnPartial,
                 "Exit with 4 where files failed, though the backup ended");
}

}  // namespace quillbox
