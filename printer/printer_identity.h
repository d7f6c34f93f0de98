#pragma once

#include <string>

// Which alerts the printer's settings let through.
struct AlertClasses {
    bool errors = true;
    bool information = true;
    bool warnings = true;
};

// False only when the printer opens and its data value "Status" reads 0.
bool printerWantsStatus(const std::wstring& printerName);

// Reads the printer's "AlertMask". A printer that does not open leaves `classes` as they are.
void readAlertClasses(const std::wstring& printerName, AlertClasses& classes);

// Whether the driver of the printer `name` belongs to the K7400 family. Remembers the name for the
// next start; an empty name is replaced by the remembered one.
bool isSupportedPrinter(std::wstring& name);

// Starts the maker's companion application Orrery. False when it is not installed or does not
// start.
bool startCompanion();
