#include "arbor/message.h"

namespace arbor {

Message::Message(const Guid* type, std::uint32_t code, std::uint32_t flags,
                 const IPropertyHolder*) noexcept
    : _type(type), _code(code), _flags(flags) {}

}  // namespace arbor
