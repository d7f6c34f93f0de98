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
    void progress(const std::string& text);  // also while it is quiet
    // A line without time.
    void plain(const std::string& text);

    // While it is quiet, steps and notes are left out: a part that is repeated shows once.
    void setQuiet(bool quiet) { _quiet = quiet; }
    bool isQuiet() const { return _quiet; }

private:
    void print(const char* mark, const std::string& text);

    ULONGLONG _begin;
    bool _quiet = false;
};

}  // namespace printpath
