#include "bench/workloads.h"

namespace bench {

namespace {

constexpr double kAim = 0.6;
constexpr double kNoAim = 0;

// clang-format off
constexpr Workload kWorkloads[] = {
    {"bag cycle",                         &bagCycleFramework,         &bagCycleReference,         false, kAim},
    {"message built and destroyed",       &messageFramework,          &messageReference,          false, kNoAim},
    {"post and deliver",                  &deliveryFramework,         &deliveryReference,         false, kAim},
    {"post and deliver with payload",     &payloadDeliveryFramework,  &payloadDeliveryReference,  false, kAim},
    {"post and deliver, producer thread", &threadedDeliveryFramework, &threadedDeliveryReference, true,  kNoAim},
    {"decoding from memory",              &memoryDecodingFramework,   &memoryDecodingReference,   false, kAim},
    {"decoding from a pipe",              &pipeDecodingFramework,     &pipeDecodingReference,     false, kNoAim},
};
// clang-format on

}  // namespace

std::span<const Workload> workloads() noexcept {
    return kWorkloads;
}

}  // namespace bench
