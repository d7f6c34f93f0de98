#include "tools/printpath/windows/link_recorder.h"

#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/registry_values.h"
#include "tools/printpath/windows/text_file.h"
#include "tools/printpath/windows/wine.h"

#include <windows.h>

namespace printpath {

namespace {

constexpr wchar_t kClasses[] = L"Software\\Classes\\";
constexpr wchar_t kPageClass[] = L"BeamlineRecordedPage";

void registerCommand(const std::wstring& name, const std::filesystem::path& program,
                     const wchar_t* kind) {
    const std::wstring key = kClasses + name + L"\\shell\\open\\command";
    writeText(HKEY_LOCAL_MACHINE, key, L"", L"\"" + program.wstring() + L"\" " + kind + L" \"%1\"");
}

}  // namespace

LinkRecorder::LinkRecorder(const std::filesystem::path& program, const std::filesystem::path& file)
    : _file(file) {
    if (!underWine()) throw Failure("links are recorded in a Wine prefix only", Outcome::Unusable);
    std::error_code ignored;
    if (!std::filesystem::exists(program, ignored))
        throw Failure("there is no recorder " + pathText(program), Outcome::Unusable);
    writeWholeFile(_file, "");
    for (const wchar_t* scheme : {L"http", L"https"}) {
        writeText(HKEY_LOCAL_MACHINE, std::wstring(kClasses) + scheme, L"URL Protocol", L"");
        registerCommand(scheme, program, L"url");
    }
    registerCommand(kPageClass, program, L"page");
    for (const wchar_t* extension : {L".htm", L".html"})
        writeText(HKEY_LOCAL_MACHINE, std::wstring(kClasses) + extension, L"", kPageClass);
}

std::string LinkRecorder::opened() const {
    return readWholeFile(_file);
}

}  // namespace printpath
