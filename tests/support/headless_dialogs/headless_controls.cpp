#include "tests/support/headless_dialogs/headless_messages.h"

#include <utility>

namespace dialog_controls {

namespace {

// Null when the window or the control is missing.
headless::Control* found(WindowHandle window, int control) {
    headless::Window* owner = headless::find(window);
    if (owner == nullptr) return nullptr;
    const auto entry = owner->controls.find(control);
    return entry != owner->controls.end() ? &entry->second : nullptr;
}

}  // namespace

bool exists(WindowHandle window, int control) {
    return found(window, control) != nullptr;
}

bool usable(WindowHandle window, int control) {
    const headless::Window* owner = headless::find(window);
    const headless::Control* entry = found(window, control);
    return entry != nullptr && owner->visible && entry->visible && entry->enabled;
}

std::wstring text(WindowHandle window, int control) {
    const headless::Control* entry = found(window, control);
    return entry != nullptr ? entry->text : std::wstring();
}

void setText(WindowHandle window, int control, const std::wstring& text) {
    if (headless::Control* entry = found(window, control)) entry->text = text;
}

void setTitle(WindowHandle window, const std::wstring& title) {
    if (headless::Window* owner = headless::find(window)) owner->title = title;
}

void setName(WindowHandle window, int control, const std::wstring& name) {
    if (headless::Control* entry = found(window, control)) entry->name = name;
}

void describe(WindowHandle window, const std::wstring& linkAction) {
    if (headless::Window* owner = headless::find(window)) owner->linkAction = linkAction;
}

void show(WindowHandle window, int control, bool visible) {
    if (headless::Control* entry = found(window, control)) entry->visible = visible;
}

void hideWindow(WindowHandle window) {
    if (headless::Window* owner = headless::find(window)) owner->visible = false;
}

void moveWindow(WindowHandle window, int x, int y) {
    headless::Window* owner = headless::find(window);
    if (owner == nullptr) return;
    owner->x = x;
    owner->y = y;
}

void placeAt(WindowHandle window, int control, int where) {
    headless::Control* entry = found(window, control);
    if (entry != nullptr && exists(window, where)) entry->placedAt = where;
}

void setIcons(WindowHandle window, void* module, int icon) {
    headless::Window* owner = headless::find(window);
    if (owner == nullptr) return;
    owner->icon = icon;
    owner->iconModule = module;
}

void setPicture(WindowHandle window, int control, void* module, int bitmap) {
    headless::Control* entry = found(window, control);
    if (entry == nullptr) return;
    entry->picture = bitmap;
    entry->pictureModule = module;
}

void setFont(WindowHandle window, int control, Emphasis emphasis) {
    headless::Control* entry = found(window, control);
    if (entry == nullptr) return;
    (emphasis == Emphasis::Link ? entry->isUnderlined : entry->isHeadline) = true;
}

void makeLink(WindowHandle window, int control) {
    if (headless::Control* entry = found(window, control)) entry->isLink = true;
}

void setDefaultButton(WindowHandle window, int control) {
    if (headless::Window* owner = headless::find(window)) owner->defaultButton = control;
}

void addChoice(WindowHandle window, int list, const std::wstring& text) {
    if (headless::Control* entry = found(window, list)) entry->choices.push_back(text);
}

void choose(WindowHandle window, int list, int index) {
    if (headless::Control* entry = found(window, list)) entry->chosen = index;
}

int choice(WindowHandle window, int list) {
    const headless::Control* entry = found(window, list);
    return entry != nullptr ? entry->chosen : 0;
}

void showMessage(WindowHandle window, const std::wstring& text, const std::wstring& caption,
                 bool rightToLeft) {
    headless::addMessage({text, caption, rightToLeft, window});
}

}  // namespace dialog_controls
