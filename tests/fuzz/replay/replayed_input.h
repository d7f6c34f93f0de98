#pragma once

#include <cstdint>
#include <string>

// One fuzz target, as a function: its source compiled once more under another name.
struct ReplayTarget {
    const char* name;  // of its corpus and its expected results
    int (*run)(const std::uint8_t* data, std::size_t size);
};

// One input, and what the target made of it.
struct ReplayedInput {
    // Runs the target in an empty world.
    ReplayedInput(const ReplayTarget& target, const std::string& file);

    // A line for the list of expected results: the file's name, a number made of all notes, and
    // how they begin, for the reader.
    [[nodiscard]] std::string line() const;

    std::string name;   // of the file, without its folder
    std::string notes;  // "name=value" lines; bytes that are not plain ASCII stand as \xNN
};
