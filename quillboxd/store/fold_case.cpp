#include "quillboxd/store/fold_case.h"

#include <locale.h>

#include <climits>
#include <cwchar>
#include <cwctype>

namespace quillboxd {
namespace {

locale_t unicode() {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

}  // namespace

std::string foldCase(std::string_view text) {
    const locale_t before = uselocale(unicode());
    std::string folded;
    folded.reserve(text.size());
    std::mbstate_t reading{};
    std::mbstate_t writing{};
    while (!text.empty()) {
        wchar_t letter = 0;
        const auto length = std::mbrtowc(&letter, text.data(), text.size(), &reading);
        char bytes[MB_LEN_MAX];
        const bool valid = length != 0 && length <= text.size();
        const auto written = valid ? std::wcrtomb(bytes, std::towlower(letter), &writing) : 0;
        if (valid && written <= sizeof bytes) {
            folded.append(bytes, written);
            text.remove_prefix(length);
        } else {
            folded += text.front();
            text.remove_prefix(1);
            reading = {};
        }
    }
    uselocale(before);
    return folded;
}

}  // namespace quillboxd
