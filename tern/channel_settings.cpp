#include "tern/channel_settings.h"

namespace tern {

ChannelSettings& channelSettings() noexcept {
    static ChannelSettings theOne;
    return theOne;
}

}  // namespace tern
