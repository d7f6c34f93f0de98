#include "printer/status_texts.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace {

struct StatusText {
    std::int32_t status;
    std::uint32_t resource;  // string id
};

// Searched by halves, so ascending; the assertion below keeps it so.
// clang-format off
constexpr StatusText kStatusTexts[] = {
    {10209, 159}, {10219, 159}, {10300, 163}, {10403, 171}, {10407, 171}, {10500, 172},
    {10511, 179}, {10512, 179}, {30017, 210}, {30119, 153}, {40010, 147}, {40017, 210},
    {40020, 145}, {40021, 146}, {40600, 141}, {40608, 353}, {40610, 353}, {40612, 353},
    {40614, 353}, {42000, 234}, {42001, 233}, {42002, 232}, {42003, 133}, {42004, 133},
    {42100, 234}, {42300, 234}, {50003, 165}, {50006, 119}, {50007, 165}, {50008, 165},
    {50012, 125}, {50020, 165}, {50021, 165}, {50023, 165}, {50024, 165}, {50025, 165},
};
// clang-format on

constexpr bool strictlyAscending() {
    for (std::size_t i = 1; i < std::size(kStatusTexts); ++i) {
        if (kStatusTexts[i - 1].status >= kStatusTexts[i].status) return false;
    }
    return true;
}
static_assert(strictlyAscending(), "the lower-bound search needs each status once, in order");

const StatusText* find(std::int32_t status) {
    const StatusText* const row = std::lower_bound(
        std::begin(kStatusTexts), std::end(kStatusTexts), status,
        [](const StatusText& text, std::int32_t code) { return text.status < code; });
    return row != std::end(kStatusTexts) && row->status == status ? row : nullptr;
}

}  // namespace

bool isKnownStatus(std::int32_t status) {
    return find(status) != nullptr;
}

std::uint32_t statusResource(std::int32_t status) {
    const StatusText* const row = find(status);
    return row != nullptr ? row->resource : kNoStatusResource;
}
