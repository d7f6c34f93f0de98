#pragma once

#include "arbor/guid.h"
#include "arbor/i_message.h"
#include "arbor/i_property_holder.h"

#include <cstdint>

namespace arbor {

// A message without a payload. Its bag is one empty bag that all simple messages share: nobody may
// write into it.
class SimpleMessage : public IMessage {
public:
    // `type` must live as long as the message.
    SimpleMessage(const Guid* type, std::uint32_t code, std::uint32_t flags) noexcept
        : _type(type), _code(code), _flags(flags) {}

    [[nodiscard]] const Guid* getType() const override { return _type; }
    [[nodiscard]] std::uint32_t getCode() const override { return _code; }
    [[nodiscard]] std::uint32_t getFlags() const override { return _flags; }
    void setFlags(std::uint32_t flags) override { _flags = flags; }
    [[nodiscard]] bool isExclusive() const override { return (_flags & kExclusiveFlag) != 0; }
    IPropertyHolder* getProperties() override;
    [[nodiscard]] IPropertyHolder* getProperties() const override;

private:
    const Guid* _type;  // not owned
    std::uint32_t _code;
    std::uint32_t _flags;
};

}  // namespace arbor
