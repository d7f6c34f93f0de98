#include "ui/windows/input_methods.h"

#include <windows.h>

#include <imm.h>

void keepInputMethodsOut() noexcept {
    constexpr DWORD kThisThread = 0;
    ::ImmDisableIME(kThisThread);
}
