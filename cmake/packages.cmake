# The Debian packages that cpack makes of the preset `packages`: each is a component of the installation.
set(soname_version ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The baseapi maintainers <maintainers@example.org>")
set(CPACK_COMPONENTS_ALL baseapi_runtime hostkit_photos_runtime baseapi_development quillbox quillboxd)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE baseapi)
set(CPACK_DEBIAN_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/baseapi)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_BASEAPI_RUNTIME_PACKAGE_NAME libbaseapi${soname_version})
set(CPACK_DEBIAN_BASEAPI_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_BASEAPI_RUNTIME_DESCRIPTION [[client library of a personal cloud drive
Uploads in parallel parts, downloads with resume, backs up the folders, album
and contacts of a phone, and calls every operation of the service.

This package contains the shared libraries libbaseapi and libhostkit, which has
ready parts for applications on Linux.]])

set(CPACK_DEBIAN_HOSTKIT_PHOTOS_RUNTIME_PACKAGE_NAME libhostkit-photos${soname_version})
set(CPACK_DEBIAN_HOSTKIT_PHOTOS_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_HOSTKIT_PHOTOS_RUNTIME_DEPENDS baseapi_runtime)
set(CPACK_DEBIAN_HOSTKIT_PHOTOS_RUNTIME_DESCRIPTION [[photo library of a folder for the baseapi library
Gives a folder of pictures and videos to the backup of the client library of a
personal cloud drive, with the dates on which they were taken.

It uses Exiv2: an application that links it is under the GPL.]])

# It depends on what its package for CMake and its pkg-config files ask for.
string(JOIN ", " needed_to_link
  libboost-url1.81-dev libboost1.81-dev libcurl4-openssl-dev libexiv2-dev libicu-dev libsimdjson-dev libsqlite3-dev libssl-dev)
set(CPACK_DEBIAN_BASEAPI_DEVELOPMENT_PACKAGE_NAME libbaseapi-dev)
set(CPACK_DEBIAN_BASEAPI_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_BASEAPI_DEVELOPMENT_DEPENDS hostkit_photos_runtime baseapi_runtime)
set(CPACK_DEBIAN_BASEAPI_DEVELOPMENT_PACKAGE_DEPENDS ${needed_to_link})
set(CPACK_DEBIAN_BASEAPI_DEVELOPMENT_PACKAGE_SUGGESTS quillboxd)
set(CPACK_DEBIAN_BASEAPI_DEVELOPMENT_DESCRIPTION [[client library of a personal cloud drive - development files
Uploads in parallel parts, downloads with resume, backs up the folders, album
and contacts of a phone, and calls every operation of the service.

This package contains the headers, doubles for the tests of applications, the
static libraries, and what CMake and pkg-config find them by.]])

set(CPACK_DEBIAN_QUILLBOX_PACKAGE_NAME quillbox)
set(CPACK_DEBIAN_QUILLBOX_PACKAGE_SECTION net)
set(CPACK_DEBIAN_QUILLBOX_DESCRIPTION [[personal cloud drive in the terminal
Uploads, downloads and compares files, lists, shares and changes what the drive
holds, backs up folders, albums and address books, and restores contacts.]])

set(CPACK_DEBIAN_QUILLBOXD_PACKAGE_NAME quillboxd)
set(CPACK_DEBIAN_QUILLBOXD_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_QUILLBOXD_DESCRIPTION [[cloud drive service for development and tests on one machine
Answers the calls of quillbox and of the baseapi library, keeps what it is
given, and fails on request. It listens on the loopback address alone and signs
everyone in: it is not for the service of real users.]])

set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/packages_documents.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/packages_control.cmake)
include(CPack)
