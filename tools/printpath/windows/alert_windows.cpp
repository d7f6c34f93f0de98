#include "tools/printpath/windows/alert_windows.h"

#include "ui/resource_ids.h"

#include <cwchar>

namespace printpath {

namespace {

constexpr UINT kAnswerMs = 2000;
constexpr std::size_t kLongestText = 8192;
constexpr int kClassUnits = 64;
constexpr int kMessageBoxText = 0xFFFF;  // the id of the text in every message box

struct Search {
    DWORD process;
    std::vector<HWND> found;
};

bool hasClass(HWND window, const wchar_t* name) {
    wchar_t found[kClassUnits] = {};
    ::GetClassNameW(window, found, kClassUnits);
    return ::lstrcmpiW(found, name) == 0;
}

BOOL CALLBACK addDialog(HWND window, LPARAM parameter) {
    Search& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    if (process != search.process || !::IsWindowVisible(window) || !hasClass(window, L"#32770"))
        return TRUE;
    search.found.push_back(window);
    return TRUE;
}

BOOL CALLBACK addText(HWND control, LPARAM parameter) {
    std::wstring& texts = *reinterpret_cast<std::wstring*>(parameter);
    if (::IsWindowVisible(control)) texts += L"\n" + textOf(control);
    return TRUE;
}

}  // namespace

std::vector<HWND> dialogWindows(DWORD process) {
    Search search{process, {}};
    ::EnumWindows(addDialog, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

bool isMessageBox(HWND dialog) {
    return ::GetDlgItem(dialog, kMessageBoxText) != nullptr &&
           ::GetDlgItem(dialog, IDC_ALERT_OK) == nullptr;
}

std::wstring headlineOf(HWND dialog) {
    if (isMessageBox(dialog)) return textOf(::GetDlgItem(dialog, kMessageBoxText));
    for (const int id : {IDC_ALERT_HEADLINE, IDC_DUPLEX_TITLE, IDC_CHECK_HEADING, IDC_ALERT_MESSAGE,
                         IDC_DETAILS_TEXT_1}) {
        const HWND control = ::GetDlgItem(dialog, id);
        std::wstring text = control == nullptr ? std::wstring() : textOf(control);
        if (!text.empty()) return text;
    }
    return {};
}

std::wstring textOf(HWND window) {
    // WM_GETTEXT, because GetWindowText returns no text of a control in another process.
    std::wstring text(kLongestText, L'\0');
    DWORD_PTR units = 0;
    if (!::SendMessageTimeoutW(window, WM_GETTEXT, kLongestText,
                               reinterpret_cast<LPARAM>(text.data()), SMTO_ABORTIFHUNG, kAnswerMs,
                               &units))
        return {};
    text.resize(std::wcslen(text.c_str()));
    return text;
}

std::wstring allTexts(HWND dialog) {
    std::wstring texts = textOf(dialog);
    ::EnumChildWindows(dialog, addText, reinterpret_cast<LPARAM>(&texts));
    return texts;
}

bool answers(HWND window) {
    DWORD_PTR result = 0;
    return ::SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, kAnswerMs, &result) != 0;
}

}  // namespace printpath
