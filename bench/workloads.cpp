#include "bench/workloads.h"

namespace bench {

namespace {

constexpr double kNoAim = 0;

// clang-format off
constexpr Workload kWorkloads[] = {
    {"bag cycle",                         &bagCycleFramework,         &bagCycleReference,         false, 0.6},
    {"message built and destroyed",       &messageFramework,          &messageReference,          false, kNoAim},
    {"post and deliver",                  &deliveryFramework,         &deliveryReference,         false, 0.93},
    {"post and deliver with payload",     &payloadDeliveryFramework,  &payloadDeliveryReference,  false, 0.64},
    {"post and deliver, producer thread", &threadedDeliveryFramework, &threadedDeliveryReference, true,  kNoAim},
    {"decoding from memory",              &memoryDecodingFramework,   &memoryDecodingReference,   false, 0.68},
    {"decoding from a pipe",              &pipeDecodingFramework,     &pipeDecodingReference,     false, 0.75},
};
// clang-format on

}  // namespace

std::span<const Workload> workloads() noexcept {
    return kWorkloads;
}

}  // namespace bench
