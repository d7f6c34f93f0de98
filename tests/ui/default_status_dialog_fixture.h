#pragma once

#include "tests/ui/alert_fixture.h"

#include <cstdint>
#include <string>
#include <vector>

// The alerts of the program, and their actions once they are open.
class DefaultStatusDialogTest : public AlertFixture {
protected:
    using Codes = std::vector<std::uint32_t>;

    // Forgets what the alert told while it opened.
    void openQuietly(int type, int status) {
        open(type, status);
        told.clear();
    }

    // The same with a caption of its own on the OK button.
    void openWithCaption(int status, const std::wstring& caption) {
        constexpr unsigned kFreeId = 2000;
        replaceText(kFreeId, caption);
        describe(10, status);
        description.setInt(L"buttonMessage", kFreeId);
        openDescribed();
        told.clear();
    }
};
