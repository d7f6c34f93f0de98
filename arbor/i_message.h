#pragma once

#include "arbor/guid.h"
#include "arbor/i_property_holder.h"

#include <cstdint>

namespace arbor {

inline constexpr std::uint32_t kExclusiveFlag = 1;  // ends delivery with the first that takes it

// A message to the listeners: a type, a code, flags and a bag. Its sender fills it before it is
// posted, the main thread reads it afterwards. It is shared by reference and never copied.
class IMessage {
public:
    IMessage() = default;
    IMessage(const IMessage&) = delete;
    IMessage& operator=(const IMessage&) = delete;

    // The order of the operations below is part of the design (kept: see decision 0012).

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
