#pragma once

#include <string>

// The maker's pages, opened in the user's browser. Only http and https addresses ever reach the
// shell: a configured site with another scheme is traced and replaced by the default. Any thread.

// Site addresses without a trailing slash: the machine's configuration, else the default. Both
// may throw std::bad_alloc.
std::wstring makerSite();
std::wstring validationSite();

// A page that cannot be opened, also because memory has run out, is not reported to the caller.
void openAnticounterfeitPage();
void openRecyclePage();
void openPrivacyPage();
