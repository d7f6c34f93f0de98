#include "printer/media_types.h"

#include "platform/trace.h"
#include "strings/string_ids.h"

#include <string_view>

namespace {

struct MediaType {
    std::string_view name;  // as the printer spells it
    int code;               // also the string id of its text
};

// "Cardstock" shares the code of "Thick" on purpose: there is one text for both.
// clang-format off
constexpr MediaType kMediaTypes[] = {
    {"Normal",          IDS_MEDIA_PLAIN},
    {"Recycled",        IDS_MEDIA_RECYCLED},
    {"Label",           IDS_MEDIA_LABELS},
    {"OHT",             IDS_MEDIA_TRANSPARENCY},
    {"Light",           IDS_MEDIA_LIGHT},
    {"Envelope",        IDS_MEDIA_ENVELOPES},
    {"Letterhead",      IDS_MEDIA_LETTERHEAD},
    {"Preprinted",      IDS_MEDIA_PREPRINTED},
    {"Prepunched",      IDS_MEDIA_PREPUNCHED},
    {"Colored",         IDS_MEDIA_COLORED},
    {"Bond",            IDS_MEDIA_BOND},
    {"Rough",           IDS_MEDIA_ROUGH},
    {"Midweight",       IDS_MEDIA_MIDWEIGHT},
    {"Thick",           IDS_MEDIA_THICK},
    {"Thick2",          IDS_MEDIA_EXTRA_THICK},
    {"QVOffice",        IDS_MEDIA_QV_OFFICE},
    {"QVMultipurpose",  IDS_MEDIA_QV_MULTIPURPOSE},
    {"QVAllinone",      IDS_MEDIA_QV_ALL_IN_ONE},
    {"Premium",         IDS_MEDIA_PREMIUM},
    {"QVJL",            IDS_MEDIA_QV_JL},
    {"Cardstock",       IDS_MEDIA_THICK},
    {"Vellum",          IDS_MEDIA_VELLUM},
};
// clang-format on

constexpr int kFirstMediaText = IDS_MEDIA_PLAIN - 1;  // of media code 0, which no medium has

// Main thread only. Process-wide, because the channel reports the medium and only an alert that
// opens later asks for it.
int reportedMediaType = IDS_MEDIA_PLAIN;

}  // namespace

int TranslateMediaType(const char* name) {
    const char* const known = name != nullptr ? name : "";
    platform::trace("VELO TranslateMediaType mt='%s'", known);
    for (const MediaType& type : kMediaTypes) {
        if (type.name == known) return type.code;
    }
    return IDS_MEDIA_PLAIN;
}

int currentMediaType() {
    return reportedMediaType;
}

void setCurrentMediaType(int code) {
    reportedMediaType = code;
}

int mediaTextOfCode(int mediaCode) {
    for (const MediaType& type : kMediaTypes) {
        if (type.code - kFirstMediaText == mediaCode) return type.code;
    }
    return IDS_MEDIA_PLAIN;
}
