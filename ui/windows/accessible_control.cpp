#include "ui/windows/accessible_control.h"

#include "platform/windows/lazy_library.h"
#include "ui/windows/hyperlink.h"
#include "ui/windows/subclass.h"
#include "ui/windows/window_resources.h"

#include <oleacc.h>
#include <oleauto.h>
#include <atomic>
#include <memory>
#include <new>
#include <string_view>

namespace {

constexpr wchar_t kOriginalProcedure[] = L"_Described_Proc_";
constexpr int kLongestText = 1024;  // units of a control's text, as texts are loaded
constexpr int kLongestClass = 32;

// Most runs meet no screen reader, so nothing of this is loaded before the first one asks.
constexpr wchar_t kAccessLibrary[] = L"oleacc.dll";
constexpr wchar_t kAutomationLibrary[] = L"oleaut32.dll";
constexpr wchar_t kComLibrary[] = L"ole32.dll";
using platform::LazyFunction;
LazyFunction<decltype(&::CreateStdAccessibleObject)> standardObject(kAccessLibrary,
                                                                    "CreateStdAccessibleObject");
LazyFunction<decltype(&::LresultFromObject)> answerOf(kAccessLibrary, "LresultFromObject");
LazyFunction<decltype(&::SysAllocStringLen)> allocateText(kAutomationLibrary, "SysAllocStringLen");
LazyFunction<decltype(&::CoInitializeEx)> coInitialize(kComLibrary, "CoInitializeEx");

enum class Kind { Text, Picture, Link, Button, List, Other };

// Other of a window that is not described (any more): an object may be kept longer than its window,
// whose number then may belong to another one.
Kind kindOf(HWND control) {
    if (!isSubclassed(control, kOriginalProcedure)) return Kind::Other;
    wchar_t text[kLongestClass] = {};
    ::GetClassNameW(control, text, kLongestClass);
    const std::wstring_view name(text);
    if (name == L"Button") return Kind::Button;
    if (name == L"ComboBox") return Kind::List;
    if (name != L"Static") return Kind::Other;
    if (isHyperLink(control)) return Kind::Link;
    const LONG_PTR type = ::GetWindowLongPtrW(control, GWL_STYLE) & SS_TYPEMASK;
    return type == SS_BITMAP || type == SS_ICON ? Kind::Picture : Kind::Text;
}

struct RoleRow {
    Kind kind;
    LONG role;
};
constexpr RoleRow kRoles[] = {{Kind::Text, ROLE_SYSTEM_STATICTEXT},
                              {Kind::Picture, ROLE_SYSTEM_GRAPHIC},
                              {Kind::Link, ROLE_SYSTEM_LINK},
                              {Kind::Button, ROLE_SYSTEM_PUSHBUTTON},
                              {Kind::List, ROLE_SYSTEM_COMBOBOX}};

// Also of a picture, which answers WM_GETTEXT with nothing on some systems.
std::wstring_view windowText(HWND control, wchar_t (&buffer)[kLongestText]) {
    const int units = ::InternalGetWindowText(control, buffer, kLongestText);
    return {buffer, static_cast<std::size_t>(units)};
}

HRESULT give(std::wstring_view text, BSTR* result) {
    *result = nullptr;
    if (text.empty()) return S_FALSE;
    *result = allocateText.get()(text.data(), static_cast<UINT>(text.size()));
    return *result != nullptr ? S_OK : E_OUTOFMEMORY;
}

struct Release {
    void operator()(IUnknown* object) const noexcept { object->Release(); }
};
using Standard = std::unique_ptr<IAccessible, Release>;

// The interfaces of COM have no virtual destructor, and nothing is destroyed through them:
// Release() destroys the object as what it is.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// What a reader gets for one control. It lives as long as a reader keeps it, which may be longer
// than the window; the system's object then fails by itself, and texts are empty.
class AccessibleControl final : public IAccessible {
public:
    AccessibleControl(HWND control, Standard standard)
        : _control(control), _standard(std::move(standard)) {}

    // The other interfaces of the system's object know nothing of names and roles.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** result) override {
        if (wanted == __uuidof(IUnknown) || wanted == __uuidof(IDispatch) ||
            wanted == __uuidof(IAccessible)) {
            *result = static_cast<IAccessible*>(this);
            AddRef();
            return S_OK;
        }
        return _standard->QueryInterface(wanted, result);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --_references;
        if (left == 0) delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override {
        const Kind kind = kindOf(_control);
        for (const RoleRow& row : kRoles) {
            if (!isSelf(child) || row.kind != kind) continue;
            role->vt = VT_I4;
            role->lVal = row.role;
            return S_OK;
        }
        return _standard->get_accRole(child, role);
    }
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override {
        const Kind kind = kindOf(_control);
        if (!isSelf(child) || kind == Kind::Button || kind == Kind::Other) {
            return _standard->get_accName(child, name);  // which leaves out the "&" of a button
        }
        const HWND named = kind == Kind::List ? ::GetWindow(_control, GW_HWNDPREV) : _control;
        wchar_t buffer[kLongestText];
        return give(windowText(named, buffer), name);
    }
    // The system takes any letter after an "&", which in a text is only part of a printer's name.
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) override {
        const Kind kind = kindOf(_control);
        const bool hasNone = kind == Kind::Text || kind == Kind::Picture || kind == Kind::Link;
        if (!isSelf(child) || !hasNone) {
            return _standard->get_accKeyboardShortcut(child, shortcut);
        }
        *shortcut = nullptr;
        return S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override {
        const HRESULT result = _standard->get_accState(child, state);
        if (SUCCEEDED(result) && state->vt == VT_I4 && isLink(child)) {
            state->lVal |= STATE_SYSTEM_LINKED | STATE_SYSTEM_FOCUSABLE;
        }
        return result;
    }
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* action) override {
        if (!isLink(child)) return _standard->get_accDefaultAction(child, action);
        const WindowResources* dialog = WindowResources::find(::GetParent(_control));
        return give(dialog != nullptr ? dialog->linkAction() : std::wstring_view(), action);
    }
    // Posted, because what the link opens may take the dialog away under the reader's call.
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override {
        if (!isLink(child)) return _standard->accDoDefaultAction(child);
        const bool posted = ::PostMessageW(::GetParent(_control), WM_COMMAND,
                                           MAKEWPARAM(::GetDlgCtrlID(_control), STN_CLICKED),
                                           reinterpret_cast<LPARAM>(_control));
        return posted ? S_OK : E_FAIL;
    }

