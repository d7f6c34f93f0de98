#pragma once

#include "arbor/guid.h"
#include "arbor/i_message.h"
#include "arbor/i_property_holder.h"
#include "arbor/property_holder.h"

#include <cstdint>

namespace arbor {

// A message with a bag of its own.
class Message : public IMessage {
public:
    // `type` must live as long as the message. `properties` is not used: a new message has an empty
    // bag, which its sender fills through getProperties().
    Message(const Guid* type, std::uint32_t code, std::uint32_t flags,
            const IPropertyHolder* properties = nullptr) noexcept;

    [[nodiscard]] const Guid* getType() const override { return _type; }
    [[nodiscard]] std::uint32_t getCode() const override { return _code; }
    [[nodiscard]] std::uint32_t getFlags() const override { return _flags; }
    void setFlags(std::uint32_t flags) override { _flags = flags; }
    [[nodiscard]] bool isExclusive() const override { return (_flags & kExclusiveFlag) != 0; }
    PropertyHolder* getProperties() override { return &_properties; }
    [[nodiscard]] PropertyHolder* getProperties() const override { return &_properties; }

private:
    const Guid* _type;  // not owned
    std::uint32_t _code;
    std::uint32_t _flags;
    mutable PropertyHolder _properties;
};

}  // namespace arbor
