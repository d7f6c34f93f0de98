#pragma once

#include "printer/alert_types.h"
#include "ui/resource_ids.h"
#include "ui/status_dialog.h"
#include "ui/window_types.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

struct ButtonFace;

// The alert as people meet it: the base's frame with manual duplex steps, the genuine-cartridge
// link, the supplies block, the snooze list, Help and owner-drawn buttons.
class DefaultStatusDialog final : public StatusDialog {
public:
    static constexpr std::size_t kDuplexSteps = 3;
    static constexpr std::array<int, kDuplexSteps> kDuplexPictureControls = {
        IDC_DUPLEX_PICTURE_1, IDC_DUPLEX_PICTURE_2, IDC_DUPLEX_PICTURE_3};

    // See StatusDialog. The factory passes false and the owner calls create() later.
    DefaultStatusDialog(const arbor::IPropertyHolder& description, bool createNow);
    ~DefaultStatusDialog() = default;

    // The order of these operations is kept: see decision 0012.
    DialogResult dlgProc(WindowHandle window, WindowMessage message, MessageWord wParam,
                         MessageLong lParam) override;
    virtual DialogResult onInitDialog(WindowHandle window, MessageWord wParam, MessageLong lParam);
    // `wParam` is the character; Alt+letter arrives as the capital letter.
    virtual DialogResult onChar(WindowHandle window, MessageWord wParam, MessageLong lParam);
    virtual DialogResult onCommand(WindowHandle window, MessageWord wParam, MessageLong lParam);
    virtual DialogResult onDrawItem(WindowHandle window, MessageWord wParam, MessageLong lParam);
    virtual DialogResult onCtlColorStatic(WindowHandle window, MessageWord wParam,
                                          MessageLong lParam);

    // Whether closing this alert asks the printer to go on: the alerts of manual duplex, and one
    // whose OK button says "Continue".
    [[nodiscard]] bool canResume() const;
    [[nodiscard]] AlertType dialogType() const noexcept { return _dialogType; }

private:
    void showDuplexSteps(WindowHandle window) const;
    void showGenuineLink(WindowHandle window) const;
    void showSuppliesBlock(WindowHandle window) const;
    void showSnoozeList(WindowHandle window) const;
    void nameControls(WindowHandle window) const;
    // What is shown in pixels of its own, anew for the window's scale and colours.
    void renewPictures(WindowHandle window) const;
    // Each of these two is the last statement of a rule: this object may be gone when it returns.
    void acceptOk(WindowHandle window);
    void showHelp(WindowHandle window) const;
    // The caption that is drawn on a button.
    [[nodiscard]] std::wstring buttonCaption(const ButtonFace& face) const;

    AlertType _dialogType;
    std::int32_t _status;
    bool _genuineCartridge;
    bool _helpHidden;
    bool _suppliesShown;
    bool _recycleHidden;
    std::array<int, kDuplexSteps> _duplexPictures{};  // 0 hides the control
    int _suppliesPicture;
    int _conditionPicture;
    std::array<std::wstring, kDuplexSteps> _duplexTexts;
    std::wstring _duplexTitle;
    std::wstring _caption;
    std::wstring _printerName;
    std::wstring _alertDetail;
    std::wstring _suppliesName;
    std::wstring _suppliesPages;
    std::wstring _suppliesComment;
};
