#include <memory>
#include <optional>
#include <string>

#include "baseapi/api/backup/i_back_up.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

class Devices : public Command {
  public:
    std::string name() const override { return "devices"; }
    std::string description() const override { return "List the devices that back up to the account"; }
    void addOptions(Options&) override {}

    ExitStatus run(Host& host) override {
        const auto answer = host.ask("the devices", baseapi::CloudInstance::shared().getBackupImpl(),
                                     &baseapi::IBackUp::getDevices);
        for (const auto& device : answer.data.value_or(std::vector<baseapi::DeviceBean>{}))
            tell(host.output(), device);
        return ExitStatus::success;
    }

  private:
    static void tell(Output& output, const baseapi::DeviceBean& device) {
        JsonLine event("device");
        event.add("deviceId", device.deviceId.value).add("machineCode", device.machineCode);
        event.add("deviceName", device.deviceName).add("deviceOS", device.deviceOS);
        event.add("createTime", device.createTime);
        output.event(event, {std::to_string(device.deviceId.value) + "  " +
                             device.deviceName.value_or(device.machineCode.value_or("")) + "  " +
                             device.deviceOS.value_or("") + "  since " + device.createTime});
    }
};

}  // namespace

std::unique_ptr<Command> makeDevices() {
    return std::make_unique<Devices>();
}

}  // namespace quillbox
