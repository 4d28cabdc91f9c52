#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "baseapi/api/backup/records.h"
#include "cli/module_code.h"

namespace quillbox {

class Options;
class Output;

/// Which device and module a command about backup scopes is for.
class ScopeOptions {
  public:
    void addOptions(Options& options);

    /// A request record for them. Throws `UsageError` where the device is missing.
    template <class Bean>
    Bean bean() const {
        Bean bean;
        bean.deviceId = requiredDevice();
        bean.moduleCode = module_;
        return bean;
    }

  private:
    std::int64_t requiredDevice() const;

    std::optional<std::int64_t> deviceId_;
    /// That of backups of folders.
    std::optional<std::string> module_ = module_code::dirs;
};

void tellScope(Output& output, const baseapi::ScopeDetail& scope);

}  // namespace quillbox
