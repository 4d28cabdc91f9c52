#pragma once

#include "quillboxd/call.h"

namespace quillboxd {

/// Throws for what a page of another site had a browser send: a request under a name that only other sites
/// have, though it leads to this machine, or one whose `Origin` is not the service itself.
void requireSameSite(const Call& call);

}  // namespace quillboxd
