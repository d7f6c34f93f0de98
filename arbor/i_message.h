#pragma once

#include "arbor/guid.h"
#include "arbor/i_property_holder.h"

#include <cstdint>

namespace arbor {

inline constexpr std::uint32_t kExclusiveFlag = 1;  // deliver to the first listener that takes it

// What generators post and listeners hear: a type, a code, flags and a bag. Filled by its sender
// before it is posted, read on the main thread after; shared by reference only, never copied.
class IMessage {
public:
    IMessage() = default;
    IMessage(const IMessage&) = delete;
    IMessage& operator=(const IMessage&) = delete;

    // The slots below are fixed in number and order.

    // Not owned: types are identifiers that live until the process ends.
    [[nodiscard]] virtual const Guid* getType() const = 0;
    [[nodiscard]] virtual std::uint32_t getCode() const = 0;
    [[nodiscard]] virtual std::uint32_t getFlags() const = 0;
    virtual void setFlags(std::uint32_t flags) = 0;
    [[nodiscard]] virtual bool isExclusive() const = 0;
    // The bag, owned by the message. Never null.
    virtual IPropertyHolder* getProperties() = 0;
    [[nodiscard]] virtual IPropertyHolder* getProperties() const = 0;

    virtual ~IMessage() = default;
};

}  // namespace arbor
