#pragma once

#include <cstdint>
#include <string>

// One fuzz target as a function. Its source is compiled once more with another function name.
struct ReplayTarget {
    const char* name;  // the name of its corpus and of its expected results
    int (*run)(const std::uint8_t* data, std::size_t size);
};

// One input and the results that the target has noted for it.
struct ReplayedInput {
    // Runs the target in an empty world.
    ReplayedInput(const ReplayTarget& target, const std::string& file);

    // A line for the list of expected results: the file's name, a hash of all notes, and the
    // beginning of the notes for people who read the list.
    [[nodiscard]] std::string line() const;

    std::string name;   // the file's name without its folder
    std::string notes;  // "name=value" lines; bytes that are not plain ASCII stand as \xNN
};
