#pragma once

#include "tools/alert_facts/simulated_monitor.h"

#include <cstdint>
#include <string>
#include <vector>

// The English around the facts.
namespace alert_facts {

// UTF-8. The wide characters of this system are code points.
[[nodiscard]] std::string utf8(const std::wstring& text);

// The parts with the mark between them.
[[nodiscard]] std::string joined(const std::vector<std::string>& parts, const std::string& mark);

[[nodiscard]] std::string inOneLine(const std::string& text);

// The caption of a button without the mark of its letter.
[[nodiscard]] std::wstring captionOf(std::wstring caption);

// In the greatest unit that needs no fraction: "14 days".
[[nodiscard]] std::string hoursText(std::int64_t hours);

// What has come about, without an end: "closes the alert". Empty when nothing has. `untouched` is
// the same alert with which the user has done nothing, `helpId` the text of its help, `english` the
// texts of message boxes.
[[nodiscard]] std::string sentence(const Effects& effects, const Effects& untouched, int helpId,
                                   const TextsById& english);

}  // namespace alert_facts
