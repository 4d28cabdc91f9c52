#pragma once

#include "quillboxd/call.h"

namespace quillboxd::pages {

/// Whether its bytes begin like those of a picture that browsers show, and are not too many for a list.
bool isPicture(Service& service, const Node& file);

std::string pictureAddress(const Node& file);

}  // namespace quillboxd::pages
