#pragma once

#include "platform/pipe.h"
#include "system.h"
#include "tern/channel_settings.h"
#include "tern/velo_event_generator.h"
#include "tests/support/eventually.h"
#include "tests/support/recording_broker.h"
#include "tests/support/records.h"
#include "tests/support/test_components.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace test {

inline void setChannel(const std::wstring& pipeName, std::uint32_t printerId) {
    auto& settings = tern::channelSettings();
    settings.inputPipe.fill(L'\0');
    std::copy(pipeName.begin(), pipeName.end(), settings.inputPipe.begin());
    settings.printerId = static_cast<std::int32_t>(printerId);
}

// A pipe name that this process has not used before.
inline std::wstring newPipeName() {
    static std::atomic<int> last{0};
    return L"status-channel-" + std::to_wstring(++last);
}

// The input pipe with a print path at one end and a generator at the other.
template <typename Generator = tern::VeloEventGenerator>
class StatusChannel {
public:
    using Kind = contract::PipeServer::Kind;

    explicit StatusChannel(Kind kind = Kind::Message) : server(newPipeName(), kind) {
        constexpr std::size_t kPrefixUnits = 9;
        setChannel(server.path().substr(kPrefixUnits), records::kPrinter);
        arbor::PropertyHolder parameters;
        generator = std::make_unique<Generator>(parameters, &manager);
    }

    // Writes each piece separately and closes the pipe. Then it waits for the end of the thread of
    // the generator.
    void play(const std::vector<std::string>& pieces) {
        generator->start();
        for (const std::string& piece : pieces)
            server.write(piece);
        server.close();
        finished = generator->wait(kFailureMs) == 0;
    }

    [[nodiscard]] std::vector<tern::MessageReference> messages() { return broker.messages(); }

    contract::PipeServer server;
    TestManager<RecordingBroker> manager;
    RecordingBroker& broker = manager.broker;
    std::unique_ptr<Generator> generator;
    bool finished = false;
};

}  // namespace test
