#include "ui/button_faces.h"

#include "strings/string_ids.h"
#include "ui/resource_ids.h"

namespace {

// clang-format off
constexpr ButtonFace kButtonFaces[] = {
    // control           sized by             pressed              normal              caption                 white
    {IDC_ALERT_OK,      IDB_OK_PRESSED,      IDB_OK_PRESSED,      IDB_OK_NORMAL,      IDS_OK,                 true},
    {IDC_ALERT_HELP,    IDB_HELP_PRESSED,    IDB_HELP_PRESSED,    IDB_HELP_NORMAL,    IDS_HELP,               false},
    {IDC_ALERT_SHOP,    IDB_SHOP_PRESSED,    IDB_SHOP_PRESSED,    IDB_SHOP_NORMAL,    IDS_SHOP_FOR_SUPPLIES,  false},
    {IDC_ALERT_RECYCLE, IDB_SHOP_PRESSED,    IDB_RECYCLE_PRESSED, IDB_RECYCLE_NORMAL, IDS_RETURN_AND_RECYCLE, false},
};
// clang-format on

}  // namespace

std::span<const ButtonFace> buttonFaces() {
    return kButtonFaces;
}

const ButtonFace* buttonFace(int control) {
    for (const ButtonFace& face : kButtonFaces) {
        if (face.control == control) return &face;
    }
    return nullptr;
}
