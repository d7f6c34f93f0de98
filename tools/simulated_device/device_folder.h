#pragma once

#include <windows.h>

#include <string>

// What the simulated device says: a folder of pages, one file a page, with the log and the switches
// of the device beside them. The environment variable QVSM_DEVICE_FOLDER names the folder; without
// it the folder "pages" beside this library serves. In it:
//   DevMgmt\Name.xml   the page "/DevMgmt/Name.xml"
//   offline            while this file exists, the device cannot be opened
//   slow               a number: milliseconds that every answer takes
//   claimed-length     a number: the length that the device states for every page, whatever it has
//   device.log         a line for each open, close, page and button
class DeviceFolder {
public:
    // Looks for the folder anew, so that a test may move it between two calls.
    DeviceFolder();

    bool offline() const;
    // Sleeps as long as the file "slow" says.
    void answerSlowly() const;
    // The length that the device states for a page of so many bytes.
    DWORD claimedLength(std::size_t pageBytes) const;
    // False when there is no such page or the path leaves the folder.
    bool readPage(const std::string& path, std::string& page) const;
    // Appends a line. A log that cannot be written is lost: the device goes on.
    void log(const std::string& line) const;

private:
    std::wstring _folder;  // with its last backslash
};
