#include "tests/soak/soak_records.h"

#include "tools/printpath/record_bytes.h"

#include <iterator>

namespace soak {

namespace {

using printpath::appendNumber;
using printpath::appendText;
using printpath::appendWideText;
using printpath::recordBytes;

constexpr std::uint32_t kJob = 0;
constexpr std::uint32_t kDeviceMessages = 1;
constexpr std::uint32_t kStatus = 2;
constexpr std::uint32_t kUnknownClass = 9;
constexpr std::uint32_t kWarmingUp = 10003;  // nobody needs to be told
constexpr std::uint32_t kBigBlockEvery = 1000;
constexpr std::size_t kBigBlockBytes = 100000;
constexpr std::size_t kBlockBytes = 2048;

constexpr Alert kDocumentAlerts[] = {
    {41100, 0},  {41012, 1},  {41900, 2},  {40120, 3},   {50021, 9},   {50012, 10}, {30201, 11},
    {50020, 12}, {50003, 14}, {50007, 15}, {50008, 16},  {50025, 17},  {50005, 18}, {40020, 19},
    {40021, 20}, {42002, 21}, {42000, 22}, {42001, 23},  {40608, 24},  {10500, 28}, {41205, 1},
    {30119, 2},  {41310, 1},  {42003, 28}, {100000, 26}, {100001, 27},
};
static_assert(std::size(kDocumentAlerts) == kAlertsOfDocuments);
constexpr std::size_t kFaxes = 2;  // the last ones

constexpr std::uint32_t kLasting[] = {10209, 10219, 10300, 10512, 10403, 40017, 40010, 1, 40625};

static_assert(std::size(kLasting) == kLastingAlerts);

std::string record(std::uint32_t recordClass, std::uint32_t subcode, const std::string& body) {
    return recordBytes({recordClass, subcode, kPrinterId}, body);
}

std::string numbers(std::uint32_t first, std::uint32_t second) {
    std::string body;
    appendNumber(body, first);
    appendNumber(body, second);
    return body;
}

std::string block(std::uint64_t number) {
    const bool big = number % kBigBlockEvery == kBigBlockEvery - 1;
    return record(kDeviceMessages, 0,
                  std::string(big ? kBigBlockBytes : number * 37 % kBlockBytes, 'x'));
}

std::string mediaRecord(std::uint64_t number) {
    std::string body;
    appendText(body, number % 2 == 0 ? "DISPLAY = \"Plain\"" : "DISPLAY = \"Heavy Glossy\"");
    return record(kStatus, 18, body);
}

std::string wideNames(std::uint64_t number) {
    std::string body;
    appendNumber(body, static_cast<std::uint32_t>(number));
    appendWideText(body, std::u16string(number % 300, u'\u00E9'));
    return record(kJob, 3, body);
}

std::string ofAnotherPrinter() {
    std::string body;
    appendNumber(body, kAnchor);
    return recordBytes({kStatus, 3, kPrinterId + 1}, body);
}

}  // namespace

std::string printerRecord() {
    std::string body;
    appendText(body, "USB001");
    appendText(body, kPrinterName);
    return record(kJob, 0, body);
}

std::string documentStart(std::uint32_t job) {
    std::string body;
    appendNumber(body, job);
    appendText(body, "Annual report " + std::to_string(job) + ".pdf");
    return record(kJob, 2, body);
}

std::string documentEnd(std::uint32_t job) {
    std::string body;
    appendNumber(body, job);
    return record(kJob, 4, body);
}

std::string statusRecord(std::uint32_t status) {
    std::string body;
    appendNumber(body, status);
    return record(kStatus, 3, body);
}

std::string cartridgeRecord(std::uint32_t serial) {
    std::string body;
    appendText(body, "SerialNumber=" + std::to_string(serial) + "\n");
    return record(kStatus, 11, body);
}

std::string quietRecord(std::uint64_t number) {
    switch (number % 10) {
        case 0:
            return record(kJob, 5, numbers(3, kWarmingUp));
        case 1:
            return block(number / 10);
        case 2:
            return mediaRecord(number / 10);
        case 3:
            return ofAnotherPrinter();
        case 4:
            return record(kUnknownClass, static_cast<std::uint32_t>(number), "what is this");
        case 5:
            return record(kStatus, 3, "xx");  // the number is not all there
        case 6:
            return wideNames(number / 10);
        case 7:
            return statusRecord(kAnchor);  // is open already
        default:
            return statusRecord(kWarmingUp);
    }
}

Alert alertOfDocument(std::uint64_t number) {
    return kDocumentAlerts[number % std::size(kDocumentAlerts)];
}

Alert alertForTheUser(std::uint64_t number) {
    return kDocumentAlerts[number % (std::size(kDocumentAlerts) - kFaxes)];
}

std::uint32_t lastingAlert(std::uint64_t number) {
    return kLasting[number % std::size(kLasting)];
}

}  // namespace soak
