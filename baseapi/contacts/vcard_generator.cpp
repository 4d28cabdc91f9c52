#include "baseapi/contacts/vcard_generator.h"

#include <exception>
#include <filesystem>
#include <optional>
#include <utility>

#include "baseapi/contacts/side_file.h"
#include "baseapi/contacts/vcard_text.h"
#include "baseapi/core/background.h"
#include "baseapi/core/callback.h"
#include "baseapi/core/log.h"
#include "baseapi/core/main_queue.h"
#include "baseapi/platform/platform.h"

namespace baseapi::inline v1 {
namespace {

/// The reason why the file is not there, or nothing.
std::optional<std::string> writeFile(const std::filesystem::path& path,
                                     const std::vector<ContactBean>& contacts) try {
    const auto text = vCardText(contacts);
    SideFile file(path);
    file.write(text);
    file.takePlace();
    return std::nullopt;
} catch (const std::exception& error) {
    return error.what();
}

void report(const std::filesystem::path& path, const std::string& fileName,
            const std::optional<std::string>& error, const VcfFileCompletion& completion) {
    if (error) {
        logLine("VCardGenerator: Error generating VCF file - ", *error);
        invokeCallback(completion, VcfFileResult{VcfFileResult::failure{*error}});
    } else {
        logLine("VCardGenerator: VCF file generated successfully at ", fileName);
        invokeCallback(completion, VcfFileResult{VcfFileResult::success{URL::file(path)}});
    }
}

}  // namespace

void VCardGenerator::generateVcfFile(std::vector<ContactBean> contacts, std::string fileName,
                                     VcfFileCompletion completion) {
    inBackground(
        [contacts = std::move(contacts), fileName = std::move(fileName), completion = std::move(completion)] {
            const auto path = platform().temporaryFolder / std::filesystem::path(fileName).relative_path();
            const auto error = writeFile(path, contacts);
            onMainQueue([path, fileName, error, completion] { report(path, fileName, error, completion); });
        });
}

}  // namespace baseapi::inline v1
