#include "monitor/status_dispatch.h"

#include "monitor/default_lms_listener.h"
#include "monitor/status_codes.h"
#include "printer/status_texts.h"

#include <limits>

namespace {

constexpr std::int32_t kAny = std::numeric_limits<std::int32_t>::min();

struct StatusRow {
    std::int32_t first;  // status codes, both included; kAny: every status that `applies`
    std::int32_t last;
    bool (*applies)(std::int32_t status, std::int32_t subcode);  // null: the codes say it all
    void (*show)(DefaultLMSListener& listener, std::int32_t status);
};

bool isNewCartridge(std::int32_t status, std::int32_t subcode) {
    return status == 1 || subcode == kNewCartridgeSubcode;
}

bool isGeneric(std::int32_t status, std::int32_t) {
    return isKnownStatus(status);
}

using Listener = DefaultLMSListener;
using Code = std::int32_t;

// The first match wins, so the order is part of the meaning. 41200 and 41300 are in no range.
// clang-format off
constexpr StatusRow kStatusRows[] = {
    {41100, 41199, nullptr, [](Listener& to, Code) { to.showDialogType0(); }},
    {41000, 41099, nullptr, [](Listener& to, Code) { to.showMediaAlert(1); }},
    {41201, 41299, nullptr, [](Listener& to, Code) { to.showMediaAlert(2); }},
    {41301, 41399, nullptr, [](Listener& to, Code) { to.showMediaAlert(3); }},
    {41900, 41900, nullptr, [](Listener& to, Code) { to.showDialogType2(); }},
    {30119, 30119, nullptr, [](Listener& to, Code) { to.showDialogType2(); }},
    {40120, 40121, nullptr, [](Listener& to, Code) { to.showDialogType3(); }},
    {10209, 10209, nullptr, [](Listener& to, Code) { to.showTonerLow(0); }},
    {10219, 10219, nullptr, [](Listener& to, Code) { to.showTonerLow(1); }},
    {10300, 10300, nullptr, [](Listener& to, Code) { to.showTonerOut(); }},
    {40600, 40600, nullptr, [](Listener& to, Code) { to.showDialogType5(); }},
    {10512, 10512, nullptr, [](Listener& to, Code) { to.showDialogType6(); }},
    {40625, 40625, nullptr, [](Listener& to, Code) { to.showDialogType32(); }},
    {10403, 10403, nullptr, [](Listener& to, Code) { to.showDialogType7(); }},
    {10407, 10407, nullptr, [](Listener& to, Code) { to.showDialogType7(); }},
    {40017, 40017, nullptr, [](Listener& to, Code) { to.showDialogType8(); }},
    {40010, 40010, nullptr, [](Listener& to, Code) { to.showDialogType29(); }},
    {30017, 30017, nullptr, [](Listener& to, Code) { to.showDialogType29(); }},
    {50021, 50021, nullptr, [](Listener& to, Code) { to.showDialogType9(); }},
    {50023, 50024, nullptr, [](Listener& to, Code) { to.showDialogType9(); }},
    {50012, 50012, nullptr, [](Listener& to, Code) { to.showDialogType10(); }},
    {30201, 30201, nullptr, [](Listener& to, Code) { to.showDialogType11(); }},
    {50003, 50003, nullptr, [](Listener& to, Code) { to.showDialogType14(); }},
    {50007, 50007, nullptr, [](Listener& to, Code) { to.showDialogType15(); }},
    {50008, 50008, nullptr, [](Listener& to, Code) { to.showDialogType16(); }},
    {50025, 50025, nullptr, [](Listener& to, Code) { to.showDialogType17(); }},
    {50005, 50005, nullptr, [](Listener& to, Code) { to.showDialogType18(); }},
    {50020, 50020, nullptr, [](Listener& to, Code) { to.showDialogType12(); }},
    {40020, 40020, nullptr, [](Listener& to, Code) { to.showDialogType19(); }},
    {40021, 40021, nullptr, [](Listener& to, Code) { to.showDialogType20(); }},
    {42002, 42002, nullptr, [](Listener& to, Code) { to.showDialogType21(); }},
    {42001, 42001, nullptr, [](Listener& to, Code) { to.showDialogType23(); }},
    {42000, 42000, nullptr, [](Listener& to, Code) { to.showDialogType22(); }},
    {40608, 40608, nullptr, [](Listener& to, Code) { to.showDialogType24(); }},
    {40610, 40610, nullptr, [](Listener& to, Code) { to.showDialogType24(); }},
    {40612, 40612, nullptr, [](Listener& to, Code) { to.showDialogType24(); }},
    {40614, 40614, nullptr, [](Listener& to, Code) { to.showDialogType24(); }},
    {kAny,  kAny,  &isNewCartridge, [](Listener& to, Code) { to.setCartData(); }},
    {100000, 100000, nullptr, [](Listener& to, Code) { to.showDialogType26(); }},
    {100001, 100001, nullptr, [](Listener& to, Code) { to.showDialogType27(); }},
    {kAny,  kAny,  &isGeneric, [](Listener& to, Code status) { to.showGenericStatus(status); }},
};
// clang-format on

bool matches(const StatusRow& row, std::int32_t status, std::int32_t subcode) {
    if (row.applies != nullptr) return row.applies(status, subcode);
    return status >= row.first && status <= row.last;
}

}  // namespace

void dispatchStatus(DefaultLMSListener& listener, std::int32_t status, std::int32_t subcode) {
    for (const StatusRow& row : kStatusRows) {
        if (!matches(row, status, subcode)) continue;
        row.show(listener, status);
        return;
    }
}
