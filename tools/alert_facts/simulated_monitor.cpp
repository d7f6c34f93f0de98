#include "tools/alert_facts/simulated_monitor.h"

#include "arbor/message.h"
#include "monitor/default_lms_listener.h"
#include "platform/simulated/world.h"
#include "printer/cartridge_store.h"
#include "printer/media_types.h"
#include "tern/class_ids.h"
#include "tern/event_broker.h"
#include "tern/instance_manager.h"
#include "tern/message_keys.h"
#include "tests/support/stopped_loop.h"
#include "tests/support/strings_table.h"
#include "tests/support/supply_pages.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <stdexcept>

namespace alert_facts {

namespace {

using platform::simulated::World;
using platform::simulated::world;
namespace message_key = tern::message_key;

constexpr wchar_t kPort[] = L"USB001";
constexpr wchar_t kLibrary[] = L"texts";
constexpr wchar_t kIdMark = L'#';

// Installs everything that an action can reach, so that each effect is seen.
void installAll(World& system) {
    system.device.install();
    system.device.setPage(supply_pages::kConfigurationPath,
                          supply_pages::configuration("", "QV-740A"));
    system.device.setPage(supply_pages::kUsagePath, supply_pages::usage("310"));
    system.device.setPage("/DevMgmt/ShopForSupplies.xml", "<?xml?><supplies/>");
    for (const char* const file : {"P7400DEF.css", "P7400SIG.GIF", "P7400OS.HTM"}) {
        const std::string folder = "C:\\Program Files\\QV\\QV Beamline K7400 MFP Series\\";
        system.files.put(folder + file, "<html></html>");
    }
    system.registry.setText(platform::Hive::LocalMachine, L"SOFTWARE\\Corvane\\Orrery\\",
                            L"ApplicationPath", L"C:\\Orrery\\orrery.exe");
}

std::int64_t restHours(SnoozeSlot slot) {
    constexpr std::int64_t kSecondsPerHour = 3600;
    CartridgeRecord record;
    GetCartData(record);
    const std::size_t entry = record.find(GetCurrCart());
    if (entry == CartridgeRecord::npos) return 0;
    return std::max<std::int64_t>(record.snooze(entry, slot) - world().time, 0) / kSecondsPerHour;
}

}  // namespace

TextsById textsOf(platform::LanguageId language) {
    TextsById texts;
    std::for_each(kStringRows, kStringRows + kStringRowCount, [&](const StringRow& row) {
        if (row.language == language) texts[row.id] = row.text;
    });
    return texts;
}

const TextsById& idsAsTexts() {
    static const TextsById texts = [] {
        TextsById ids = textsOf(platform::simulated::kEnglish);
        for (auto& [id, text] : ids)
            text = kIdMark + std::to_wstring(id);
        return ids;
    }();
    return texts;
}

int idOf(const std::wstring& text) {
    if (text.empty() || text.front() != kIdMark) return 0;
    return static_cast<int>(std::wcstol(text.c_str() + 1, nullptr, 10));
}

SimulatedMonitor::SimulatedMonitor(const Setup& setup) {
    World& system = world();
    system.reset();
    headless::reset();
    installAll(system);
    setCurrentMediaType(TranslateMediaType(""));
    const platform::NativeHandle strings = system.texts.addModule(kLibrary);
    // In the place of English, which every user's language falls back to.
    for (const auto& [id, text] : *setup.texts)
        system.texts.add(strings, platform::simulated::kEnglish, id, text);
    system.texts.setSystemLanguage(setup.systemLanguage);
    system.printers.setDword(kPrinter, L"AlertMask", setup.alertMask);
    if (setup.silentPrinter) system.printers.setDword(kPrinter, L"Status", 0);
    system.printers.setTextOf(kPrinter, L"\\", L"Printer Driver",
                              setup.familyPrinter ? L"Beamline K7400 PCL" : L"Beamline L200");

    _manager.reset(tern::NewInstanceManager("", 0, nullptr));
    auto listener = std::make_unique<DefaultLMSListener>(
        _manager.get(), tern::kVeloEventGeneratorId, tern::kVeloListenerId, nullptr, strings);
    _listener = listener.get();
    if (!_manager->addComponent(_listener)) throw std::runtime_error("the listener has no place");
    static_cast<void>(listener.release());

    send(tern::RecordClass::Job, tern::kPrinterWide, [](arbor::IPropertyHolder& fields) {
        fields.setWString(message_key::kPrinterName, kPrinter);
        fields.setWString(message_key::kPortName, kPort);
    });
    if (setup.knownCartridge) insertNewCartridge();
}

SimulatedMonitor::~SimulatedMonitor() {
    _manager.reset();
    headless::reset();
    world().reset();
}

void SimulatedMonitor::send(tern::RecordClass recordClass, std::uint32_t subcode,
                            const Fill& fill) {
    arbor::Message message(&tern::kVeloEventGeneratorId, static_cast<std::uint32_t>(recordClass),
                           0);
    arbor::IPropertyHolder& fields = *message.getProperties();
    fields.setInt(message_key::kSubcode, static_cast<std::int32_t>(subcode));
    if (fill) fill(fields);
    _listener->notify(&message);
}

WindowHandle SimulatedMonitor::report(std::int32_t status, std::uint32_t subcode) {
    const int before = headless::openedWindows();
    world().time += 1;  // a snooze that has ended still covers the second in which it ended
    send(tern::RecordClass::Status, subcode,
         [status](arbor::IPropertyHolder& fields) { fields.setInt(message_key::kStatus, status); });
    return headless::openedWindows() > before ? headless::windows().back() : nullptr;
}

void SimulatedMonitor::loadMedium(const std::string& name) {
    send(tern::RecordClass::Status, tern::kMediaReport, [&name](arbor::IPropertyHolder& fields) {
        fields.setString(message_key::kMediaType, name.c_str());
    });
}

void SimulatedMonitor::insertNewCartridge() {
    ++_serial;
    send(tern::RecordClass::Status, tern::kCartridgeReport, [this](arbor::IPropertyHolder& fields) {
        fields.setInt(message_key::kCartridgeSerial, static_cast<std::int32_t>(_serial));
    });
}

void SimulatedMonitor::endDocument() {
    send(tern::RecordClass::Job, tern::kDocumentEnd);
}

Effects SimulatedMonitor::effects(WindowHandle window) {
    const headless::Window* found = headless::find(window);
    Effects effects;
    effects.closes = found == nullptr || !found->visible;
    effects.opensShop = !world().desktop.documents().empty();
    effects.startsCompanion = !world().desktop.programs().empty();
    effects.opensCheck = !headless::cartridgeChecks().empty();
    effects.addresses = world().desktop.addresses();
    for (const auto& press : world().device.presses())
        effects.printerButtons.push_back(press.button);
    effects.messages = headless::messages();
    for (const SnoozeSlot slot : {SnoozeSlot::Low, SnoozeSlot::VeryLow, SnoozeSlot::Out})
        effects.rest[static_cast<std::size_t>(slot)] = restHours(slot);
    effects.endsMonitor = test::isLoopStopped(*_manager->getEventBroker());
    return effects;
}

}  // namespace alert_facts
