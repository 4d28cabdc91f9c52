#pragma once

#include <filesystem>

#include "tests/support/address_book_double.h"
#include "tests/support/photo_library_double.h"
#include "tests/support/recording_log.h"
#include "tests/support/test_wait_clock.h"

namespace test_support {

/// The log that the library writes to in this test program. It, an address book, a state folder and a
/// temporary folder of the program's own are in place before `main`.
RecordingLog& recordingLog();

/// Whether the caller is a job of the main queue, which is the library's own in all else.
bool isOnMainQueue();

/// The photo library of this test program; empty and without a plan at first.
PhotoLibraryDouble& photoLibrary();

/// The clock of the library's waits in this test program.
TestWaitClock& testWaitClock();

/// The address book of this test program; empty and without a plan at first.
AddressBookDouble& addressBook();

/// Waits until no transfer is under way; false where that takes too long. The last log line of a call comes
/// after its callback: it must not fall into the next test.
[[nodiscard]] bool transfersEnd();

/// Where the library puts its temporary files.
const std::filesystem::path& temporaryFolder();

}  // namespace test_support
