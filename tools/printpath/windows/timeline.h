#pragma once

#include <windows.h>

#include <string>

namespace printpath {

// The story of a run on standard output, one line each, with the seconds since its beginning.
class Timeline {
public:
    Timeline();

    void step(const std::string& text);  // something that the scenario does
    void note(const std::string& text);  // something that was seen
    void problem(const std::string& text);
    // A line without time.
    void plain(const std::string& text);

private:
    void print(const char* mark, const std::string& text);

    ULONGLONG _begin;
};

}  // namespace printpath
