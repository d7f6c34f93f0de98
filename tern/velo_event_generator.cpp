#include "tern/velo_event_generator.h"

#include "arbor/message.h"
#include "arbor/number_text.h"
#include "arbor/property.h"
#include "platform/pipe.h"
#include "tern/channel_settings.h"
#include "tern/class_ids.h"
#include "tern/component_keys.h"
#include "tern/event_broker.h"
#include "tern/i_instance_manager.h"
#include "tern/message_keys.h"
#include "tern/pipe_path.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <new>
#include <stdexcept>
#include <utility>

namespace tern {

namespace {

// Equally right with 261: the longest text has 83 bytes.
constexpr std::size_t kErrorTextBytes = 260;
// Equally right with 4097: it is only the size of one read.
constexpr std::uint32_t kScratchBytes = 4096;

std::string readFailure(platform::NativeHandle pipe, std::uint32_t error) {
    std::array<char, kErrorTextBytes> text{};
    std::snprintf(text.data(), text.size(),
                  "[VeloEventGenerator::readInput] ReadFile() failed hndl=0x%x, gle=%d",
                  static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(pipe)),
                  static_cast<int>(error));
    return text.data();
}

// Copies the text once, from the body into its property: it may fill all of a body.
void setWText(arbor::PropertyHolder& properties, arbor::Key key, VeloWideText text) {
    std::unique_ptr<arbor::IProperty> property(
        arbor::Property::createUtf16(text.bytes, text.units));
    if (properties.adoptProperty(key, property.get())) static_cast<void>(property.release());
}

std::int32_t asInt(std::uint32_t number) {
    return static_cast<std::int32_t>(number);
}

}  // namespace

VeloEventGenerator::VeloEventGenerator(const arbor::IPropertyHolder& parameters,
                                       IInstanceManager* owner)
    : AbstractEventGenerator(parameters, owner), _input(std::make_shared<Input>()) {
    // Read and not used: the pipe is always the one that the channel settings name.
    static_cast<void>(parameters.getString(component_key::kInputPipe, "unknown"));
    openPipe();
    requestStart();
}

VeloEventGenerator::~VeloEventGenerator() {
    endThreadUse();
}

void VeloEventGenerator::openPipe() {
    const std::wstring path = pipePath(channelSettings().inputPipe.data());
    if (path.empty() || !platform::waitForPipe(path.c_str())) return;
    _input->pipe = platform::openPipeForReading(path.c_str());
    if (_input->pipe != platform::invalidHandle()) platform::setMessageReadMode(_input->pipe);
}

const arbor::Guid* VeloEventGenerator::getClassId() const {
    return &kVeloEventGeneratorId;
}

std::uint32_t VeloEventGenerator::run() {
    try {
        readRecords();
    } catch (const ObjectGone&) {
        throw;
    } catch (...) {
        // Every error ends the channel in the same way, so its text is not needed here.
    }
    owner()->getEventBroker()->stop(getClassId(), 0);
    return 0;
}

void VeloEventGenerator::readRecords() {
    // A reference of our own: a read that blocks writes into it even when the object is gone.
    const std::shared_ptr<Input> input = _input;
    if (input->pipe == nullptr) throw std::domain_error("[VeloEventGenerator] no input source");

    for (VeloHeaderBytes bytes;;) {
        readInput(bytes.data(), kVeloHeaderBytes);
        const VeloHeader header = decodedHeader(bytes);
        if (!isValidHeader(header)) {
            throw std::domain_error("[VeloEventGenerator] invalid input header");
        }

        // The size of this record becomes the capacity, so a record that is longer than the one
        // before it gets a new buffer.
        const std::uint32_t kept =
            reserveBuffer(input->body, input->bodyCapacity, header.bodyBytes);
        input->bodyBytes = kept;
        // Equally right after the next: a read that fails is the last one.
        input->bodyCapacity = kept;
        readInput(input->body.get(), kept);
        // Equally right after the next: what is dropped is not of the body that is kept.
        input->reader = VeloBody(input->body.get(), kept);
        discardInput(header.bodyBytes - kept);
        buildMessage(header, owner()->getEventBroker());
    }
}

std::uint32_t VeloEventGenerator::reserveBuffer(Buffer& buffer, std::uint32_t capacity,
                                                std::uint32_t needed) {
    const std::uint32_t bytes = std::min(needed, kVeloBodyLimit);
    if (bytes <= capacity) return bytes;
    buffer.reset();  // Equally right without it: the next line frees the block, a moment later.
    buffer.reset(new (std::nothrow) unsigned char[bytes]);
    return buffer != nullptr ? bytes : 0;
}

void* VeloEventGenerator::readInput(void* destination, std::uint32_t count) {
    const platform::NativeHandle pipe = _input->pipe;
    auto* at = static_cast<unsigned char*>(destination);
    for (std::uint32_t missing = count; missing > 0;) {
        platform::PipeRead read{};
        outside([&] { read = platform::readPipe(pipe, at, missing); });
        if (read.failed) throw std::domain_error(readFailure(pipe, read.error));
        at += read.bytes;
        missing -= read.bytes;
    }
    return destination;
}

