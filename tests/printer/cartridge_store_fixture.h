#pragma once

#include "platform/clock.h"
#include "printer/cartridge_store.h"
#include "tests/printer/stored_values.h"
#include "tests/support/trace_lines.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// The tests use the registry through platform/. Natively that is the simulated registry, and in the
// Windows build the real one.
class CartridgeStoreFixture : public testing::Test {
protected:
    using Lines = std::vector<std::string>;

    static constexpr char kLoading[] = "TERNA GetCartData";
    static constexpr char kMakingNew[] =
        "TERNA GetCartData -- No reg key found or bad version, Initializing Cart Data";

    void SetUp() override { stored::clear(); }
    void TearDown() override { stored::clear(); }

    // Stores a record of version 4 with these cartridges, the first of them in entry 0.
    static void store(
        const std::vector<std::pair<std::uint32_t, platform::UnixSeconds>>& cartridges) {
        CartridgeRecord record;
        std::size_t entry = 0;
        for (const auto& [serial, added] : cartridges)
            record.assign(entry++, serial, added);
        stored::writeVersion(4);
        stored::writeRecord(stored::Bytes(record.bytes(), record.bytes() + kCartridgeRecordBytes));
    }

    static CartridgeRecord load() {
        CartridgeRecord record;
        EXPECT_TRUE(GetCartData(record));
        return record;
    }

    CartridgeRecord buffer;
    TraceLines trace;
};
