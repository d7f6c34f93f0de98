#pragma once

#include <windows.h>

#include <string>

// The folder of the simulated device. Each page is a file; the log and the switches of the device
// are files too. The environment variable QVSM_DEVICE_FOLDER names the folder. If it is not set,
// the folder "pages" beside this library is taken. The folder contains:
//   DevMgmt\Name.xml   the page "/DevMgmt/Name.xml"
//   offline            while this file exists, the device cannot be opened
//   slow               a number: milliseconds that every answer takes
//   claimed-length     a number: the length that the device reports for every page
//   device.log         a line for each open, close, page and button
class DeviceFolder {
public:
    // Reads the variable at each call, so that a test may name another folder between two calls.
    DeviceFolder();

    bool offline() const;
    // Sleeps for the number of milliseconds in the file "slow".
    void answerSlowly() const;
    // The length that the device reports for a page of so many bytes.
    DWORD claimedLength(std::size_t pageBytes) const;
    // False when there is no such page or the path leaves the folder.
    bool readPage(const std::string& path, std::string& page) const;
    // Appends a line to the log. If the log cannot be written, the device goes on without it.
    void log(const std::string& line) const;

private:
    std::wstring _folder;  // with its last backslash
};
