#include "printer/media_types.h"

#include "platform/trace.h"

#include <string_view>

namespace {

struct MediaType {
    std::string_view name;  // as the printer spells it
    int code;               // and string id of its text
};

// "Cardstock" shares the code of "Thick": the printer feeds both alike.
// clang-format off
constexpr MediaType kMediaTypes[] = {
    {"Normal",         301}, {"Recycled",   319}, {"Label",      312}, {"OHT",     311},
    {"Light",          307}, {"Envelope",   314}, {"Letterhead", 313}, {"Preprinted", 315},
    {"Prepunched",     316}, {"Colored",    317}, {"Bond",       318}, {"Rough",   320},
    {"Midweight",      308}, {"Thick",      309}, {"Thick2",     310}, {"QVOffice", 303},
    {"QVMultipurpose", 302}, {"QVAllinone", 304}, {"Premium",    306}, {"QVJL",    305},
    {"Cardstock",      309}, {"Vellum",     321},
};
// clang-format on

constexpr int kPlainPaper = 301;
constexpr int kFirstMediaText = 300;  // string id of media code 0, which no media has

int reportedMediaType = kPlainPaper;  // main thread only

}  // namespace

int TranslateMediaType(const char* name) {
    const char* const known = name != nullptr ? name : "";
    platform::trace("VELO TranslateMediaType mt='%s'", known);
    for (const MediaType& type : kMediaTypes) {
        if (type.name == known) return type.code;
    }
    return kPlainPaper;
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
    return kPlainPaper;
}
