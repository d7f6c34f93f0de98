#include "arbor/message.h"
#include "arbor/property_holder.h"
#include "arbor/property_text.h"
#include "bench/checksum.h"
#include "bench/plain_bag.h"
#include "bench/workloads.h"
#include "tern/message_keys.h"

// The bag of a status message: four entries, two of the keys that a listener asks for are absent.
namespace bench {

namespace {

namespace key = tern::message_key;

constexpr arbor::Key kBroker(L"eventBroker");
constexpr std::int32_t kPaperOut = 41150;
constexpr char kDocument[] = "Quarterly report.pdf";
constexpr char kOtherDocument[] = "Minutes of the meeting.txt";
constexpr wchar_t kPrinter[] = L"Beamline K7400";
constexpr arbor::Guid kType{
    0x4AD54A4F, 0x7906, 0x4C40, {0xBB, 0x19, 3, 0xB7, 0x78, 0xA0, 0x8D, 0x4C}};
constexpr std::uint32_t kJobClass = 0;

}  // namespace

std::uint64_t bagCycleFramework(long times) {
    std::uint64_t sum = 0;
    for (long i = 0; i < times; ++i) {
        arbor::PropertyHolder bag;
        bag.setInt(key::kStatus, kPaperOut);
        bag.setString(key::kDocumentName, kDocument);
        bag.setWString(key::kPrinterName, kPrinter);
        bag.setPointer(kBroker, &bag);

        sum += of(bag.getInt(key::kStatus, 0));
        sum += of(bag.getString(key::kDocumentName, ""));
        sum += of(arbor::wideText(bag, key::kPrinterName));
        sum += bag.getPointer(kBroker, nullptr) == &bag;
        sum += of(bag.getInt(key::kSeverity, 1));
        sum += of(bag.getString(key::kMediaType, "A4"));

        bag.setString(key::kDocumentName, kOtherDocument);
        bag.removeProperty(key::kPrinterName);
    }
    return sum;
}

std::uint64_t bagCycleReference(long times) {
    std::uint64_t sum = 0;
    for (long i = 0; i < times; ++i) {
        plain::Bag bag;
        plain::set(bag, L"status", kPaperOut);
        plain::set(bag, L"docName", std::string(kDocument));
        plain::set(bag, L"printerName", std::wstring(kPrinter));
        plain::set(bag, L"eventBroker", static_cast<void*>(&bag));

        sum += of(plain::get(bag, L"status", std::int32_t{0}));
        sum += of(plain::get(bag, L"docName", std::string()));
        sum += of(plain::get(bag, L"printerName", std::wstring()));
        sum += plain::get<void*>(bag, L"eventBroker", nullptr) == &bag;
        sum += of(plain::get(bag, L"severity", std::int32_t{1}));
        sum += of(plain::get(bag, L"mediaType", std::string("A4")));

        plain::set(bag, L"docName", std::string(kOtherDocument));
        plain::remove(bag, L"printerName");
    }
    return sum;
}

std::uint64_t messageFramework(long times) {
    std::uint64_t sum = 0;
    for (long i = 0; i < times; ++i) {
        const auto message = std::make_shared<arbor::Message>(&kType, kJobClass, 0);
        arbor::PropertyHolder& properties = *message->getProperties();
        properties.setInt(key::kSubcode, 5);
        properties.setInt(key::kSeverity, 3);
        properties.setInt(key::kStatus, kPaperOut);
        sum += of(properties.getInt(key::kStatus, 0));
    }
    return sum;
}

std::uint64_t messageReference(long times) {
    std::uint64_t sum = 0;
    for (long i = 0; i < times; ++i) {
        const auto message = std::make_unique<plain::Message>(&kType, kJobClass, 0U);
        plain::set(message->properties, L"subcode", 5);
        plain::set(message->properties, L"severity", 3);
        plain::set(message->properties, L"status", kPaperOut);
        sum += of(plain::get(message->properties, L"status", std::int32_t{0}));
    }
    return sum;
}

}  // namespace bench
