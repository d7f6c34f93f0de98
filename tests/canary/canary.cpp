// Commits the fault that it is told to, on purpose. A sanitizer must stop it: otherwise a lost
// compiler flag would pass for clean code.
#include "platform/lock.h"

#include <cstdio>
#include <limits>
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

// Two threads, one after the other: what is reported is the order, not the deadlock of a bad day.
void takeTwoLocksInBothOrders() {
    platform::KernelMutex a;
    platform::KernelMutex b;
    std::thread([&a, &b] { takeBoth(a, b); }).join();
    std::thread([&a, &b] { takeBoth(b, a); }).join();
}

}  // namespace

int main(int argumentCount, char** arguments) {
    const std::string_view fault = argumentCount > 1 ? arguments[1] : "";
    if (fault == "address") overrunTheHeap();
    if (fault == "undefined") overflowANumber(argumentCount);
    if (fault == "thread") raceForAVariable();
    if (fault == "lock_order") takeTwoLocksInBothOrders();
    std::puts("the canary survived");
    return 0;
}
