#pragma once

namespace printpath {

// Whether the program runs under Wine, in a prefix that was made for the run and may be changed.
bool underWine();

}  // namespace printpath
