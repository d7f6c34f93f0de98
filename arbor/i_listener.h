#pragma once

namespace arbor {

class IMessage;

// Whoever is called with messages.
class IListener {
public:
    IListener() = default;
    IListener(const IListener&) = delete;
    IListener& operator=(const IListener&) = delete;

    // True when the message was consumed: it ends the delivery of an exclusive message. `message`
    // is the caller's and must not be kept.
    virtual bool notify(IMessage* message) = 0;

    virtual ~IListener() = default;
};

}  // namespace arbor
