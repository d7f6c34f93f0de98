// Commits the fault that it is told to, on purpose. A sanitizer must stop it: otherwise a lost
// compiler flag would pass for clean code.
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

}  // namespace

int main(int argumentCount, char** arguments) {
    const std::string_view fault = argumentCount > 1 ? arguments[1] : "";
    if (fault == "address") overrunTheHeap();
    if (fault == "undefined") overflowANumber(argumentCount);
    if (fault == "thread") raceForAVariable();
    std::puts("the canary survived");
    return 0;
}
