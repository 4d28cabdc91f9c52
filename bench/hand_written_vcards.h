#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "baseapi/contacts/contact_bean.h"

namespace bench {

/// The text of the contacts, appended piece by piece. Their values need no escaping, and none is looked for.
std::string appendByHand(const std::vector<baseapi::ContactBean>& contacts);

/// A contact of views into the text.
struct ViewedContact {
    std::string_view familyName;
    std::string_view givenName;
    std::string_view middleName;
    std::string_view organizationName;
    std::string_view jobTitle;
    std::string_view note;
    std::vector<std::pair<std::string_view, std::string_view>> phones;
    std::vector<std::pair<std::string_view, std::string_view>> emails;
};

/// The contacts of a text as the library writes it: one pass, no copies, no letter outside ASCII looked at.
std::vector<ViewedContact> parseByHand(std::string_view text);

}  // namespace bench
