#include "bench/curl_headers.h"

namespace bench {

HeaderList operationHeaders() {
    curl_slist* list = nullptr;
    for (const char* line :
         {"Content-Type: application/json; charset=utf-8", "x-zq-agentname: standard", "Accept: */*",
          "X-Traceid: 000000000000DSDK0123456789ABCDEF000000", "User-Agent: DSDK", "Authorization: token"})
        list = curl_slist_append(list, line);
    return HeaderList(list);
}

}  // namespace bench