void VeloEventGenerator::discardInput(std::uint32_t count) {
    if (count == 0) return;
    const platform::NativeHandle pipe = _input->pipe;
    unsigned char scratch[kScratchBytes];
    for (std::uint32_t missing = count; missing > 0;) {
        platform::PipeRead read{};
        outside(
            [&] { read = platform::readPipe(pipe, scratch, std::min(missing, kScratchBytes)); });
        if (read.failed) {
            throw std::domain_error("[VeloEventGenerator::discardInput] ReadFile() failed");
        }
        missing -= read.bytes;
    }
}

bool VeloEventGenerator::isValidHeader(const VeloHeader& header) {
    return header.magic == kVeloMagic;
}

bool VeloEventGenerator::hasInput(std::uint32_t count) {
    return _input->reader.hasInput(count);
}

const char* VeloEventGenerator::readText() {
    return _input->reader.readText();
}

const char* VeloEventGenerator::findValue(const char* text, const char* key) {
    return findValueIn(const_cast<char*>(text), key);
}

VeloWideText VeloEventGenerator::readWText() {
    return _input->reader.readWText();
}

std::uint32_t VeloEventGenerator::readNumber(std::uint32_t defaultValue) {
    return _input->reader.readNumber(defaultValue);
}

void VeloEventGenerator::buildMessage(const VeloHeader& header, EventBroker* broker) {
    std::shared_ptr<arbor::Message> message;
    try {
        message = std::make_shared<arbor::Message>(getClassId(), header.recordClass, 0);
    } catch (const std::bad_alloc&) {
        throw std::runtime_error("failed to create Message instance");
    }
    if (header.printerId != static_cast<std::uint32_t>(channelSettings().printerId)) return;

    arbor::PropertyHolder& properties = *message->getProperties();
    properties.setInt(message_key::kSubcode, asInt(header.subcode));
    // A record without a body says nothing but its subcode. With fields read as defaults, an empty
    // cartridge report would tell of a cartridge 0. The header's length decides: a body for which
    // there was no memory is empty too, and its fields do read as defaults.
    const bool hasBody = header.bodyBytes != 0;
    switch (static_cast<RecordClass>(header.recordClass)) {
        case RecordClass::Job:
            if (hasBody) addJobFields(header.subcode, properties);
            break;
        case RecordClass::Oem:
            addOemBlock(properties);
            break;
        case RecordClass::Status:
            if (hasBody) addStatusFields(header.subcode, properties);
            break;
    }
    broker->enqueue(std::move(message));
}

void VeloEventGenerator::addJobFields(std::uint32_t subcode, arbor::PropertyHolder& properties) {
    switch (subcode) {
        case kPrinterNarrow:
            properties.setString(message_key::kPortName, readText());
            properties.setString(message_key::kPrinterName, readText());
            break;
        case kPrinterWide:
            setWText(properties, message_key::kPortName, readWText());
            setWText(properties, message_key::kPrinterName, readWText());
            break;
        case kDocumentStartNarrow:
            properties.setInt(message_key::kJobId, asInt(readNumber(0)));
            properties.setString(message_key::kDocumentName, readText());
            break;
        case kDocumentStartWide:
            properties.setInt(message_key::kJobId, asInt(readNumber(0)));
            setWText(properties, message_key::kDocumentName, readWText());
            break;
        case kDocumentEnd:
            properties.setInt(message_key::kJobId, asInt(readNumber(0)));
            break;
        case kJobStatus:
            properties.setInt(message_key::kSeverity, asInt(readNumber(0)));
            properties.setInt(message_key::kStatus, asInt(readNumber(0)));
            break;
        default:
            break;
    }
}

// The generator keeps the block. Listeners use it while they handle the message: the next block
// overwrites it.
void VeloEventGenerator::addOemBlock(arbor::PropertyHolder& properties) {
    Input& input = *_input;
    input.oemCapacity = reserveBuffer(input.oem, input.oemCapacity, input.bodyBytes);
    if (input.oemCapacity > 0) {
        std::memcpy(input.oem.get(), input.body.get(),
                    std::min(input.oemCapacity, input.bodyBytes));
    }
    // Equally right after the next: nobody has the message before both are in it.
    properties.setPointer(message_key::kOemMessages, input.oem.get());
    properties.setInt(message_key::kOemBytes, asInt(input.oemCapacity));
}

void VeloEventGenerator::addStatusFields(std::uint32_t subcode, arbor::PropertyHolder& properties) {
    switch (subcode) {
        case kDeviceStatus:
            properties.setInt(message_key::kStatus, asInt(readNumber(0)));
            break;
        case kCartridgeReport: {
            std::int32_t serial = 0;
            arbor::parsedDecimal(findValue(readText(), "SerialNumber"), serial);
            properties.setInt(message_key::kCartridgeSerial, serial);
            break;
        }
        case kMediaReport: {
            std::string name;
            if (findMediaName(readText(), name))
                properties.setString(message_key::kMediaType, name.c_str());
            break;
        }
        default:
            break;
    }
}

}  // namespace tern
