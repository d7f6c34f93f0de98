#include "tests/soak/long_life.h"

#include "tests/soak/gauge_log.h"
#include "tests/soak/monitor_session.h"
#include "tests/soak/report.h"
#include "tests/soak/soak_records.h"
#include "tools/printpath/windows/failure.h"

#include <algorithm>
#include <set>

namespace soak {

namespace {

constexpr std::uint64_t kRecordsOfADocument = 100;
constexpr std::uint64_t kFewestRounds = 20;
constexpr std::uint64_t kGoodRounds = 100;
constexpr std::uint64_t kMostDocumentsOfARound = 10;
constexpr std::uint64_t kReadings = 60;
constexpr ULONGLONG kMsPerSecond = 1000;
constexpr std::uint32_t kFirstSerial = 1000;
constexpr std::uint64_t kTogether = 8;  // records in one message, in every fourth document
constexpr std::uint64_t kStep = 7;      // through the alerts, so that they meet in all pairs

class LongLife {
public:
    LongLife(const Workplace& workplace, std::uint64_t records)
        : _session(workplace, false), _wanted(records) {
        _documentsOfARound = std::clamp<std::uint64_t>(records / kRecordsOfADocument / kGoodRounds,
                                                       1, kMostDocumentsOfARound);
    }

    void play(Report& report, GaugeLog& log) {
        const ULONGLONG began = ::GetTickCount64();
        send(printerRecord());
        send(statusRecord(kAnchor));
        const HWND anchor = _session.awaitAlerts(1).front();
        showEverything(anchor);
        const std::uint64_t rounds = std::max<std::uint64_t>(
            kFewestRounds, _wanted / (_documentsOfARound * kRecordsOfADocument));
        for (std::uint64_t round = 0; round < rounds || _records < _wanted; ++round) {
            playRound(round, anchor);
            if (round * kReadings / rounds != (round + 1) * kReadings / rounds ||
                rounds <= kReadings)
                log.add(_records, _session.settledGauges(), _alerts);
            report.progress("records", _records, _wanted);
        }
        _session.answer(anchor, 0);
        const DWORD code = _session.awaitEnd();
        report.expect(code == 0,
                      "one monitor has read " + std::to_string(_records) + " records of " +
                          std::to_string(_document) + " documents, shown " +
                          std::to_string(_alerts) + " alerts in " +
                          std::to_string((::GetTickCount64() - began) / kMsPerSecond) +
                          " s and ended with exit code " + printpath::describeExitCode(code));
    }

private:
    // What is made at first use is made before the first reading.
    void showEverything(HWND anchor) {
        beginDocument();
        send(cartridgeRecord(kFirstSerial - 1));
        for (std::uint64_t number = 0; number < kLastingAlerts; ++number)
            send(statusRecord(lastingAlert(number)));
        for (const HWND dialog : _session.awaitAlerts(1 + kLastingAtOnce))
            if (dialog != anchor) _session.answer(dialog, 1);
        static_cast<void>(_session.awaitAlerts(1));

        std::set<int> types;
        for (std::uint64_t number = 0; number < kAlertsOfDocuments; ++number) {
            send(statusRecord(alertOfDocument(number).status));
            types.insert(alertOfDocument(number).type);
        }
        static_cast<void>(_session.awaitAlerts(1 + types.size()));
        _alerts += kLastingAtOnce + types.size();
        endDocument(1);
        static_cast<void>(_session.awaitAlerts(1));
    }

    void playRound(std::uint64_t round, HWND anchor) {
        for (std::uint64_t document = 1; document < _documentsOfARound; ++document) {
            beginDocument();
            send(statusRecord(alertOfDocument(_document).status));
            ++_alerts;
            endDocument(kRecordsOfADocument - 3);
        }
        playWatchedDocument(round, anchor);
    }

    // Alerts are waited for by their number: no earlier document can have so many.
    void playWatchedDocument(std::uint64_t round, HWND anchor) {
        beginDocument();
        send(printerRecord());  // asks the device for its supplies
        send(cartridgeRecord(kFirstSerial + static_cast<std::uint32_t>(round)));
        send(statusRecord(lastingAlert(round)));
        const Alert first = alertForTheUser(round);
        send(statusRecord(first.status));
        for (const HWND dialog : _session.awaitAlerts(3))
            if (dialog != anchor) _session.answer(dialog, 1 + static_cast<int>(round % 8));
        static_cast<void>(_session.awaitAlerts(1));

        send(statusRecord(anotherType(round * kStep, first.type).status));
        static_cast<void>(_session.awaitAlerts(2));
        _alerts += 3;
        endDocument(kRecordsOfADocument - 7);
        static_cast<void>(_session.awaitAlerts(1));
    }

    static Alert anotherType(std::uint64_t number, int type) {
        const Alert alert = alertOfDocument(number);
        return alert.type == type ? alertOfDocument(number + 1) : alert;
    }

    void beginDocument() { send(documentStart(++_document)); }

    void endDocument(std::uint64_t quietRecords) {
        const std::uint64_t together = _document % 4 == 0 ? kTogether : 1;
        std::string message;
        for (std::uint64_t sent = 1; sent <= quietRecords; ++sent) {
            message += quietRecord(_records++);
            if (sent % together != 0 && sent != quietRecords) continue;
            _session.write(message);
            message.clear();
        }
        send(documentEnd(_document));
    }

    void send(const std::string& record) {
        _session.write(record);
        ++_records;
    }

    MonitorSession _session;
    std::uint64_t _wanted;
    std::uint64_t _documentsOfARound = 1;
    std::uint64_t _records = 0;
    std::uint64_t _alerts = 1;
    std::uint32_t _document = 0;
};

}  // namespace

void playLongLife(const Workplace& workplace, std::uint64_t records, Report& report) {
    GaugeLog log("records");
    try {
        LongLife(workplace, records).play(report, log);
    } catch (const std::exception& error) {
        report.expect(false, std::string("one monitor for all records: ") + error.what());
    }
    report.judge("The gauges of that monitor, between documents", log);
}

}  // namespace soak
