#pragma once

#include "arbor/abstract_thread.h"

#include <functional>
#include <utility>

namespace test {

// A framework thread that runs a function of the test.
class TestThread : public arbor::AbstractThread {
public:
    explicit TestThread(std::function<std::uint32_t()> body) : _body(std::move(body)) {}
    ~TestThread() override { endThreadUse(); }

    std::uint32_t run() override { return _body(); }

private:
    std::function<std::uint32_t()> _body;
};

}  // namespace test