    // All that follows is the system's own answer.
    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override {
        return _standard->get_accParent(parent);
    }
    HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override {
        return _standard->get_accChildCount(count);
    }
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** found) override {
        return _standard->get_accChild(child, found);
    }
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override {
        return _standard->get_accValue(child, value);
    }
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* description) override {
        return _standard->get_accDescription(child, description);
    }
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* help) override {
        return _standard->get_accHelp(child, help);
    }
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, long* topic) override {
        return _standard->get_accHelpTopic(file, child, topic);
    }
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override {
        return _standard->get_accFocus(child);
    }
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override {
        return _standard->get_accSelection(children);
    }
    HRESULT STDMETHODCALLTYPE accSelect(long flags, VARIANT child) override {
        return _standard->accSelect(flags, child);
    }
    HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height,
                                          VARIANT child) override {
        return _standard->accLocation(left, top, width, height, child);
    }
    HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT* end) override {
        return _standard->accNavigate(direction, start, end);
    }
    HRESULT STDMETHODCALLTYPE accHitTest(long left, long top, VARIANT* child) override {
        return _standard->accHitTest(left, top, child);
    }
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT child, BSTR name) override {
        return _standard->put_accName(child, name);
    }
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override {
        return _standard->put_accValue(child, value);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        return _standard->GetTypeInfoCount(count);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
        return _standard->GetTypeInfo(index, locale, info);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count,
                                            LCID locale, DISPID* ids) override {
        return _standard->GetIDsOfNames(reserved, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT* wrongArgument) override {
        return _standard->Invoke(member, reserved, locale, flags, parameters, result, exception,
                                 wrongArgument);
    }

private:
    ~AccessibleControl() = default;

    static bool isSelf(const VARIANT& child) {
        return child.vt == VT_I4 && child.lVal == CHILDID_SELF;
    }
    bool isLink(const VARIANT& child) const {
        return isSelf(child) && kindOf(_control) == Kind::Link;
    }

    HWND _control;
    Standard _standard;
    std::atomic<ULONG> _references = 1;
};

#pragma GCC diagnostic pop

bool isServiceThere() {
    return standardObject.get() != nullptr && answerOf.get() != nullptr &&
           allocateText.get() != nullptr && coInitialize.get() != nullptr;
}

// The object travels to the reader's process through COM. This thread keeps COM until it ends,
// because nobody says when the last reader has gone.
void useCom() {
    static thread_local const HRESULT used = coInitialize.get()(nullptr, COINIT_APARTMENTTHREADED);
    static_cast<void>(used);  // in another mode already is as good
}

// 0 where only the system's own answer can be given.
LRESULT describe(HWND control, WPARAM request) {
    if (!isServiceThere()) return 0;
    useCom();
    void* object = nullptr;
    if (FAILED(standardObject.get()(control, OBJID_CLIENT, __uuidof(IAccessible), &object))) {
        return 0;
    }
    Standard standard(static_cast<IAccessible*>(object));
    auto* described = new (std::nothrow) AccessibleControl(control, std::move(standard));
    if (described == nullptr) return 0;
    const LRESULT answer = answerOf.get()(__uuidof(IAccessible), request, described);
    described->Release();  // the answer has a reference of its own
    return answer;
}

LRESULT CALLBACK describedProcedure(HWND window, UINT message, WPARAM wParam,
                                    LPARAM lParam) noexcept {
    // The system says the object's number in 32 or in 64 bits.
    if (message == WM_GETOBJECT && static_cast<LONG>(lParam) == OBJID_CLIENT) {
        if (const LRESULT answer = describe(window, wParam)) return answer;
    }
    return callOriginal(window, kOriginalProcedure, message, wParam, lParam);
}

}  // namespace

void describeControls(HWND dialog, const std::wstring& linkAction) {
    WindowResources::of(dialog).setLinkAction(linkAction);
    for (HWND control = ::GetWindow(dialog, GW_CHILD); control != nullptr;
         control = ::GetWindow(control, GW_HWNDNEXT)) {
        if (!isSubclassed(control, kOriginalProcedure)) {
            subclass(control, kOriginalProcedure, describedProcedure);
        }
    }
}
