#include "tools/printpath/record_bytes.h"
#include "tools/printpath/windows/actions.h"
#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/stage.h"
#include "tools/printpath/windows/text_file.h"
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

std::uint32_t numberOf(const Value& value) {
    return static_cast<std::uint32_t>(value.number);
}

std::u16string units(const std::string& utf8) {
    const std::wstring wide = wideFromUtf8(utf8);
    return {wide.begin(), wide.end()};
}

void writeRecord(Stage& stage, std::string record) {
    Writing& writing = stage.writing;
    if (writing.cutAfter) record.resize(std::min(record.size(), *writing.cutAfter));
    writing.cutAfter.reset();
    if (writing.joined > 0) {
        writing.joinedBytes += record;
        if (--writing.joined > 0) return;
        record.swap(writing.joinedBytes);
        writing.joinedBytes.clear();
    }
    stage.monitor();
    const auto pieces = splitForWriting(record, writing.as, writing.chunkBytes);
    const DWORD timeoutMs = static_cast<DWORD>(stage.options().timeoutSeconds) * 1000;
    for (const std::string& piece : pieces)
        stage.pipe->write(piece, timeoutMs);
    stage.timeline().note("wrote " + std::to_string(record.size()) + " bytes in " +
                          std::to_string(pieces.size()) +
                          (pieces.size() == 1 ? " piece" : " pieces"));
}

void send(Stage& stage, const Step& step, std::uint32_t recordClass, std::uint32_t subcode,
          const std::string& body, std::optional<std::uint32_t> length = std::nullopt) {
    const Value& id = step["id"];
    const std::uint32_t printerId = id.given ? numberOf(id) : stage.preparation.printerId;
    writeRecord(stage, recordBytes({recordClass, subcode, printerId}, body, length));
}

void sendPrinter(Stage& stage, const Step& step) {
    std::string body;
    appendText(body, narrowFromUtf8(step["port"].text));
    appendText(body, narrowFromUtf8(step["name"].text));
    send(stage, step, kJob, kPrinter, body);
}

void sendPrinterWide(Stage& stage, const Step& step) {
    std::string body;
    appendWideText(body, units(step["port"].text));
    appendWideText(body, units(step["name"].text));
    send(stage, step, kJob, kPrinterWide, body);
}

void sendDocumentStart(Stage& stage, const Step& step) {
    std::string body;
    appendNumber(body, numberOf(step["job"]));
    appendText(body, narrowFromUtf8(step["name"].text));
    send(stage, step, kJob, kDocumentStart, body);
}

void sendDocumentStartWide(Stage& stage, const Step& step) {
    std::string body;
    appendNumber(body, numberOf(step["job"]));
    appendWideText(body, units(step["name"].text));
    send(stage, step, kJob, kDocumentStartWide, body);
}

void sendNumber(Stage& stage, const Step& step, std::uint32_t recordClass, std::uint32_t subcode,
                const Value& value) {
    std::string body;
    appendNumber(body, numberOf(value));
    send(stage, step, recordClass, subcode, body);
}

void sendDocumentEnd(Stage& stage, const Step& step) {
    sendNumber(stage, step, kJob, kDocumentEnd, step["job"]);
}

void sendJobStatus(Stage& stage, const Step& step) {
    std::string body;
    appendNumber(body, numberOf(step["severity"]));
    appendNumber(body, numberOf(step["status"]));
    send(stage, step, kJob, kJobStatus, body);
}

void sendStatus(Stage& stage, const Step& step) {
    sendNumber(stage, step, kStatus, kDeviceStatus, step["status"]);
}

void sendDeviceEvent(Stage& stage, const Step& step) {
    send(stage, step, kStatus, numberOf(step["subcode"]), "");
}

void sendCartridge(Stage& stage, const Step& step) {
    std::string body;
    appendText(body, "SerialNumber=" + std::to_string(numberOf(step["serial"])) + "\n");
    send(stage, step, kStatus, kCartridge, body);
}

void sendMedia(Stage& stage, const Step& step) {
    std::string body;
    appendText(body, "DISPLAY = \"" + narrowFromUtf8(step["name"].text) + "\"");
    send(stage, step, kStatus, kMedia, body);
}

void sendOem(Stage& stage, const Step& step) {
    send(stage, step, kOem, 0, step["bytes"].bytes);
}

void sendOemFile(Stage& stage, const Step& step) {
    std::string bytes;
    const auto file = stage.besideScenario(step["file"].text);
    if (!readWholeFile(file, bytes))
        throw Failure(pathText(file) + " could not be read", Outcome::Unusable);
    send(stage, step, kOem, 0, bytes);
}

void sendRecord(Stage& stage, const Step& step) {
    std::string body = step["body"].bytes;
    body += narrowFromUtf8(step["text"].text);
    body.append(static_cast<std::size_t>(step["fill"].number), 'x');
    std::optional<std::uint32_t> length;
    if (step["length"].given) length = numberOf(step["length"]);
    send(stage, step, numberOf(step["class"]), numberOf(step["subcode"]), body, length);
}

void sendRawHex(Stage& stage, const Step& step) {
    writeRecord(stage, step["bytes"].bytes);
}

void sendRawText(Stage& stage, const Step& step) {
    writeRecord(stage, narrowFromUtf8(step["text"].text));
}

void writeAs(Stage& stage, const Step& step) {
    // The words of the keyword stand in the order of the enumeration.
    stage.writing.as = static_cast<WriteAs>(step["pieces"].number);
    if (step["size"].given)
        stage.writing.chunkBytes = static_cast<std::size_t>(step["size"].number);
}

void together(Stage& stage, const Step& step) {
    stage.writing.joined = static_cast<int>(step["records"].number);
}

void cutNext(Stage& stage, const Step& step) {
    stage.writing.cutAfter = static_cast<std::size_t>(step["bytes"].number);
}

// Everything that was written is left to the reader first: closing a pipe may drop it.
void hangUp(Stage& stage, const Step&) {
    const DWORD timeoutMs = static_cast<DWORD>(stage.options().timeoutSeconds) * 1000;
    stage.pipe->drain(timeoutMs);
    stage.pipe.reset();
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
