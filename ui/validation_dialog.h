#pragma once

#include <string>

// Opens the cartridge check, a window of its own without an owner, which asks before anything is
// sent; brings it to the front where it is open already. `hinstance` holds templates, `hSinstance`
// texts (not owned, both outlive the window). Submitting ends the process. Main thread.
void showValidationDialog(void* hinstance, void* hSinstance, const std::wstring& printerName);
