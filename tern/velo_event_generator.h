#pragma once

#include "arbor/guid.h"
#include "arbor/i_property_holder.h"
#include "platform/native_handle.h"
#include "tern/abstract_event_generator.h"
#include "tern/velo_record.h"

#include <cstdint>
#include <memory>
#include <string>

namespace tern {

class EventBroker;

// Reads the records of the print path from the input pipe and turns each into a message. The first
// record that cannot be read stops the broker, and with it the monitor: there is no reconnection
// and nothing is resynchronised. The exit code does not tell of it (kept: see decision 0012).
class VeloEventGenerator : public AbstractEventGenerator {
public:
    using Buffer = std::unique_ptr<unsigned char[]>;

    // Opens the pipe that the channel settings name, if it is there. Asks to be started even when
    // it is not: the thread then stops the broker.
    VeloEventGenerator(const arbor::IPropertyHolder& parameters, IInstanceManager* owner);
    // Leaves the pipe open: the thread may hang in a read of it until the process ends.
    ~VeloEventGenerator() override;

    // The order of the operations below is part of the design (kept: see decision 0012). All but
    // the first run on the generator's thread.

    [[nodiscard]] const arbor::Guid* getClassId() const override;
    // Makes room for `needed` bytes, at most kVeloBodyLimit. Returns the usable count: 0, and no
    // buffer, without memory. The caller stores it as the new capacity.
    virtual std::uint32_t reserveBuffer(Buffer& buffer, std::uint32_t capacity,
                                        std::uint32_t needed);
    // Reads exactly `count` bytes, or throws the input error. `destination` must live until then,
    // even when the object is destroyed during the read.
    virtual void* readInput(void* destination, std::uint32_t count);
    // Reads and drops `count` bytes.
    virtual void discardInput(std::uint32_t count);
    [[nodiscard]] virtual bool isValidHeader(const VeloHeader& header);
    [[nodiscard]] virtual bool hasInput(std::uint32_t count);
    [[nodiscard]] virtual const char* readText();
    // Points into `text`, which must be writable where it has a line feed.
    [[nodiscard]] virtual const char* findValue(const char* text, const char* key);
    [[nodiscard]] virtual VeloWideText readWText();
    [[nodiscard]] virtual std::uint32_t readNumber(std::uint32_t defaultValue);
    // Builds the message of the current record and enqueues it; drops a record of another printer.
    virtual void buildMessage(const VeloHeader& header, EventBroker* broker);

    std::uint32_t run() override;

protected:
    // The loop of the body. Never returns: ends with the exception that says why.
    [[noreturn]] void readRecords();

private:
    // What a blocked read uses; the thread keeps it alive when the object goes.
    struct Input {
        platform::NativeHandle pipe = nullptr;  // not closed, see platform/pipe.h
        Buffer body;
        std::uint32_t bodyCapacity = 0;
        std::uint32_t bodyBytes = 0;
        VeloBody reader;
        Buffer oem;
        std::uint32_t oemCapacity = 0;
    };

    void openPipe();
    void addJobFields(std::uint32_t subcode, arbor::PropertyHolder& properties);
    void addOemBlock(arbor::PropertyHolder& properties);
    void addStatusFields(std::uint32_t subcode, arbor::PropertyHolder& properties);

    std::shared_ptr<Input> _input;
};

}  // namespace tern
