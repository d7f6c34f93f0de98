#pragma once

// Keys of the description of an alert: a property bag that the listener fills, the factory
// completes and the dialog reads. A key "ids..." holds a string id, "idb..." a bitmap id, and the
// others what is said beside them. All spellings are kept: see decision 0012.
namespace alert_key {

// Set by the listener
inline constexpr wchar_t kModule[] = L"hinstance";         // pointer
inline constexpr wchar_t kStringModule[] = L"hSinstance";  // pointer; absent: kModule
inline constexpr wchar_t kBroker[] = L"eventBroker";       // pointer; absent: actions are dropped
inline constexpr wchar_t kPrinterName[] = L"idsPrinter";   // text
inline constexpr wchar_t kPortName[] = L"idsPort";         // text
inline constexpr wchar_t kStatus[] = L"status";
inline constexpr wchar_t kSubcode[] = L"subcode";
inline constexpr wchar_t kDialogType[] = L"dialog type";
inline constexpr wchar_t kMediaCode[] = L"mediaCode";

// The frame of the alert
inline constexpr wchar_t kTemplate[] = L"dialogID";
inline constexpr wchar_t kTitle[] = L"idsTitle";  // format: the printer's name
inline constexpr wchar_t kHeadline[] = L"idsSubTitle";
inline constexpr wchar_t kDetail[] = L"idsSubTitle1";
inline constexpr wchar_t kDetailText[] = L"subtitle1";  // text, wins over kDetail
inline constexpr wchar_t kNotExist[] = L"not exist";    // what an absent text reads as; kept
inline constexpr wchar_t kOkCaption[] = L"buttonMessage";
inline constexpr wchar_t kPicture[] = L"idbPrinter";
inline constexpr wchar_t kIcon[] = L"idbIcon";
inline constexpr wchar_t kShop[] = L"idsShop";
inline constexpr wchar_t kReturns[] = L"idsReturns";
inline constexpr wchar_t kFraud[] = L"idsFraud";

// The message: each of these replaces what the one before it said
inline constexpr wchar_t kMessage[] = L"ids1";       // format: the printer text
inline constexpr wchar_t kMediaMessage[] = L"ids2";  // format: message, media text, tray text
inline constexpr wchar_t kTrayCode[] = L"trayCode";
inline constexpr wchar_t kMessageText[] = L"StringStr";    // text
inline constexpr wchar_t kPartNumberMessage[] = L"idsPn";  // format: the part number, narrow
inline constexpr wchar_t kPartNumber[] = L"qvPartNo";      // text

// Fax
inline constexpr wchar_t kFaxReceived[] = L"idsFaxReceived";
inline constexpr wchar_t kFaxReceivedOrrery[] = L"idsFaxReceivedTB";

// Snooze: what a producer may say; the list itself has fixed texts
inline constexpr wchar_t kSnoozePrompt[] = L"idsSnoozeSelect";
inline constexpr wchar_t kSnoozeLabel[] = L"idsSnoozeRemindAfter";
inline constexpr const wchar_t* kSnoozeChoices[] = {L"ids1Hour",  L"ids4Hours",     L"ids1Day",
                                                    L"ids2Days",  L"ids3Days",      L"ids1Week",
                                                    L"ids2Weeks", L"idsSnoozeNever"};

// Manual duplex
inline constexpr wchar_t kDuplexTitle[] = L"idsManualTitle";
inline constexpr const wchar_t* kDuplexTexts[] = {L"idsManual1", L"idsManual2", L"idsManual3"};
inline constexpr const wchar_t* kDuplexPictures[] = {L"idbDuplex1", L"idbDuplex2", L"idbDuplex3"};
inline constexpr wchar_t kCaption[] = L"idsDialogCaption";  // instead of kTitle

// Switches
inline constexpr wchar_t kGenuineCartridge[] = L"genuine cartridge";
// Spelled so by every writer and reader of a description (kept: see decision 0012).
inline constexpr wchar_t kHideHelp[] = L"disalbeHelpBtn";
inline constexpr wchar_t kHideForRecycle[] = L"disalbeRecycleBtn";

// The supplies block
inline constexpr wchar_t kShowSupplies[] = L"showSupplies";
inline constexpr wchar_t kAlertDetail[] = L"alertDetail";  // text
inline constexpr wchar_t kSuppliesPicture[] = L"suppliesIconID";
inline constexpr wchar_t kSuppliesName[] = L"suppliesName";  // text
inline constexpr wchar_t kConditionPicture[] = L"suppliesIconConditionID";
inline constexpr wchar_t kSuppliesPages[] = L"suppliesAPR";           // text
inline constexpr wchar_t kSuppliesComment[] = L"suppliesAPRComment";  // text

}  // namespace alert_key
