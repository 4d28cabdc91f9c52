#pragma once

#include <span>
#include <string_view>

#include "quillboxd/call.h"

namespace quillboxd {

/// How a handler is called.
enum class Admission {
    account,   ///< with the account of the request's token, the body and one transaction around it
    detached,  ///< likewise, but it makes its transactions itself
    anyone,    ///< like account, for a call that needs no token
    visitor,   ///< like account where the request has a token, like anyone where it has none
    address,   ///< bare: the address alone says what may be done, and the handler reads the body itself
    control,   ///< bare, and neither in the journal nor touched by faults; not for pages of other sites
    page,      ///< like anyone, and otherwise like control; a refusal is a page too
};

struct Route {
    std::string_view verb;
    std::string_view pattern;  ///< a "*" is a place that takes any one segment
    Reply (*handler)(Call& call);
    Admission admission = Admission::account;
};

/// All routes; the first that fits is taken.
std::span<const Route> routes();

/// Does what the request asks for; every refusal becomes its answer.
Reply dispatch(Call& call);

/// Whether it is none of a client's own requests, but one that controls the service or looks at it.
bool isControl(const Request& request);

}  // namespace quillboxd
