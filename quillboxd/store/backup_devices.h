#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillboxd {

class Database;

struct Device {
    std::int64_t id = 0;
    std::string machineCode;
    std::optional<std::string> name;
    std::optional<std::string> os;
    std::string createdTime;
};

/// What a device backs up, and where to.
struct Scope {
    std::int64_t id = 0;
    std::string module;
    std::string localPath;
    std::string targetPath;
    std::string createdTime;
};

/// One value of a module's configuration on a device.
struct ConfigValue {
    std::string module;
    std::string name;
    std::string value;
};

/// The devices of an account. Scopes and values go by a device's number alone, bound or not.
class BackupDevices {
  public:
    BackupDevices(Database& database, std::int64_t account) : database_(database), account_(account) {}

    /// The device of the machine code, known by the names given from now on.
    Device bind(std::string_view machineCode, const std::optional<std::string>& name,
                const std::optional<std::string>& os);
    /// With its scopes and values; its records stay. False where there is no such device.
    bool unbind(std::int64_t id);
    std::vector<Device> devices();
    std::optional<Device> find(std::int64_t id);

    /// Nothing where the module has the local path already.
    std::optional<Scope> addScope(std::int64_t device, const Scope& scope);
    bool removeScope(std::int64_t device, std::int64_t id);
    /// An empty module stands for all.
    std::vector<Scope> scopes(std::int64_t device, std::string_view module);

    void setValue(std::int64_t device, const ConfigValue& value);
    /// Without a name all values of the module.
    std::vector<ConfigValue> values(std::int64_t device, std::string_view module,
                                    const std::optional<std::string>& name);

  private:
    Database& database_;
    std::int64_t account_;
};

}  // namespace quillboxd
