#include "tools/printpath/windows/timeline.h"

#include <cstdio>

namespace printpath {

namespace {

constexpr double kMsPerSecond = 1000.0;

}  // namespace

Timeline::Timeline() : _begin(::GetTickCount64()) {}

void Timeline::step(const std::string& text) {
    if (!_quiet) print("> ", text);
}
void Timeline::note(const std::string& text) {
    if (!_quiet) print("      ", text);
}
void Timeline::progress(const std::string& text) {
    print("      ", text);
}
void Timeline::problem(const std::string& text) {
    print("!! ", text);
}

void Timeline::plain(const std::string& text) {
    std::fputs(((_prompting ? "\r" : "") + text + "\n").c_str(), stdout);
    std::fflush(stdout);
    _prompting = false;
}

void Timeline::prompt() {
    std::fputs("> ", stdout);
    std::fflush(stdout);
    _prompting = true;
}

void Timeline::print(const char* mark, const std::string& text) {
    char time[32];
    std::snprintf(time, sizeof time, "%8.3f  ",
                  static_cast<double>(::GetTickCount64() - _begin) / kMsPerSecond);
    plain(std::string(time) + mark + text);
}

void WaitProgress::show() {
    const ULONGLONG now = ::GetTickCount64();
    if (now - _shownAt < kProgressMs) return;
    _shownAt = now;
    _timeline.progress("waiting for " + _what + ", " + std::to_string((now - _begin) / 1000) +
                       " of at most " + std::to_string(_limitMs / 1000) + " seconds");
}

}  // namespace printpath
