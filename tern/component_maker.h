#pragma once

namespace arbor {
class IPropertyHolder;
class PropertyHolder;
}  // namespace arbor

namespace tern {

class IInstanceManager;

// Makes a component from its parameters, which live during the call only. The caller owns the
// result; null when it cannot be allocated.
using ComponentMaker = arbor::PropertyHolder* (*)(const arbor::IPropertyHolder& parameters,
                                                  IInstanceManager* owner);

// First key of the entries that hold the makers; the second is the class's guidText().
inline constexpr wchar_t kMakersKey[] = L"Makers";

// The maker of a component class that is constructed from parameters and owner. A constructor that
// throws leaves no component: the try block of the function turns that into null.
template <typename Component>
arbor::PropertyHolder* makeComponent(const arbor::IPropertyHolder& parameters,
                                     IInstanceManager* owner) try {
    return new Component(parameters, owner);
} catch (...) {
    return nullptr;
}

}  // namespace tern
