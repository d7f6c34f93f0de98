#pragma once

#include <windows.h>

#include <string>

namespace printpath {

// How often a long wait and a part with many rounds say how far they are.
inline constexpr ULONGLONG kProgressMs = 5000;

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

    // Asks for input on a line that stays open. The next printed line takes its place, and then
    // nothing asks any more.
    void prompt();
    bool isPrompting() const { return _prompting; }

    // While the timeline is quiet, steps and notes are not printed. So the steps of a repeated part
    // appear only once.
    void setQuiet(bool quiet) { _quiet = quiet; }
    bool isQuiet() const { return _quiet; }

private:
    void print(const char* mark, const std::string& text);

    ULONGLONG _begin;
    bool _quiet = false;
    bool _prompting = false;
};

// Says now and then how long somebody has waited, so that a long wait does not look like a hang.
class WaitProgress {
public:
    // The objects must outlive this one.
    WaitProgress(Timeline& timeline, const std::string& what, int limitMs)
        : _timeline(timeline), _what(what), _limitMs(limitMs) {}

    // Call it often while waiting.
    void show();

private:
    Timeline& _timeline;
    const std::string& _what;
    int _limitMs;
    ULONGLONG _begin = ::GetTickCount64();
    ULONGLONG _shownAt = _begin;
};

}  // namespace printpath
