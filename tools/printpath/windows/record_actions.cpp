#include "tools/printpath/record_bytes.h"
#include "tools/printpath/windows/actions.h"
#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/scenario_run.h"
#include "tools/printpath/windows/wide_text.h"

namespace printpath {

namespace {

// Classes and subcodes of the records, as the print path sends them.
constexpr std::uint32_t kJob = 0;
constexpr std::uint32_t kOem = 1;
constexpr std::uint32_t kStatus = 2;
constexpr std::uint32_t kPrinter = 0;
constexpr std::uint32_t kPrinterWide = 1;
constexpr std::uint32_t kDocumentStart = 2;
constexpr std::uint32_t kDocumentStartWide = 3;
constexpr std::uint32_t kDocumentEnd = 4;
constexpr std::uint32_t kJobStatus = 5;
constexpr std::uint32_t kDeviceStatus = 3;
constexpr std::uint32_t kCartridge = 11;
constexpr std::uint32_t kMedia = 18;

std::u16string units(const std::string& utf8) {
    const std::wstring wide = wideFromUtf8(utf8);
    return {wide.begin(), wide.end()};
}

void writeRecord(ScenarioRun& run, std::string record) {
    Writing& writing = run.writing;
    if (writing.cutAfter) record.resize(std::min(record.size(), *writing.cutAfter));
    writing.cutAfter.reset();
    if (writing.joined > 0) {
        writing.joinedBytes += record;
        if (--writing.joined > 0) return;
        record.swap(writing.joinedBytes);
        writing.joinedBytes.clear();
    }
    run.monitor();
    const auto pieces = splitForWriting(record, writing.as, writing.chunkBytes);
    const DWORD timeoutMs = static_cast<DWORD>(run.options().timeoutSeconds) * 1000;
    for (const std::string& piece : pieces)
        run.pipe->write(piece, timeoutMs);
    run.timeline().note("wrote " + std::to_string(record.size()) + " bytes in " +
                        std::to_string(pieces.size()) +
                        (pieces.size() == 1 ? " piece" : " pieces"));
}

void send(ScenarioRun& run, const Step& step, std::uint32_t recordClass, std::uint32_t subcode,
          const std::string& body, std::optional<std::uint32_t> length = std::nullopt) {
    const Value& id = step["id"];
    const std::uint32_t printerId = id.given ? numberOf(id) : run.preparation.printerId;
    writeRecord(run, recordBytes({recordClass, subcode, printerId}, body, length));
}

void sendPrinter(ScenarioRun& run, const Step& step) {
    std::string body;
    appendText(body, narrowFromUtf8(step["port"].text));
    appendText(body, narrowFromUtf8(step["name"].text));
    send(run, step, kJob, kPrinter, body);
}

void sendPrinterWide(ScenarioRun& run, const Step& step) {
    std::string body;
    appendWideText(body, units(step["port"].text));
    appendWideText(body, units(step["name"].text));
    send(run, step, kJob, kPrinterWide, body);
}

void sendDocumentStart(ScenarioRun& run, const Step& step) {
    std::string body;
    appendNumber(body, numberOf(step["job"]));
    appendText(body, narrowFromUtf8(step["name"].text));
    send(run, step, kJob, kDocumentStart, body);
}

void sendDocumentStartWide(ScenarioRun& run, const Step& step) {
    std::string body;
    appendNumber(body, numberOf(step["job"]));
    appendWideText(body, units(step["name"].text));
    send(run, step, kJob, kDocumentStartWide, body);
}

void sendNumber(ScenarioRun& run, const Step& step, std::uint32_t recordClass,
                std::uint32_t subcode, const Value& value) {
    std::string body;
    appendNumber(body, numberOf(value));
    send(run, step, recordClass, subcode, body);
}

void sendDocumentEnd(ScenarioRun& run, const Step& step) {
    sendNumber(run, step, kJob, kDocumentEnd, step["job"]);
}

void sendJobStatus(ScenarioRun& run, const Step& step) {
    std::string body;
    appendNumber(body, numberOf(step["severity"]));
    appendNumber(body, numberOf(step["status"]));
    send(run, step, kJob, kJobStatus, body);
}

void sendStatus(ScenarioRun& run, const Step& step) {
    sendNumber(run, step, kStatus, kDeviceStatus, step["status"]);
}

void sendDeviceEvent(ScenarioRun& run, const Step& step) {
    send(run, step, kStatus, numberOf(step["subcode"]), "");
}

void sendCartridge(ScenarioRun& run, const Step& step) {
    std::string body;
    appendText(body, "SerialNumber=" + std::to_string(numberOf(step["serial"])) + "\n");
    send(run, step, kStatus, kCartridge, body);
}

void sendMedia(ScenarioRun& run, const Step& step) {
    std::string body;
    appendText(body, "DISPLAY = \"" + narrowFromUtf8(step["name"].text) + "\"");
    send(run, step, kStatus, kMedia, body);
}

void sendOem(ScenarioRun& run, const Step& step) {
    send(run, step, kOem, 0, step["bytes"].bytes);
}

void sendOemFile(ScenarioRun& run, const Step& step) {
    send(run, step, kOem, 0, run.readBesideScenario(step["file"].text));
}

void sendRecord(ScenarioRun& run, const Step& step) {
    std::string body = step["body"].bytes;
    body += narrowFromUtf8(step["text"].text);
    body.append(static_cast<std::size_t>(step["fill"].number), 'x');
    std::optional<std::uint32_t> length;
    if (step["length"].given) length = numberOf(step["length"]);
    send(run, step, numberOf(step["class"]), numberOf(step["subcode"]), body, length);
}

void sendRawHex(ScenarioRun& run, const Step& step) {
    writeRecord(run, step["bytes"].bytes);
}

void sendRawText(ScenarioRun& run, const Step& step) {
    writeRecord(run, narrowFromUtf8(step["text"].text));
}

void writeAs(ScenarioRun& run, const Step& step) {
    // The words of the keyword have the same order as the values of the enumeration.
    run.writing.as = static_cast<WriteAs>(step["pieces"].number);
    if (step["size"].given) run.writing.chunkBytes = static_cast<std::size_t>(step["size"].number);
}

void together(ScenarioRun& run, const Step& step) {
    run.writing.joined = static_cast<int>(step["records"].number);
}

void cutNext(ScenarioRun& run, const Step& step) {
    run.writing.cutAfter = static_cast<std::size_t>(step["bytes"].number);
}

// Waits until the monitor has read everything, because closing a pipe may discard unread bytes.
void hangUp(ScenarioRun& run, const Step&) {
    const DWORD timeoutMs = static_cast<DWORD>(run.options().timeoutSeconds) * 1000;
    run.pipe->drain(timeoutMs);
    run.pipe.reset();
}

}  // namespace

std::vector<Action> recordActions() {
    return {
        {"printer", sendPrinter},
        {"printer-wide", sendPrinterWide},
        {"document-start", sendDocumentStart},
        {"document-start-wide", sendDocumentStartWide},
        {"document-end", sendDocumentEnd},
        {"job-status", sendJobStatus},
        {"status", sendStatus},
        {"device-event", sendDeviceEvent},
        {"cartridge", sendCartridge},
        {"media", sendMedia},
        {"oem-hex", sendOem},
        {"oem-file", sendOemFile},
        {"record", sendRecord},
        {"raw-hex", sendRawHex},
        {"raw-text", sendRawText},
        {"write-as", writeAs},
        {"together", together},
        {"cut-next", cutNext},
        {"hang-up", hangUp},
    };
}

}  // namespace printpath
