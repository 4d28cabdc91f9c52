#include "tests/support/without_root_rights.h"

#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <thread>

namespace test_support {

void dropRootRights() {
    // What is no longer in the bounding set is not given back to root by an exec.
    ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
    ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[2] = {};
    if (::syscall(SYS_capget, &header, data) != 0) return;
    data[0].effective &= ~(1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH);
    ::syscall(SYS_capset, &header, data);
}

void withoutRootRights(const std::function<void()>& run) {
    std::thread([&] {
        dropRootRights();
        run();
    }).join();
}

}  // namespace test_support
