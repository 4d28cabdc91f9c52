#include "cli/scope_options.h"

#include "cli/options.h"
#include "cli/output.h"
#include "cli/problems.h"

namespace quillbox {

void ScopeOptions::addOptions(Options& options) {
    options.integer("--device-id", deviceId_, "N", "The device, by its id in quillbox devices");
    options.text("--module", module_, "CODE", "The module; 100, the backup of folders, without it");
}

std::int64_t ScopeOptions::requiredDevice() const {
    if (!deviceId_) throw UsageError{"the device is missing; give its id with --device-id"};
    return *deviceId_;
}

void tellScope(Output& output, const baseapi::ScopeDetail& scope) {
    JsonLine event("scope");
    event.add("scopeId", scope.scopeId).add("moduleCode", scope.moduleCode);
    event.add("localPath", scope.localPath).add("targetFolderPath", scope.targetFolderPath);
    output.event(event, {scope.scopeId + "  " + scope.localPath.value_or("") + "  ->  " +
                         scope.targetFolderPath.value_or("")});
}

}  // namespace quillbox
