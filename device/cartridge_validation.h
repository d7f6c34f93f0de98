#pragma once

#include <string>

// What the maker's site needs to tell a genuine cartridge, in the order of the address. Narrow text
// as the device gave it; a value that the device does not tell stays empty.
struct CartridgeIdentity {
    std::string version;             // ver
    std::string region;              // cd
    std::string cartridgeModel;      // cmi
    std::string cartridgeLife;       // cl
    std::string cartridgeSerial;     // csn
    std::string cartridgeDate;       // cmd
    std::string cartridgeSignature;  // csig
    std::string printerModel;        // pm, without white space
    std::string printerSerial;       // psn
    std::string printerSignature;    // psig
};

// All of these may throw std::bad_alloc but the last one. Any thread may call.

// Asks the device; without an answer only version and region are filled.
CartridgeIdentity readCartridgeIdentity(const std::wstring& portName);

// The address that checks the cartridge: cut at 1,023 bytes, values inserted as they are.
std::string validationAddress(const CartridgeIdentity& identity);

// Opens the check in the user's browser and ends the whole process with exit code 0, whatever came
// of it. Never returns (the simulated platform throws platform::ProcessEnded).
[[noreturn]] void validateCartridge(const std::wstring& portName);
