#pragma once

#include <span>
#include <string>

#include "baseapi/contacts/contact_bean.h"

namespace baseapi::inline v1 {

/// The vCard 3.0 text of the contacts, one card after the other. Lines end in CR LF and are not folded.
std::string vCardText(std::span<const ContactBean> contacts);

}  // namespace baseapi::inline v1
