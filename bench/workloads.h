#pragma once

#include <cstdint>
#include <span>

// What the benchmarks measure: pairs of the framework's way and a plain way to do the same work.
// Each side does it `times` times and returns a checksum of all that it read back. Equal checksums
// prove that both did the same.
namespace bench {

using Side = std::uint64_t (*)(long times);

struct Workload {
    const char* name;
    Side framework;
    Side reference;
    bool usesThreads;       // measured by the clock; its instructions are not counted
    double instructionAim;  // at most this much of the reference; 0: no aim is set
};

[[nodiscard]] std::span<const Workload> workloads() noexcept;

std::uint64_t bagCycleFramework(long times);
std::uint64_t bagCycleReference(long times);
std::uint64_t messageFramework(long times);
std::uint64_t messageReference(long times);

// One operation is one message, posted and delivered to three listeners.
std::uint64_t deliveryFramework(long times);
std::uint64_t deliveryReference(long times);
std::uint64_t payloadDeliveryFramework(long times);
std::uint64_t payloadDeliveryReference(long times);
std::uint64_t threadedDeliveryFramework(long times);
std::uint64_t threadedDeliveryReference(long times);

// One operation is one document's records.
std::uint64_t memoryDecodingFramework(long times);
std::uint64_t memoryDecodingReference(long times);
std::uint64_t pipeDecodingFramework(long times);
std::uint64_t pipeDecodingReference(long times);

}  // namespace bench
