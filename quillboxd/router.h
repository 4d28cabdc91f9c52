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
    control,   ///< bare, and neither in the journal nor touched by faults
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

/// Whether the path belongs to the control endpoints.
bool isControl(std::string_view path);

}  // namespace quillboxd
