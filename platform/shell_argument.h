#pragma once

#include <string>
#include <string_view>

namespace platform {

// The address as the shell gets it. The shell puts it between quotation marks on the command line
// of the browser, so a quotation mark in it would end that argument and begin options of somebody
// else's choice: quotation marks, blanks and control characters become %XX, with the number of the
// character in two hexadecimal digits. Everything else stays, an existing "%41" included. Throws
// std::bad_alloc only. Any thread may call.
[[nodiscard]] std::wstring shellArgument(std::wstring_view address);

}  // namespace platform
