#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace baseapi::inline v1 {

/// UTF-8 text by Unicode's rules. Bytes that are no letter are neither blank nor digit and have no case.

/// The text in upper case, of no particular language.
std::string upperCased(std::string_view text);

/// Appends the text in lower case, of no particular language.
void appendLowerCased(std::string_view text, std::string& lower);

/// The text without the tabs and Unicode's blanks at both ends.
std::string_view withoutBlanksAround(std::string_view text);

/// The text without blanks, tabs and line ends at both ends.
std::string_view withoutWhitespaceAround(std::string_view text);

/// Appends the decimal digits of the text, of any script and as they stand, and nothing else of it.
void appendDecimalDigits(std::string_view text, std::string& digits);

/// The bytes of the line end at the beginning of the text: one of U+000A to U+000D, U+0085, U+2028, U+2029.
/// 0 where there is none.
std::size_t lineEndLength(std::string_view text);

/// The place of the first line end in the text, its length where there is none.
std::size_t findLineEnd(std::string_view text);

/// Whether the text has no line ends but LF and CR LF. May miss that, and is much cheaper than the above.
bool hasPlainLineEnds(std::string_view text);

}  // namespace baseapi::inline v1
