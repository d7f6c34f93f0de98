#pragma once

#include "tern/velo_event_generator.h"

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <utility>

namespace bench {

// Reads the same bytes again and again.
class Tape {
public:
    Tape(std::string records, long times) : _records(std::move(records)), _left(times) {}

    bool read(void* to, std::uint32_t bytes) noexcept {
        if (_left == 0) return false;
        std::memcpy(to, _records.data() + _at, bytes);
        _at += bytes;
        if (_at == _records.size()) {
            _at = 0;
            --_left;
        }
        return true;
    }

private:
    std::string _records;
    std::size_t _at = 0;
    long _left;
};

// Decodes what is on a tape, on the calling thread.
class MemoryGenerator : public tern::VeloEventGenerator {
public:
    MemoryGenerator(Tape tape, const arbor::IPropertyHolder& parameters,
                    tern::IInstanceManager* owner)
        : VeloEventGenerator(parameters, owner), _tape(std::move(tape)) {}

    using AbstractThread::runOnThisThread;

    void* readInput(void* destination, std::uint32_t count) override {
        if (count > 0 && !_tape.read(destination, count))
            throw std::domain_error("end of the tape");
        return destination;
    }

private:
    Tape _tape;
};

}  // namespace bench
