#pragma once

#include <cstddef>
#include <string>

inline constexpr std::size_t kConsumableTextUnits = 512;  // of each buffer, terminator included
inline constexpr wchar_t kNotKnown[] = L"Not Known";  // never shown: replaced by a localized text

// Both wait for the device's answer and report no failure of it to the caller. Main thread.

// Asks the device for the serial number of its cartridge and, when it tells one, makes it the
// current cartridge. Throws std::bad_alloc with nothing changed.
void queryCartridgeSerial(const std::wstring& printerName);

// Product number and estimated pages remaining of the cartridge; "Not Known" where the device does
// not tell. Each buffer holds kConsumableTextUnits units and may be null.
void getConsumableInfo(const std::wstring& printerName, wchar_t* productNumber,
                       wchar_t* pagesRemaining);
