#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "baseapi/contacts/contact_bean.h"
#include "baseapi/core/cases.h"
#include "baseapi/core/url.h"
#include "baseapi/platform/export.h"

namespace baseapi::inline v1 {

/// How the writing of a vCard file ended.
struct VcfFileResult {
    /// The file is written.
    struct success {
        /// Where the file lies now.
        URL file;
    };
    /// There is no file.
    struct failure {
        /// The system's own words, such as "No space left on device".
        std::string message;
    };

    std::variant<success, failure> value;

    /// Calls the function that takes the case at hand; one for each case must be given.
    template <class... Functions>
    decltype(auto) visit(Functions&&... functions) const {
        return std::visit(Cases{std::forward<Functions>(functions)...}, value);
    }
};

/// Receives the end of the writing, on the main queue, exactly once. What it throws is logged and goes no
/// further.
using VcfFileCompletion = std::function<void(VcfFileResult)>;

/// Writes contacts into a vCard file.
class BASEAPI_API VCardGenerator {
  public:
    VCardGenerator() = delete;

    /// Writes the contacts as vCards 3.0 in UTF-8 to the file of that name in the temporary folder, in place
    /// of an older one and whole or not at all. No contacts give an empty file. The file stays: nothing of
    /// the library deletes it. Returns at once; the work runs in the background.
    static void generateVcfFile(std::vector<ContactBean> contacts, std::string fileName,
                                VcfFileCompletion completion);
};

}  // namespace baseapi::inline v1
