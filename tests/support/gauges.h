#pragma once

#include <cstdint>

// What a process holds of the system, read in ways that work under Wine as well, where the system's
// own counters always say 0. Windows only.
struct Gauges {
    long handles = 0;     // kernel objects
    long gdiObjects = 0;  // device contexts, bitmaps, fonts, brushes, pens, regions
    long windows = 0;     // top-level windows and their children, hidden ones included
    long threads = 0;
    long heapBlocks = 0;  // of this process only, else 0
    long memoryKiB = 0;   // committed memory

    bool operator==(const Gauges&) const = default;
};

// Of this process. A first reading settles what is made at first use: take one and throw it away.
[[nodiscard]] Gauges readGauges();
// Of another process, by its id; a gauge that cannot be read is -1.
[[nodiscard]] Gauges readGaugesOf(std::uint32_t processId);

// How a leak check compares: `after` may not hold more than `before`, memoryKiB left out. Empty
// when it does not, else what grew, for example "handles 23 -> 25".
class GaugeText {
public:
    GaugeText(const Gauges& before, const Gauges& after);
    [[nodiscard]] const char* text() const { return _text; }
    [[nodiscard]] bool isFlat() const { return _text[0] == '\0'; }

private:
    void add(const char* name, long before, long after);

    static constexpr int kTextBytes = 256;
    char _text[kTextBytes] = {};
    int _used = 0;
};
