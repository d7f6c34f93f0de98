#include "ui/windows/window_properties.h"

#include <new>

namespace {

SetProperty propertyFunction = ::SetPropW;

}  // namespace

void setWindowProperty(HWND window, const wchar_t* name, void* value) {
    if (!propertyFunction(window, name, value)) throw std::bad_alloc();
}

void setPropertyFunction(SetProperty function) noexcept {
    propertyFunction = function != nullptr ? function : ::SetPropW;
}
