#pragma once

#include <optional>
#include <string>

// What the spooler and the registry say of the printer. Main thread; a question waits for the
// spooler's process. Nothing here throws.

// Which alerts the printer's settings let through.
struct AlertClasses {
    bool errors;
    bool information;
    bool warnings;
};

// False only when the printer opens and its data value "Status" reads 0.
bool printerWantsStatus(const std::wstring& printerName);

// Reads the printer's "AlertMask". Nothing for a printer that does not open.
[[nodiscard]] std::optional<AlertClasses> readAlertClasses(const std::wstring& printerName);

// Whether the driver of the printer `name` belongs to the K7400 family. Remembers the name for the
// next start; an empty name is replaced by the remembered one.
bool isSupportedPrinter(std::wstring& name);
