#include "platform/simulated/texts.h"

#include "platform/simulated/case_insensitive.h"

#include <cstddef>
#include <utility>

namespace platform::simulated {
namespace {

constexpr std::uint32_t kTextsPerBlock = 16;
// On the system the handle of a library that is loaded for its resources only has its low bits set.
// The mark also keeps these handles apart from the handles of pipes.
constexpr std::uintptr_t kHandleStep = 4;
constexpr std::uintptr_t kHandleMark = 2;

NativeHandle handleOf(std::size_t place) noexcept {
    return reinterpret_cast<NativeHandle>((place + 1) * kHandleStep + kHandleMark);
}

}  // namespace

const Texts::Module* Texts::moduleOf(NativeHandle module) const noexcept {
    for (std::size_t i = 0; i < _state.modules.size(); ++i) {
        if (handleOf(i) == module) return &_state.modules[i];
    }
    return nullptr;
}

NativeHandle Texts::addModule(std::wstring_view name) {
    if (const NativeHandle known = find(name)) return known;
    const SpinScope scope(_lock);
    _state.modules.push_back({std::wstring(name), {}});
    return handleOf(_state.modules.size() - 1);
}

void Texts::add(NativeHandle module, LanguageId language, std::uint32_t id,
                std::wstring_view text) {
    const SpinScope scope(_lock);
    auto* const found = const_cast<Module*>(moduleOf(module));
    if (found != nullptr) found->texts.insert_or_assign({language, id}, std::wstring(text));
}

void Texts::setPreferredLanguages(std::vector<std::wstring> names) {
    const SpinScope scope(_lock);
    _state.preferred = std::move(names);
}

void Texts::setUserLocale(std::wstring name) {
    const SpinScope scope(_lock);
    _state.userLocale = std::move(name);
}

void Texts::setUserInterfaceLanguage(LanguageId language) {
    const SpinScope scope(_lock);
    _state.userInterface = language;
}

void Texts::setUserLanguage(LanguageId language) {
    const SpinScope scope(_lock);
    _state.user = language;
}

void Texts::setSystemLanguage(LanguageId language) {
    const SpinScope scope(_lock);
    _state.system = language;
}

void Texts::reset() {
    State gone;
    const SpinScope scope(_lock);
    std::swap(gone, _state);
}

NativeHandle Texts::find(std::wstring_view name) const noexcept {
    const SpinScope scope(_lock);
    for (std::size_t i = 0; i < _state.modules.size(); ++i) {
        if (sameName(_state.modules[i].name, name)) return handleOf(i);
    }
    return nullptr;
}

bool Texts::text(NativeHandle module, std::uint32_t id, LanguageId language,
                 std::wstring& out) const {
    const SpinScope scope(_lock);
    out.clear();
    const Module* const found = moduleOf(module);
    if (found == nullptr) return false;
    const auto text = found->texts.find({language, id});
    if (text == found->texts.end()) return false;
    out = text->second;
    return !out.empty();
}

bool Texts::hasBlock(NativeHandle module, std::uint32_t id, LanguageId language) const noexcept {
    const SpinScope scope(_lock);
    const Module* const found = moduleOf(module);
    if (found == nullptr) return false;
    const std::uint32_t first = id / kTextsPerBlock * kTextsPerBlock;
    const auto next = found->texts.lower_bound({language, first});
    return next != found->texts.end() && next->first.first == language &&
           next->first.second - first < kTextsPerBlock;
}

std::vector<std::wstring> Texts::preferred() const {
    const SpinScope scope(_lock);
    return _state.preferred;
}

std::wstring Texts::userLocale() const {
    const SpinScope scope(_lock);
    return _state.userLocale;
}

LanguageId Texts::userInterfaceLanguage() const noexcept {
    const SpinScope scope(_lock);
    return _state.userInterface;
}

LanguageId Texts::userLanguage() const noexcept {
    const SpinScope scope(_lock);
    return _state.user;
}

LanguageId Texts::systemLanguage() const noexcept {
    const SpinScope scope(_lock);
    return _state.system;
}

}  // namespace platform::simulated
