#include "ui/alert_factory.h"

#include "arbor/i_property_holder.h"
#include "arbor/property_text.h"
#include "platform/resource_text.h"
#include "printer/alert_types.h"
#include "printer/media_types.h"
#include "printer/printer_identity.h"
#include "printer/status_texts.h"
#include "strings/string_ids.h"
#include "ui/alert_keys.h"
#include "ui/bag_writing.h"
#include "ui/localized_text.h"
#include "ui/resource_ids.h"
#include "ui/supplies_info.h"
#include "ui/text_format.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <string>

namespace {

// What the functions of a row need to know.
struct AlertContext {
    arbor::IPropertyHolder& description;
    void* strings;        // module of the texts
    bool isFamilyMember;  // the printer belongs to the K7400 family
    int mediaCode;
    std::int32_t status;
    std::wstring detail;  // becomes the detail of the alert unless it stays empty
};

// A picture or a text that differs between the K7400 family and other printers.
struct PerPrinter {
    int other;
    int family;
};

// The supplies block, for the types that have one.
struct SuppliesColumn {
    SuppliesMode mode;
    bool estimateUnknown;
    int conditionIcon;
};

struct AlertRow {
    AlertType type;
    int icon;      // severity
    int headline;  // string ids; 0: none
    int message;
    PerPrinter detail;
    PerPrinter picture;
    const SuppliesColumn* supplies;        // null: no supplies block
    int suppliesDetail;                    // string id of the detail beside the block
    int returns;                           // string id of the returns link
    void (*further)(AlertContext& alert);  // what no column holds; null: nothing
};

constexpr PerPrinter kNone{0, 0};
constexpr PerPrinter kClosed{IDB_PRINTER, IDB_PRINTER_K};
constexpr PerPrinter kLoad{IDB_LOAD_PAPER, IDB_LOAD_PAPER_K};
constexpr PerPrinter kDoor{IDB_CLOSE_DOOR, IDB_CLOSE_DOOR_K};
constexpr PerPrinter kRear{IDB_REAR_JAM, IDB_REAR_JAM_K};
constexpr PerPrinter kInside{IDB_JAM_INSIDE, IDB_JAM_INSIDE};
constexpr PerPrinter kPaperOut{IDS_PAPER_OUT_DETAIL, IDS_PAPER_OUT_DETAIL_K};
constexpr PerPrinter kLoadMedia{IDS_LOAD_MEDIA_DETAIL, IDS_LOAD_MEDIA_DETAIL};
constexpr PerPrinter kLaserBeam{IDS_LASER_BEAM_DETAIL, IDS_LASER_BEAM_DETAIL};

constexpr SuppliesColumn kEstimated{SuppliesMode::Pages, false, IDB_NEEDS_ATTENTION};
constexpr SuppliesColumn kNoEstimate{SuppliesMode::Pages, true, IDB_NEEDS_ATTENTION};
// Equally right with true: a question mark stands for the pages, so there is no estimate.
constexpr SuppliesColumn kUnread{SuppliesMode::PagesUnknown, false, IDB_NEEDS_ATTENTION};
constexpr SuppliesColumn kForeign{SuppliesMode::Pages, false, IDB_UNKNOWN_CARTRIDGE};
// Equally right with true: no pages are shown, so there is no estimate.
constexpr SuppliesColumn kMissing{SuppliesMode::NameOnly, false, IDB_NEEDS_ATTENTION};

// The text has two placeholders, which stand for the media in use and for the media that is needed.
// It replaces the text of the row, so nobody sees the placeholders.
void describeMedia(AlertContext& alert) {
    const auto mediaText = [&alert](int id) {
        return localizedText(alert.strings, static_cast<std::uint32_t>(id), kFactoryTextUnits);
    };
    alert.detail =
        formatText(mediaText(IDS_LOAD_MEDIA_DETAIL),
                   {mediaText(currentMediaType()), mediaText(mediaTextOfCode(alert.mediaCode))},
                   kFactoryTextUnits);
}

void describeDuplex(AlertContext& alert) {
    constexpr int kTexts[] = {IDS_DUPLEX_STEP_1, IDS_DUPLEX_STEP_2, IDS_DUPLEX_STEP_3};
    constexpr PerPrinter kPictures[] = {{IDB_DUPLEX_1, IDB_DUPLEX_1_K},
                                        {IDB_DUPLEX_2, IDB_DUPLEX_2_K},
                                        {IDB_DUPLEX_3, IDB_DUPLEX_3_K}};
    putInt(alert.description, alert_key::kTemplate, IDD_MANUAL_DUPLEX);
    putInt(alert.description, alert_key::kCaption, IDS_DUPLEX_CAPTION);
    putInt(alert.description, alert_key::kDuplexTitle, IDS_DUPLEX_TITLE);
    for (std::size_t step = 0; step < DefaultStatusDialog::kDuplexSteps; ++step) {
        const PerPrinter& picture = kPictures[step];
        putInt(alert.description, alert_key::kDuplexTexts[step], kTexts[step]);
        putInt(alert.description, alert_key::kDuplexPictures[step],
               alert.isFamilyMember ? picture.family : picture.other);
    }
}

// Simplified Chinese systems offer to check the cartridge.
void describeNewCartridge(AlertContext& alert) {
    alert.description.removeProperty(alert_key::kIcon);
    putInt(alert.description, alert_key::kGenuineCartridge, 1);
    putInt(alert.description, alert_key::kHideHelp, 1);
    const bool offersCheck = platform::systemDefaultLanguage() == kSimplifiedChinese;
    putInt(alert.description, alert_key::kHeadline,
           offersCheck ? IDS_NEW_CARTRIDGE : IDS_GENUINE_CARTRIDGE);
    if (offersCheck) putInt(alert.description, alert_key::kMessage, IDS_CHECK_CARTRIDGE_LINK);
}

void describeFax(AlertContext& alert, const wchar_t* marker, int detail) {
    alert.description.removeProperty(alert_key::kPicture);
    alert.description.removeProperty(alert_key::kShop);
    // Equally right after the next: a marker is another name than the detail.
    putInt(alert.description, alert_key::kDetail, detail);
    putInt(alert.description, marker, detail);  // Equally right after the next: another name.
    putInt(alert.description, alert_key::kHideHelp, 1);
}

// Only one of the two markers is set: with both, the window would be made compact twice, and would
// lose twice the height.
void describePrintedFax(AlertContext& alert) {
    describeFax(alert, alert_key::kFaxReceived, IDS_FAX_DETAIL);
}
void describeFaxInOrrery(AlertContext& alert) {
    describeFax(alert, alert_key::kFaxReceivedOrrery, IDS_FAX_OPEN_LINK);
}

void describeStatus(AlertContext& alert) {
    putInt(alert.description, alert_key::kMessage,
           static_cast<std::int32_t>(statusResource(alert.status)));
}

// clang-format off
constexpr int kRecycle = IDS_RETURN_AND_RECYCLE;
constexpr int kRestart = IDS_TURN_OFF_AND_ON;
constexpr AlertRow kAlertRows[] = {
    // type                              icon             headline                       message   detail      picture   supplies      supplies detail              returns   further
    {AlertType::PaperOut,                IDB_STOP,        IDS_PAPER_OUT,                 0,        kPaperOut,  kLoad,    nullptr,      0,                           0,        nullptr},
    {AlertType::LoadMedia,               IDB_STOP,        IDS_LOAD_PAPER,                0,        kLoadMedia, kLoad,    nullptr,      0,                           0,        describeMedia},
    {AlertType::ManualFeed,              IDB_STOP,        0,                             0,        kLoadMedia, kClosed,  nullptr,      0,                           0,        describeMedia},
    {AlertType::ManualDuplex,            IDB_STOP,        0,                             0,        kNone,      kClosed,  nullptr,      0,                           0,        describeDuplex},
    {AlertType::TonerLow,                IDB_WARNING,     IDS_TONER_LOW,                 0,        kNone,      kClosed,  &kEstimated,  IDS_TONER_LOW_DETAIL,        kRecycle, nullptr},
    {AlertType::NoCartridge,             IDB_STOP,        IDS_NO_CARTRIDGE,              0,        kNone,      kClosed,  &kMissing,    0,                           0,        nullptr},
    {AlertType::IllegalCartridge,        IDB_STOP,        IDS_CARTRIDGE_NOT_ACCEPTED,    0,        kNone,      kClosed,  &kUnread,     0,                           0,        nullptr},
    {AlertType::NonQvCartridge,          IDB_INFORMATION, IDS_NOT_QV_CARTRIDGE,          0,        kNone,      kClosed,  &kForeign,    0,                           kRecycle, nullptr},
    {AlertType::CartridgeMemoryError,    IDB_WARNING,     IDS_CARTRIDGE_MEMORY_PROBLEM,  0,        kNone,      kClosed,  &kUnread,     IDS_CARTRIDGE_MEMORY_DETAIL, kRecycle, nullptr},
    {AlertType::InternalError,           IDB_STOP,        IDS_INTERNAL_PROBLEM,          kRestart, kNone,      kClosed,  nullptr,      0,                           0,        nullptr},
    {AlertType::LaserBeam,               IDB_STOP,        IDS_LASER_BEAM_PROBLEM,        0,        kLaserBeam, kClosed,  nullptr,      0,                           0,        nullptr},
    {AlertType::PageNotFinished,         IDB_STOP,        IDS_PAGE_NOT_FINISHED,         kRestart, kNone,      kClosed,  nullptr,      0,                           0,        nullptr},
    {AlertType::PaperFeed,               IDB_STOP,        IDS_PAPER_FEED_PROBLEM,        kRestart, kNone,      kClosed,  nullptr,      0,                           0,        nullptr},
    {AlertType::Fuser,                   IDB_STOP,        IDS_FUSER_PROBLEM,             kRestart, kNone,      kClosed,  nullptr,      0,                           0,        nullptr},
    {AlertType::Communication,           IDB_STOP,        IDS_COMMUNICATION_PROBLEM,     kRestart, kNone,      kClosed,  nullptr,      0,                           0,        nullptr},
    {AlertType::FuserNotWarm,            IDB_STOP,        IDS_FUSER_NOT_WARM,            kRestart, kNone,      kClosed,  nullptr,      0,                           0,        nullptr},
    {AlertType::PrintEngine,             IDB_STOP,        IDS_PRINT_ENGINE_PROBLEM,      kRestart, kNone,      kClosed,  nullptr,      0,                           0,        nullptr},
    {AlertType::LaserScanner,            IDB_STOP,        IDS_LASER_SCANNER_PROBLEM,     kRestart, kNone,      kClosed,  nullptr,      0,                           0,        nullptr},
    {AlertType::DoorOpen,                IDB_STOP,        IDS_DOOR_OPEN,                 0,        kNone,      kDoor,    nullptr,      0,                           0,        nullptr},
    {AlertType::CartridgeDoorOpen,       IDB_STOP,        IDS_CARTRIDGE_DOOR_OPEN,       0,        kNone,      kDoor,    nullptr,      0,                           0,        nullptr},
    {AlertType::RearJam,                 IDB_STOP,        IDS_REAR_JAM,                  0,        kNone,      kRear,    nullptr,      0,                           0,        nullptr},
    {AlertType::JamInside,               IDB_STOP,        IDS_JAM_INSIDE,                0,        kNone,      kInside,  nullptr,      0,                           0,        nullptr},
    {AlertType::TrayJam,                 IDB_STOP,        IDS_TRAY_JAM,                  0,        kNone,      kClosed,  nullptr,      0,                           0,        nullptr},
    {AlertType::UsedCartridge,           IDB_INFORMATION, IDS_CARTRIDGE_USED_BEFORE,     0,        kNone,      kClosed,  &kUnread,     0,                           0,        nullptr},
    // Equally right with 1: describeNewCartridge sets the headline.
    {AlertType::Welcome,                 IDB_STOP,        0,                             0,        kNone,      kClosed,  nullptr,      0,                           0,        describeNewCartridge},
    {AlertType::FaxPrinted,              IDB_INFORMATION, IDS_FAX_RECEIVED,              0,        kNone,      kNone,    nullptr,      0,                           0,        describePrintedFax},
    {AlertType::FaxInCompanion,          IDB_INFORMATION, IDS_FAX_RECEIVED,              0,        kNone,      kNone,    nullptr,      0,                           0,        describeFaxInOrrery},
    // Equally right with 1 (2): describeStatus sets the message.
    {AlertType::GenericStatus,           IDB_STOP,        0,                             0,        kNone,      kClosed,  nullptr,      0,                           0,        describeStatus},
    {AlertType::CartridgeNotRecognized,  IDB_WARNING,     IDS_CARTRIDGE_NOT_RECOGNIZED,  0,        kNone,      kClosed,  &kUnread,     IDS_CARTRIDGE_MEMORY_DETAIL, kRecycle, nullptr},
    {AlertType::TonerVeryLow,            IDB_WARNING,     IDS_TONER_VERY_LOW,            0,        kNone,      kClosed,  &kNoEstimate, IDS_TONER_VERY_LOW_DETAIL,   kRecycle, nullptr},
    {AlertType::TonerOut,                IDB_WARNING,     IDS_CARTRIDGE_EMPTY,           0,        kNone,      kClosed,  &kNoEstimate, IDS_CARTRIDGE_EMPTY_DETAIL,  kRecycle, nullptr},
    {AlertType::CartridgeNotAccepted,    IDB_STOP,        IDS_CARTRIDGE_NOT_ACCEPTED,    0,        kNone,      kClosed,  &kUnread,     0,                           0,        nullptr},
};
// clang-format on

void setIfGiven(arbor::IPropertyHolder& description, const wchar_t* key, int value) {
    if (value != 0) putInt(description, key, value);
}

void fillFrame(AlertContext& alert) {
    arbor::IPropertyHolder& description = alert.description;
    putInt(description, alert_key::kPicture, alert.isFamilyMember ? IDB_PRINTER_K : IDB_PRINTER);
    putInt(description, alert_key::kIcon, IDB_STOP);
    putInt(description, alert_key::kShop, IDS_SHOP_ONLINE);
    putInt(description, alert_key::kTemplate, IDD_ALERT);
    putInt(description, alert_key::kTitle, IDS_TITLE);
}

void fillRow(AlertContext& alert, const AlertRow& row) {
    const auto forPrinter = [&alert](const PerPrinter& column) {
        return alert.isFamilyMember ? column.family : column.other;
    };
    arbor::IPropertyHolder& description = alert.description;
    putInt(description, alert_key::kIcon, row.icon);
    setIfGiven(description, alert_key::kHeadline, row.headline);
    setIfGiven(description, alert_key::kMessage, row.message);
    setIfGiven(description, alert_key::kDetail, forPrinter(row.detail));
    setIfGiven(description, alert_key::kPicture, forPrinter(row.picture));
    setIfGiven(description, alert_key::kReturns, row.returns);
    if (row.suppliesDetail != 0) {
        const std::wstring text = localizedText(
            alert.strings, static_cast<std::uint32_t>(row.suppliesDetail), kFactoryTextUnits);
        putText(description, alert_key::kAlertDetail, text);
    }
    if (row.supplies != nullptr) {
        fillSuppliesInfo(description, row.supplies->estimateUnknown, row.supplies->mode,
                         row.supplies->conditionIcon);
    }
    if (row.further != nullptr) row.further(alert);
}

void complete(arbor::IPropertyHolder& description) {
    const auto type = static_cast<AlertType>(description.getInt(alert_key::kDialogType, 0));
    void* module = description.getPointer(alert_key::kModule, nullptr);
    std::wstring printerName = arbor::wideText(description, alert_key::kPrinterName);
    AlertContext alert{
        description,
        description.getPointer(alert_key::kStringModule, module),
        isSupportedPrinter(printerName),
        // Equally right with 1: no medium has code 0, and code 1 is the default medium too.
        description.getInt(alert_key::kMediaCode, 0),
        // Equally right with 1: neither status has a text.
        description.getInt(alert_key::kStatus, 0),
        {}};
    fillFrame(alert);
    for (const AlertRow& row : kAlertRows) {
        if (row.type == type) fillRow(alert, row);
    }
    if (!alert.detail.empty()) {
        putText(description, alert_key::kDetailText, alert.detail);
    }
}

}  // namespace

std::unique_ptr<DefaultStatusDialog> createAlertDialog(arbor::IPropertyHolder& description) {
    try {
        complete(description);
        return std::make_unique<DefaultStatusDialog>(description, false);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
