#pragma once

#include <windows.h>

#include <string>

namespace printpath {

// Prints what happens in a run to standard output. Each line has the seconds since the beginning.
class Timeline {
public:
    Timeline();

    void step(const std::string& text);  // something that the scenario does
    void note(const std::string& text);  // something that was seen
    void problem(const std::string& text);
    void progress(const std::string& text);  // printed also while the timeline is quiet
    // Prints a line without the time.
    void plain(const std::string& text);

    // While the timeline is quiet, steps and notes are not printed. So the steps of a repeated part
    // appear only once.
    void setQuiet(bool quiet) { _quiet = quiet; }
    bool isQuiet() const { return _quiet; }

private:
    void print(const char* mark, const std::string& text);

    ULONGLONG _begin;
    bool _quiet = false;
};

}  // namespace printpath
