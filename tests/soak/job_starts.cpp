#include "tests/soak/job_starts.h"

#include "tests/soak/gauge_log.h"
#include "tests/soak/monitor_session.h"
#include "tests/soak/report.h"
#include "tests/soak/soak_records.h"
#include "tools/printpath/windows/cartridge_memory.h"
#include "tools/printpath/windows/failure.h"

#include <algorithm>

namespace soak {

namespace {

constexpr std::uint64_t kKinds = 4;
constexpr std::uint64_t kReadings = 60;
constexpr ULONGLONG kMsPerSecond = 1000;
constexpr std::uint32_t kFirstSerial = 50000000;
constexpr std::uint32_t kTonerLow = 10209;
constexpr std::size_t kHalfARecord = 13;
constexpr std::uint64_t kQuietRecords = 5;
constexpr int kMostProblems = 10;  // that are printed

class Job {
public:
    Job(const Workplace& workplace, std::uint64_t number)
        : _session(workplace, number / kKinds % 2 == 1), _number(number) {
        _session.write(printerRecord());
        _session.write(documentStart(static_cast<std::uint32_t>(number)));
        for (std::uint64_t record = 0; record < kQuietRecords; ++record)
            _session.write(quietRecord(record));
    }

    // The gauges are read, if there is a log, while an alert is open.
    void play(GaugeLog* log) {
        switch (_number % kKinds) {
            case 0:
                return end();
            case 1:
                showAlert();
                return end();
            case 2:
                return letTheUserAnswer(log);
            default:
                showAlert();
                static_cast<void>(_session.awaitAlerts(1));
                _session.write(documentStart(0).substr(0, kHalfARecord));
                return _session.hangUp();
        }
    }

    DWORD awaitEnd() const { return _session.awaitEnd(); }

private:
    void end() { _session.write(documentEnd(static_cast<std::uint32_t>(_number))); }

    void showAlert() { _session.write(statusRecord(alertOfDocument(_number / kKinds).status)); }

    void letTheUserAnswer(GaugeLog* log) {
        _session.write(cartridgeRecord(kFirstSerial + static_cast<std::uint32_t>(_number)));
        _session.write(statusRecord(kTonerLow));
        const HWND dialog = _session.awaitAlerts(1).front();
        if (log != nullptr) log->add(_number, _session.settledGauges());
        end();
        _session.answer(dialog, 1);
    }

    MonitorSession _session;
    std::uint64_t _number;
};

// What is wrong; empty when nothing is.
std::string problemOf(const Workplace& workplace, std::uint64_t number, GaugeLog* log) try {
    Job job(workplace, number);
    job.play(log);
    const DWORD code = job.awaitEnd();
    if (code != 0) return "exit code " + printpath::describeExitCode(code);
    return printpath::memoryIsWhole() ? "" : "the memory of cartridges is not whole";
} catch (const std::exception& error) {
    return error.what();
}

}  // namespace

void playJobs(const Workplace& workplace, std::uint64_t jobs, Report& report) {
    GaugeLog log("jobs");
    const std::uint64_t answered = jobs / kKinds;
    const std::uint64_t step = std::max<std::uint64_t>(1, answered / kReadings);
    const ULONGLONG began = ::GetTickCount64();
    int problems = 0;
    for (std::uint64_t number = 0; number < jobs; ++number) {
        const bool isRead = number / kKinds % step == 0;
        const std::string problem = problemOf(workplace, number, isRead ? &log : nullptr);
        report.progress("jobs", number, jobs);
        if (problem.empty()) continue;
        if (++problems <= kMostProblems)
            report.line("job " + std::to_string(number) + ": " + problem);
    }
    report.expect(problems == 0, std::to_string(jobs) + " jobs with a monitor each, in " +
                                     std::to_string((::GetTickCount64() - began) / kMsPerSecond) +
                                     " s, " + std::to_string(problems) + " not as they should be");
    report.judge("The gauges of a job's monitor while an alert is open, along the jobs", log);
}

}  // namespace soak
