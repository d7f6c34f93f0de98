#include "monitor/status_dispatch.h"

#include "monitor/default_lms_listener.h"
#include "printer/status_codes.h"
#include "printer/status_texts.h"

namespace {

using Listener = DefaultLMSListener;
using Code = std::int32_t;

bool isNewCartridge(Code status, Code subcode) {
    return status == status_code::kNewCartridge || subcode == status_subcode::kNewCartridge;
}

bool hasGenericText(Code status, Code) {
    return isKnownStatus(status);
}

struct StatusRow {
    Code first;  // status codes, both included
    Code last;
    bool (*applies)(Code status, Code subcode);  // null: the codes decide
    void (*show)(Listener& listener, Code status);

    [[nodiscard]] bool matches(Code status, Code subcode) const {
        if (applies != nullptr) return applies(status, subcode);
        return status >= first && status <= last;
    }
};

using Show = decltype(StatusRow::show);

constexpr StatusRow on(Code status, Show show) {
    return {status, status, nullptr, show};
}
constexpr StatusRow between(Code first, Code last, Show show) {
    return {first, last, nullptr, show};
}
constexpr StatusRow where(decltype(StatusRow::applies) applies, Show show) {
    return {0, 0, applies, show};
}

// Calls through the listener's virtual table, so that a derived listener can replace any alert.
template <void (Listener::*Handler)()>
void show(Listener& listener, Code) {
    (listener.*Handler)();
}
template <void (Listener::*Handler)(int), int Argument>
void showWith(Listener& listener, Code) {
    (listener.*Handler)(Argument);
}
void showGeneric(Listener& listener, Code status) {
    listener.showGenericStatus(status);
}

constexpr int kLow = 0;
constexpr int kVeryLow = 1;

namespace code = status_code;

// The first match wins, so the order is part of the meaning: subcode 1 announces a new cartridge
// only where the status has no alert of its own further up.
// clang-format off
constexpr StatusRow kStatusRows[] = {
    between(code::kFirstPaperOut, code::kLastPaperOut,         show<&Listener::showDialogType0>),
    between(code::kFirstLoadMedia, code::kLastLoadMedia,       showWith<&Listener::showMediaAlert, 1>),
    between(code::kFirstLoadMedia412, code::kLastLoadMedia412, showWith<&Listener::showMediaAlert, 2>),
    between(code::kFirstLoadMedia413, code::kLastLoadMedia413, showWith<&Listener::showMediaAlert, 3>),
    on(code::kManualFeed41900,                                 show<&Listener::showDialogType2>),
    on(code::kManualFeed30119,                                 show<&Listener::showDialogType2>),
    on(code::kManualDuplex40120,                               show<&Listener::showDialogType3>),
    on(code::kManualDuplex40121,                               show<&Listener::showDialogType3>),
    on(code::kTonerLow,                                        showWith<&Listener::showTonerLow, kLow>),
    on(code::kTonerVeryLow,                                    showWith<&Listener::showTonerLow, kVeryLow>),
    on(code::kTonerOutBlack,                                   show<&Listener::showTonerOut>),
    on(code::kNoCartridge,                                     show<&Listener::showDialogType5>),
    on(code::kIllegalCartridge,                                show<&Listener::showDialogType6>),
    on(code::kCartridgeNotAccepted,                            show<&Listener::showDialogType32>),
    on(code::kNonQvCartridge10403,                             show<&Listener::showDialogType7>),
    on(code::kNonQvCartridge10407,                             show<&Listener::showDialogType7>),
    on(code::kCartridgeMemoryError,                            show<&Listener::showDialogType8>),
    on(code::kCartridgeNotRecognized40010,                     show<&Listener::showDialogType29>),
    on(code::kCartridgeNotRecognized30017,                     show<&Listener::showDialogType29>),
    on(code::kInternalError50021,                              show<&Listener::showDialogType9>),
    on(code::kInternalError50023,                              show<&Listener::showDialogType9>),
    on(code::kInternalError50024,                              show<&Listener::showDialogType9>),
    on(code::kLaserBeam,                                       show<&Listener::showDialogType10>),
    on(code::kPageNotFinished,                                 show<&Listener::showDialogType11>),
    on(code::kFuser,                                           show<&Listener::showDialogType14>),
    on(code::kCommunication,                                   show<&Listener::showDialogType15>),
    on(code::kFuserNotWarm,                                    show<&Listener::showDialogType16>),
    on(code::kPrintEngine,                                     show<&Listener::showDialogType17>),
    on(code::kLaserScanner,                                    show<&Listener::showDialogType18>),
    on(code::kPaperFeed,                                       show<&Listener::showDialogType12>),
    on(code::kDoorOpen,                                        show<&Listener::showDialogType19>),
    on(code::kCartridgeDoorOpen,                               show<&Listener::showDialogType20>),
    on(code::kRearJam,                                         show<&Listener::showDialogType21>),
    on(code::kTrayJam,                                         show<&Listener::showDialogType23>),
    on(code::kJamInside42000,                                  show<&Listener::showDialogType22>),
    on(code::kUsedCartridge40608,                              show<&Listener::showDialogType24>),
    on(code::kUsedCartridge40610,                              show<&Listener::showDialogType24>),
    on(code::kUsedCartridge40612,                              show<&Listener::showDialogType24>),
    on(code::kUsedCartridge40614,                              show<&Listener::showDialogType24>),
    where(&isNewCartridge,                                     show<&Listener::setCartData>),
    on(code::kFaxPrinted,                                      show<&Listener::showDialogType26>),
    on(code::kFaxInCompanion,                                  show<&Listener::showDialogType27>),
    where(&hasGenericText,                                     showGeneric),
};
// clang-format on

}  // namespace

void dispatchStatus(DefaultLMSListener& listener, std::int32_t status, std::int32_t subcode) {
    for (const StatusRow& row : kStatusRows) {
        if (!row.matches(status, subcode)) continue;
        row.show(listener, status);
        return;
    }
}
