#pragma once

#include <curl/curl.h>

#include <memory>

namespace bench {

struct FreeHeaders {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using HeaderList = std::unique_ptr<curl_slist, FreeHeaders>;

/// The headers that the library sends with an operation.
HeaderList operationHeaders();

}  // namespace bench
