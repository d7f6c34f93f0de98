#include "printer/status_texts.h"

#include "printer/status_codes.h"
#include "strings/string_ids.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace {

struct StatusText {
    std::int32_t status;
    std::uint32_t resource;  // string id
};

namespace code = status_code;

// In ascending order of the codes, for a binary search. The specific alerts come first in the
// dispatch, so most of these texts are reached only by a derived listener with the generic alert.
// clang-format off
constexpr StatusText kStatusTexts[] = {
    {code::kTonerLow,                    IDS_STATUS_TONER_LOW},
    {code::kTonerVeryLow,                IDS_STATUS_TONER_LOW},
    {code::kTonerOutBlack,               IDS_STATUS_CARTRIDGE_EMPTY},
    {code::kNonQvCartridge10403,         IDS_STATUS_NOT_QV_CARTRIDGE},
    {code::kNonQvCartridge10407,         IDS_STATUS_NOT_QV_CARTRIDGE},
    {code::kReseatCartridge,             IDS_RESEAT_CARTRIDGE},
    {code::kInstallQvCartridge,          IDS_INSTALL_QV_CARTRIDGE},
    {code::kIllegalCartridge,            IDS_INSTALL_QV_CARTRIDGE},
    {code::kCartridgeNotRecognized30017, IDS_CARTRIDGE_MEMORY_DETAIL},
    {code::kManualFeed30119,             IDS_STATUS_LOAD_INPUT_SLOT},
    {code::kCartridgeNotRecognized40010, IDS_STATUS_CARTRIDGE_NOT_RECOGNIZED},
    {code::kCartridgeMemoryError,        IDS_CARTRIDGE_MEMORY_DETAIL},
    {code::kDoorOpen,                    IDS_STATUS_DOOR_OPEN},
    {code::kCartridgeDoorOpen,           IDS_STATUS_CARTRIDGE_DOOR_OPEN},
    {code::kNoCartridge,                 IDS_STATUS_NO_CARTRIDGE},
    {code::kUsedCartridge40608,          IDS_CARTRIDGE_USED_BEFORE},
    {code::kUsedCartridge40610,          IDS_CARTRIDGE_USED_BEFORE},
    {code::kUsedCartridge40612,          IDS_CARTRIDGE_USED_BEFORE},
    {code::kUsedCartridge40614,          IDS_CARTRIDGE_USED_BEFORE},
    {code::kJamInside42000,              IDS_JAM_INSIDE},
    {code::kTrayJam,                     IDS_TRAY_JAM},
    {code::kRearJam,                     IDS_REAR_JAM},
    {code::kDuplexJam42003,              IDS_DUPLEX_JAM},
    {code::kDuplexJam42004,              IDS_DUPLEX_JAM},
    {code::kJamInside42100,              IDS_JAM_INSIDE},
    {code::kJamInside42300,              IDS_JAM_INSIDE},
    {code::kFuser,                       IDS_TURN_OFF_AND_ON},
    {code::kFan,                         IDS_FAN_PROBLEM},
    {code::kCommunication,               IDS_TURN_OFF_AND_ON},
    {code::kFuserNotWarm,                IDS_TURN_OFF_AND_ON},
    {code::kLaserBeam,                   IDS_LASER_BEAM_DETAIL},
    {code::kPaperFeed,                   IDS_TURN_OFF_AND_ON},
    {code::kInternalError50021,          IDS_TURN_OFF_AND_ON},
    {code::kInternalError50023,          IDS_TURN_OFF_AND_ON},
    {code::kInternalError50024,          IDS_TURN_OFF_AND_ON},
    {code::kPrintEngine,                 IDS_TURN_OFF_AND_ON},
};
// clang-format on

constexpr bool strictlyAscending() {
    for (std::size_t i = 1; i < std::size(kStatusTexts); ++i) {
        if (kStatusTexts[i - 1].status >= kStatusTexts[i].status) return false;
    }
    return true;
}
static_assert(strictlyAscending(), "the lower-bound search needs each status once, in order");

const StatusText* find(std::int32_t status) {
    const StatusText* const row = std::lower_bound(
        std::begin(kStatusTexts), std::end(kStatusTexts), status,
        [](const StatusText& text, std::int32_t code) { return text.status < code; });
    return row != std::end(kStatusTexts) && row->status == status ? row : nullptr;
}

}  // namespace

bool isKnownStatus(std::int32_t status) {
    return find(status) != nullptr;
}

std::uint32_t statusResource(std::int32_t status) {
    const StatusText* const row = find(status);
    return row != nullptr ? row->resource : kNoStatusResource;
}
