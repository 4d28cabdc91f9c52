#pragma once

#include <string>

#include "baseapi/api/files/records.h"

namespace bench {

/// The answer to a `filesList` call, as the service lays it out: a page of `count` files of about 2,500 bytes
/// each, with attachments down to the address of every picture.
std::string filePage(int count);

/// The request that starts the upload of a file in `count` parts, each with the hash state before it.
baseapi::FilesCreateBean createRequest(int count);

}  // namespace bench
