#include "quillboxd/unicode.h"

#include <locale.h>

#include <algorithm>
#include <climits>
#include <cwchar>
#include <cwctype>

namespace quillboxd {
namespace {

/// The thread reads and writes UTF-8 as long as this lives, whatever the process's locale.
class UnicodeLocale {
  public:
    UnicodeLocale() : before_(::uselocale(unicode())) {}
    ~UnicodeLocale() { ::uselocale(before_); }
    UnicodeLocale(const UnicodeLocale&) = delete;
    UnicodeLocale& operator=(const UnicodeLocale&) = delete;

  private:
    static locale_t unicode() {
        static const locale_t locale = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return locale;
    }

    locale_t before_;
};

/// The C library reads halves of pairs and numbers beyond the last letter too.
bool isLetter(wchar_t letter) {
    return letter < 0xD800 || (letter > 0xDFFF && letter <= 0x10FFFF);
}

/// The letter at the text's start and its length; a length of 0 where there is none.
std::size_t readLetter(std::string_view text, wchar_t& letter) {
    if (text.front() == '\0') {
        letter = 0;
        return 1;
    }
    std::mbstate_t state{};
    const auto length = std::mbrtowc(&letter, text.data(), text.size(), &state);
    return length <= text.size() && isLetter(letter) ? length : 0;
}

}  // namespace

std::string foldCase(std::string_view text) {
    const UnicodeLocale locale;
    std::string folded;
    folded.reserve(text.size());
    while (!text.empty()) {
        wchar_t letter = 0;
        char bytes[MB_LEN_MAX];
        std::mbstate_t state{};
        const auto length = readLetter(text, letter);
        const auto written =
            length > 0 ? std::wcrtomb(bytes, static_cast<wchar_t>(std::towlower(letter)), &state) : 0;
        if (written > 0 && written <= sizeof bytes) {
            folded.append(bytes, written);
        } else {
            folded += text.front();
        }
        text.remove_prefix(std::max<std::size_t>(1, length));
    }
    return folded;
}

bool isUtf8(std::string_view text) {
    const bool isAscii = std::all_of(text.begin(), text.end(), [](unsigned char c) { return c < 0x80; });
    if (isAscii) return true;
    const UnicodeLocale locale;
    while (!text.empty()) {
        wchar_t letter = 0;
        const auto length = readLetter(text, letter);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

std::string readable(std::string text) {
    if (isUtf8(text)) return text;
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c >= 0x80; }, '?');
    return text;
}

}  // namespace quillboxd
