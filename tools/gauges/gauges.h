#pragma once

#include <cstdint>

// What a process has allocated from the system. It is counted in ways that also work under Wine,
// where the system's own counters are always 0. Windows only.
struct Gauges {
    long handles = 0;     // kernel objects
    long gdiObjects = 0;  // device contexts, bitmaps, fonts, brushes, pens, regions
    long windows = 0;     // top-level windows and their children, hidden ones included
    long threads = 0;
    long heapBlocks = 0;  // counted for this process only, 0 for others
    long memoryKiB = 0;   // committed memory

    bool operator==(const Gauges&) const = default;
};

// Reads this process. The first reading makes objects that stay, so do not compare with it.
[[nodiscard]] Gauges readGauges();
// Reads another process by its id. A gauge that cannot be read is -1.
[[nodiscard]] Gauges readGaugesOf(std::uint32_t processId);

// Compares two readings for a leak check: lists the gauges that are higher in `after`, for example
// "handles 23 -> 25". The text is empty when none is. memoryKiB is not compared.
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
