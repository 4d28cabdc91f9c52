#pragma once

#include <filesystem>

namespace bench {

// Contacts as a phone's address book has them: short Chinese names, two numbers, an address, for each third a
// company. Each operation but the first prints what it measured.

/// Writes the vCards of so many contacts.
void writeContacts(int count, const std::filesystem::path& file);

/// The vCard text of so many contacts, by the library or appended by hand.
void measureVCardText(int count);
void measureVCardTextByHand(int count);

/// The import of a file of so many contacts into an address book that has as many, of which the file replaces
/// each second one.
void measureImport(int count, const std::filesystem::path& file);

/// The parsing of the same file by hand, alone: its text is in memory and its contacts go nowhere.
void measureParsingByHand(int count, const std::filesystem::path& file);

}  // namespace bench
