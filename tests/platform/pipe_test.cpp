#include "platform/pipe.h"

#include "platform/lock.h"
#include "platform/thread.h"
#include "system.h"

#include <gtest/gtest.h>
#include <array>
#include <atomic>
#include <string>

namespace {

using contract::PipeServer;
using platform::PipeRead;

class PipeTest : public testing::Test {
protected:
    // Every test needs its own pipe, because an opened pipe handle is never closed.
    static std::wstring freshName() {
        static int count = 0;
        return L"contract-pipe-" + std::to_wstring(++count);
    }

    void open(PipeServer& server) {
        _pipe = platform::openPipeForReading(server.path().c_str());
        ASSERT_NE(_pipe, platform::invalidHandle());
        platform::setMessageReadMode(_pipe);
    }
    PipeRead read(std::uint32_t count) {
        _buffer.fill('-');
        return platform::readPipe(_pipe, _buffer.data(), count);
    }
    [[nodiscard]] std::string arrived(const PipeRead& result) const {
        return {_buffer.data(), result.bytes};
    }

    platform::NativeHandle _pipe = nullptr;
    std::array<char, 64> _buffer{};
};

TEST_F(PipeTest, AMissingPipeTakesNoClient) {
    EXPECT_FALSE(platform::waitForPipe(L"\\\\.\\pipe\\contract-never-made"));
    EXPECT_EQ(platform::openPipeForReading(L"\\\\.\\pipe\\contract-never-made"),
              platform::invalidHandle());
}

TEST_F(PipeTest, AWaitingServerTakesOneClient) {
    PipeServer server(freshName());

    EXPECT_TRUE(platform::waitForPipe(server.path().c_str()));
    open(server);

    EXPECT_EQ(platform::openPipeForReading(server.path().c_str()), platform::invalidHandle());
}

TEST_F(PipeTest, AMessageArrivesWhole) {
    PipeServer server(freshName());
    open(server);
    server.write("record");

    const PipeRead result = read(64);

    EXPECT_FALSE(result.failed);
    EXPECT_EQ(result.error, 0U);
    EXPECT_EQ(arrived(result), "record");
}

TEST_F(PipeTest, PartOfAMessageIsNoFailureAndTheRestFollows) {
    PipeServer server(freshName());
    open(server);
    server.write("headerbody");

    const PipeRead header = read(6);
    const std::string first = arrived(header);
    const PipeRead body = read(64);

    EXPECT_FALSE(header.failed);
    EXPECT_EQ(header.error, 0U);
    EXPECT_EQ(first, "header");
    EXPECT_FALSE(body.failed);
    EXPECT_EQ(arrived(body), "body");
}

TEST_F(PipeTest, AReadEndsAtTheEndOfItsMessage) {
    PipeServer server(freshName());
    open(server);
    server.write("one");
    server.write("two");

    EXPECT_EQ(arrived(read(64)), "one");
    EXPECT_EQ(arrived(read(64)), "two");
}

TEST_F(PipeTest, AnEmptyMessageIsNoBytesAndNoFailure) {
    PipeServer server(freshName());
    open(server);
    server.write("");
    server.write("after");

    const PipeRead empty = read(64);

    EXPECT_FALSE(empty.failed);
    EXPECT_EQ(empty.bytes, 0U);
    EXPECT_EQ(arrived(read(64)), "after");
}

TEST_F(PipeTest, ABytePipeRefusesMessageModeAndIsReadAllTheSame) {
    PipeServer server(freshName(), PipeServer::Kind::Byte);
    open(server);
    server.write("headerbody");

    EXPECT_EQ(arrived(read(6)), "header");
    EXPECT_EQ(arrived(read(64)), "body");
}

TEST_F(PipeTest, WhatWasWrittenBeforeTheEndStillArrives) {
    PipeServer server(freshName());
    open(server);
    server.write("last words");
    server.close();

    EXPECT_EQ(arrived(read(64)), "last words");
    const PipeRead end = read(64);
    EXPECT_TRUE(end.failed);
    EXPECT_EQ(end.error, platform::kBrokenPipe);
}

TEST_F(PipeTest, AReadWithoutAPipeFails) {
    const PipeRead result = read(64);

    EXPECT_TRUE(result.failed);
    EXPECT_EQ(result.error, platform::kInvalidHandleError);
    EXPECT_EQ(_buffer[0], '-');
}

struct Reader {
    platform::NativeHandle pipe;
    PipeRead result{};
    char byte = '-';
    static std::uint32_t run(void* parameter) {
        auto* const self = static_cast<Reader*>(parameter);
        self->result = platform::readPipe(self->pipe, &self->byte, 1);
        return 0;
    }
};

TEST_F(PipeTest, AReadWaitsForTheServer) {
    PipeServer server(freshName());
    open(server);
    Reader reader{_pipe};
    std::atomic<std::uint32_t> id{0};
    const auto thread = platform::startThread(&Reader::run, &reader, id);

    EXPECT_EQ(platform::waitForThread(thread, 20), 258U);
    server.write("x");

    EXPECT_EQ(platform::waitForThread(thread, platform::kNoTimeout), 0U);
    platform::closeThread(thread);
    EXPECT_EQ(reader.byte, 'x');
}

TEST_F(PipeTest, AWriteReachesTheServer) {
    PipeServer server(freshName());
    const auto pipe = platform::openPipeForWriting(server.path().c_str());
    ASSERT_NE(pipe, platform::invalidHandle());

    EXPECT_TRUE(platform::writePipe(pipe, "header only", 11));

    EXPECT_EQ(server.received(11), "header only");
}

TEST_F(PipeTest, AWriteToAServerThatIsGoneFails) {
    PipeServer server(freshName());
    const auto pipe = platform::openPipeForWriting(server.path().c_str());
    server.close();

    EXPECT_FALSE(platform::writePipe(pipe, "x", 1));
    EXPECT_FALSE(platform::writePipe(nullptr, "x", 1));
}

}  // namespace
