#pragma once

#include <string>

// The maker's pages, opened in the user's browser. Only http and https addresses ever reach the
// shell: a configured site with another scheme is traced and replaced by the default.

// Site addresses without a trailing slash: the machine's configuration, else the default.
std::wstring makerSite();
std::wstring validationSite();

void openAnticounterfeitPage();
void openRecyclePage();
void openPrivacyPage();
