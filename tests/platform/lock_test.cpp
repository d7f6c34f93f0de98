#include "platform/lock.h"

#include "platform/thread.h"

#include <gtest/gtest.h>
#include <array>
#include <atomic>

namespace {

using platform::kNoTimeout;

void lock(platform::KernelMutex& mutex) {
    mutex.lock(kNoTimeout);
}
void lock(platform::CriticalSection& section) {
    section.lock();
}

template <typename Lock>
class LockTest : public testing::Test {
protected:
    static constexpr int kRounds = 1000;

    static std::uint32_t countUp(void* parameter) {
        auto* const self = static_cast<LockTest*>(parameter);
        for (int i = 0; i < kRounds; ++i) {
            lock(self->_lock);
            self->_count = self->_count + 1;
            self->_lock.unlock();
        }
        return 0;
    }

    Lock _lock;
    int _count = 0;
};

using Locks = testing::Types<platform::KernelMutex, platform::CriticalSection>;
TYPED_TEST_SUITE(LockTest, Locks);

TYPED_TEST(LockTest, OnlyOneThreadAtATimeIsInside) {
    std::array<platform::NativeHandle, 4> threads{};
    std::atomic<std::uint32_t> id{0};

    for (auto& thread : threads)
        thread = platform::startThread(&this->countUp, this, id);
    for (const auto& thread : threads) {
        ASSERT_EQ(platform::waitForThread(thread, kNoTimeout), 0U);
        platform::closeThread(thread);
    }

    EXPECT_EQ(this->_count, 4 * TestFixture::kRounds);
}

TYPED_TEST(LockTest, ItsOwnerMayTakeItAgain) {
    lock(this->_lock);
    lock(this->_lock);
    this->_lock.unlock();
    this->_lock.unlock();

    std::atomic<std::uint32_t> id{0};
    const auto other = platform::startThread(&this->countUp, this, id);
    EXPECT_EQ(platform::waitForThread(other, kNoTimeout), 0U) << "free again for another thread";
    platform::closeThread(other);
}

TYPED_TEST(LockTest, AThreadWaitsWhileAnotherIsInside) {
    lock(this->_lock);
    std::atomic<std::uint32_t> id{0};
    const auto other = platform::startThread(&this->countUp, this, id);

    EXPECT_EQ(platform::waitForThread(other, 20), 258U);
    EXPECT_EQ(this->_count, 0);

    this->_lock.unlock();
    EXPECT_EQ(platform::waitForThread(other, kNoTimeout), 0U);
    platform::closeThread(other);
    EXPECT_EQ(this->_count, TestFixture::kRounds);
}

struct Impatient {
    platform::KernelMutex mutex;
    static std::uint32_t run(void* parameter) {
        static_cast<Impatient*>(parameter)->mutex.lock(10);
        return 0;
    }
};

TEST(KernelMutexTest, AWaitEndsAtItsTimeOut) {
    Impatient impatient;
    impatient.mutex.lock(kNoTimeout);
    std::atomic<std::uint32_t> id{0};

    const auto thread = platform::startThread(&Impatient::run, &impatient, id);

    EXPECT_EQ(platform::waitForThread(thread, kNoTimeout), 0U);
    impatient.mutex.unlock();
    platform::closeThread(thread);
}

}  // namespace
