#include "ui/windows/dialog_template.h"

#include "ui/windows/display_settings.h"

#include <cstring>

namespace {

// A template has one of two forms. An extended one (DIALOGEX) starts with the words 1 and 0xFFFF. A
// plain one starts with its style, whose upper word is never 0xFFFF.
constexpr WORD kExtendedSignature = 0xFFFF;      // second word of an extended template, after a 1
constexpr std::size_t kStyleOffsetExtended = 8;  // bytes, of the extended style
constexpr std::size_t kStyleOffsetPlain = 4;
constexpr DWORD kMirrored = WS_EX_LAYOUTRTL | WS_EX_RTLREADING;

std::span<const std::byte> templateBytes(HINSTANCE module, int templateId) {
    const HRSRC found =
        // Equally right with nullptr for module: the system then looks in the program, as asked.
        ::FindResourceW(module, MAKEINTRESOURCEW(templateId), reinterpret_cast<LPCWSTR>(RT_DIALOG));
    if (found == nullptr) return {};
    const HGLOBAL loaded = ::LoadResource(module, found);
    const void* bytes = loaded != nullptr ? ::LockResource(loaded) : nullptr;
    if (bytes == nullptr) return {};
    return {static_cast<const std::byte*>(bytes), ::SizeofResource(module, found)};
}

std::vector<std::byte> mirroredTemplate(HINSTANCE module, int templateId) {
    return ::mirroredTemplate(templateBytes(module, templateId));
}

// Some buttons have the same style bits as a picture, so the control is asked what it is.
BOOL CALLBACK keepUnmirrored(HWND control, LPARAM) {
    const LONG_PTR kind = ::GetWindowLongPtrW(control, GWL_STYLE) & SS_TYPEMASK;
    const bool isStatic = (::SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_STATIC) != 0;
    if (!isStatic || (kind != SS_BITMAP && kind != SS_ICON)) return TRUE;
    const LONG_PTR style = ::GetWindowLongPtrW(control, GWL_EXSTYLE);
    ::SetWindowLongPtrW(control, GWL_EXSTYLE, style & ~static_cast<LONG_PTR>(WS_EX_LAYOUTRTL));
    return TRUE;
}

const DLGTEMPLATE* asTemplate(const std::vector<std::byte>& bytes) {
    return reinterpret_cast<const DLGTEMPLATE*>(bytes.data());
}

}  // namespace

HWND createDialog(HINSTANCE module, int templateId, DLGPROC procedure, LPARAM value) {
    if (!desktopIsMirrored()) {
        return ::CreateDialogParamW(module, MAKEINTRESOURCEW(templateId), nullptr, procedure,
                                    value);
    }
    const std::vector<std::byte> copy = mirroredTemplate(module, templateId);
    if (copy.empty()) return nullptr;
    return ::CreateDialogIndirectParamW(module, asTemplate(copy), nullptr, procedure, value);
}

INT_PTR runDialog(HINSTANCE module, int templateId, HWND owner, DLGPROC procedure) {
    if (!desktopIsMirrored()) {
        // Equally right with nullptr for module: the system then looks in the program, as asked.
        return ::DialogBoxParamW(module, MAKEINTRESOURCEW(templateId), owner, procedure, 0);
    }
    const std::vector<std::byte> copy = mirroredTemplate(module, templateId);
    if (copy.empty()) return -1;
    return ::DialogBoxIndirectParamW(module, asTemplate(copy), owner, procedure, 0);
}

void keepPicturesUnmirrored(HWND dialog) {
    ::EnumChildWindows(dialog, keepUnmirrored, 0);
}

std::vector<std::byte> mirroredTemplate(std::span<const std::byte> original) {
    if (original.size() < sizeof(DLGTEMPLATE)) return {};
    std::vector<std::byte> copy(original.begin(), original.end());
    // Copied in and out, because the bytes are no objects of these types.
    WORD signature[2];
    std::memcpy(signature, copy.data(), sizeof(signature));
    const bool isExtended = signature[0] == 1 && signature[1] == kExtendedSignature;
    std::byte* place = copy.data() + (isExtended ? kStyleOffsetExtended : kStyleOffsetPlain);
    DWORD style = 0;
    std::memcpy(&style, place, sizeof(style));
    style |= kMirrored;
    std::memcpy(place, &style, sizeof(style));
    return copy;
}
