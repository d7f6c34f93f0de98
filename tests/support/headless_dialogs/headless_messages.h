#pragma once

#include "tests/support/headless_dialogs/headless_dialogs.h"
#include "ui/resource_ids.h"

// Declarations that only the sources of this folder share.
namespace headless {

// The window messages that alerts handle. The numbers are not those of Windows.
inline constexpr WindowMessage kInitDialog = 1;
inline constexpr WindowMessage kCommand = 2;
inline constexpr WindowMessage kClose = 3;
inline constexpr WindowMessage kChar = 4;
inline constexpr WindowMessage kMenuChar = 5;

inline constexpr int kLinkControls[] = {IDC_ALERT_SHOP_LINK, IDC_ALERT_RETURNS_LINK,
                                        IDC_ALERT_FRAUD_LINK, IDC_ALERT_DETAIL};

void eraseWindow(WindowHandle window);
void countOpened();
void countDismissed(WindowHandle window);
void addMessage(Message message);
void addCheck(CartridgeCheck check);
void deliver(WindowHandle window, WindowMessage message, MessageWord wParam, MessageLong lParam);

}  // namespace headless
