#pragma once

#include "platform/simulated/world.h"
#include "tests/fault_injection/faults_fixture.h"

#include <functional>

namespace fault_injection {

// For tests on the simulated platform, whose calls fail as well.
class PlatformFaultsTest : public FaultsTest {
protected:
    // The first, second, ... call of each of these kinds fails, each time together with every
    // allocation of the scene, until the scene makes no such call. `prepare` empties the platform
    // before the fault is put into it.
    template <typename Calls>
    static void failEachCallAndAllocation(const Calls& calls, const std::function<void()>& prepare,
                                          const Scene& scene, const Check& check) {
        auto& faults = platform::simulated::world().faults;
        for (const auto call : calls) {
            long struck = 1;
            for (long nth = 1; struck > 0; ++nth) {
                struck = 0;
                failEachAllocation(
                    [&] {
                        prepare();
                        EXPECT_TRUE(faults.add({call, nth, GetParam() == Mode::FromThenOn}));
                        return scene();
                    },
                    [&](long failed) {
                        struck += faults.struck();
                        check(failed);
                    });
            }
        }
    }
};

}  // namespace fault_injection
