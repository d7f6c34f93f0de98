// Commits on purpose the fault that its argument names. A sanitizer or Valgrind must stop it. If a
// compiler flag were lost, the sanitizer would find nothing and the code would look faultless.
#include "platform/lock.h"
#include "platform/native_handle.h"
#include "platform/pipe.h"
#include "platform/registry.h"

#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string_view>
#include <thread>
#include <vector>

namespace {

void overrunTheHeap() {
    std::vector<unsigned char> bytes(8);
    volatile unsigned char* const past = bytes.data() + bytes.size();
    *past = 1;
}

void overflowANumber(int argumentCount) {
    volatile int number = std::numeric_limits<int>::max();
    number = number + argumentCount;
}

void raceForAVariable() {
    int shared = 0;
    const auto count = [&shared] {
        for (int round = 0; round < 100000; ++round)
            ++shared;
    };
    std::thread other(count);
    count();
    other.join();
}

void takeBoth(platform::KernelMutex& first, platform::KernelMutex& second) {
    first.lock(platform::kNoTimeout);
    second.lock(platform::kNoTimeout);
    second.unlock();
    first.unlock();
}

// The threads run one after the other, so there is no deadlock: the lock order alone is reported.
void takeTwoLocksInBothOrders() {
    platform::KernelMutex a;
    platform::KernelMutex b;
    std::thread([&a, &b] { takeBoth(a, b); }).join();
    std::thread([&a, &b] { takeBoth(b, a); }).join();
}

// Allocates a block without writing to it. The pointer is volatile so that the compiler keeps all
// of it.
constexpr unsigned kBlockBytes = 16;
struct Freed {
    void operator()(void* block) const { std::free(block); }
};
std::unique_ptr<void, Freed> undefinedBlock() {
    void* volatile block = std::malloc(kBlockBytes);
    return std::unique_ptr<void, Freed>(block);
}

void writeUndefinedBytesToAPipe() {
    platform::writePipe(platform::invalidHandle(), undefinedBlock().get(), kBlockBytes);
}

void writeUndefinedBytesToTheRegistry() {
    platform::RegistryKey key;
    if (key.createForWriting(platform::Hive::CurrentUser, L"PlantedFault") != platform::kSuccess)
        return;
    static_cast<void>(
        key.write(L"Value", platform::ValueType::Binary, undefinedBlock().get(), kBlockBytes));
}

void loseABlock() {
    static_cast<void>(undefinedBlock().release());
}

}  // namespace

int main(int argumentCount, char** arguments) {
    const std::string_view fault = argumentCount > 1 ? arguments[1] : "";
    if (fault == "address") overrunTheHeap();
    if (fault == "undefined") overflowANumber(argumentCount);
    if (fault == "thread") raceForAVariable();
    if (fault == "lock_order") takeTwoLocksInBothOrders();
    if (fault == "undefined_to_pipe") writeUndefinedBytesToAPipe();
    if (fault == "undefined_to_registry") writeUndefinedBytesToTheRegistry();
    if (fault == "leak") loseABlock();
    std::puts("the planted fault was not found");
    return 0;
}
