#include "tests/soak/report.h"

#include "tests/soak/gauge_log.h"

#include <cstdio>

namespace soak {

namespace {

constexpr ULONGLONG kProgressMs = 1000;

}  // namespace

void Report::expect(bool holds, const std::string& what) {
    ++(holds ? _passed : _failed);
    line((holds ? "ok " : "not ok ") + what);
}

void Report::judge(const std::string& whose, const GaugeLog& log) {
    line("\n" + whose + "\n" + log.table());
    for (const GaugeLog::Verdict& verdict : log.verdicts())
        expect(verdict.problem.empty(),
               verdict.gauge + " flat" +
                   (verdict.problem.empty() ? std::string() : ": " + verdict.problem));
}

void Report::line(const std::string& text) {
    clearProgress();
    std::printf("%s\n", text.c_str());
    std::fflush(stdout);
}

void Report::progress(const std::string& what, std::uint64_t done, std::uint64_t all) {
    const ULONGLONG now = ::GetTickCount64();
    if (!_watched || now - _progressAt < kProgressMs) return;
    _progressAt = now;
    clearProgress();
    const std::string text = what + " " + std::to_string(done) + " of " + std::to_string(all);
    _progressUnits = text.size();
    std::fprintf(stderr, "%s", text.c_str());
    std::fflush(stderr);
}

void Report::clearProgress() {
    if (_progressUnits == 0) return;
    std::fprintf(stderr, "\r%*s\r", static_cast<int>(_progressUnits), "");
    std::fflush(stderr);
    _progressUnits = 0;
}

std::string Report::summary() const {
    return std::to_string(_passed) + " passed, " + std::to_string(_failed) + " failed";
}

}  // namespace soak
