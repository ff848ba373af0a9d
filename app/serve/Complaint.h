// What the server says when it does not do what was asked: always JSON, always what was found and what is allowed.
#pragma once

#include <string_view>

#include "Http.h"
#include "Pool.h"

namespace frigana::serve {

inline constexpr std::string_view jsonType = "application/json";

// An answer {"error": {"code": ..., "text": ..., "where": [...]}}.
//   Given  status  of HTTP
//          code    one word for programs
//          text    for people
//          where   lines of the place, if any
http::Answer complaint(int status, std::string_view code, std::string_view text, std::string_view where = {});

// What became of a calculation that has no answer of its own.
http::Answer complaintOf(const workers::Answer& answer);

}  // namespace frigana::serve
