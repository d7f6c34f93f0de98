#pragma once

#include <string>
#include <string_view>

// Makes the local page that carries the printer's supplies to the maker's ordering site, and opens
// it in the user's browser. An empty `portName` asks no device. Every failure, memory included,
// ends it with a trace only.
void openShopPage(const std::wstring& portName);

// The page as it is opened: `page` without its line breaks, its first order field replaced by the
// quoted `suppliesDocument` without its XML declaration. Throws std::bad_alloc.
std::string filledShopPage(std::string_view page, std::string_view suppliesDocument);
