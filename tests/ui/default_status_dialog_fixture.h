#pragma once

#include "tests/ui/alert_fixture.h"

#include <cstdint>
#include <string>
#include <vector>

// Opens alerts as the listener does and records only the actions of the open alert.
class DefaultStatusDialogTest : public AlertFixture {
protected:
    using Codes = std::vector<std::uint32_t>;

    // Opens an alert and forgets the messages that it has published while it opened.
    void openQuietly(int type, int status) {
        open(type, status);
        told.clear();
    }

    // Opens an alert with this caption on its OK button, and forgets its messages.
    void openWithCaption(int status, const std::wstring& caption) {
        constexpr unsigned kFreeId = 2000;
        replaceText(kFreeId, caption);
        describe(10, status);
        description.setInt(L"buttonMessage", kFreeId);
        openDescribed();
        told.clear();
    }
};
