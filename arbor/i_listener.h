#pragma once

namespace arbor {

class IMessage;

// Receives messages.
class IListener {
public:
    IListener() = default;
    IListener(const IListener&) = delete;
    IListener& operator=(const IListener&) = delete;

    // True when the message was consumed, which ends the delivery of an exclusive message.
    // `message` belongs to the caller and must not be kept. Messages of the broker come on the main
    // thread, those about the end of a thread on the thread that ends.
    virtual bool notify(IMessage* message) = 0;

    virtual ~IListener() = default;
};

}  // namespace arbor
