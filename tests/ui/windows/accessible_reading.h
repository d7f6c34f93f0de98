#pragma once

#include <windows.h>

#include <oleacc.h>
#include <string>

// What a screen reader learns about a control, asked as a reader asks: with
// AccessibleObjectFromWindow.
namespace accessible {

class Object {
public:
    explicit Object(HWND control) {
        void* found = nullptr;
        if (SUCCEEDED(::AccessibleObjectFromWindow(control, static_cast<DWORD>(OBJID_CLIENT),
                                                   __uuidof(IAccessible), &found))) {
            _object = static_cast<IAccessible*>(found);
        }
    }
    ~Object() {
        if (_object != nullptr) _object->Release();
    }
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    [[nodiscard]] IAccessible* get() const { return _object; }
    [[nodiscard]] std::wstring name() const { return text(&IAccessible::get_accName); }
    [[nodiscard]] std::wstring action() const { return text(&IAccessible::get_accDefaultAction); }
    [[nodiscard]] std::wstring shortcut() const {
        return text(&IAccessible::get_accKeyboardShortcut);
    }
    [[nodiscard]] LONG role() const { return number(&IAccessible::get_accRole); }
    [[nodiscard]] LONG state() const { return number(&IAccessible::get_accState); }
    [[nodiscard]] HRESULT act() const { return _object->accDoDefaultAction(self()); }

    static VARIANT self() {
        VARIANT child{};
        child.vt = VT_I4;
        child.lVal = CHILDID_SELF;
        return child;
    }

private:
    using TextFunction = HRESULT (STDMETHODCALLTYPE IAccessible::*)(VARIANT, BSTR*);
    using NumberFunction = HRESULT (STDMETHODCALLTYPE IAccessible::*)(VARIANT, VARIANT*);

    [[nodiscard]] std::wstring text(TextFunction function) const {
        BSTR answer = nullptr;
        if (_object == nullptr || (_object->*function)(self(), &answer) != S_OK) return {};
        std::wstring copy(answer, ::SysStringLen(answer));
        ::SysFreeString(answer);
        return copy;
    }
    // -1 where there is no answer.
    [[nodiscard]] LONG number(NumberFunction function) const {
        VARIANT answer{};
        if (_object == nullptr || (_object->*function)(self(), &answer) != S_OK) return -1;
        return answer.vt == VT_I4 ? answer.lVal : -1;
    }

    IAccessible* _object = nullptr;
};

}  // namespace accessible
