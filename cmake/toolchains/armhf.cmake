set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(debian_architecture armhf)
set(triplet arm-linux-gnueabihf)
set(emulator qemu-arm-static)
# g++ notes at each call that versions before 7 passed arguments in another way.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)
include(${CMAKE_CURRENT_LIST_DIR}/debian.cmake)
