#pragma once

#include "arbor/guid.h"
#include "arbor/i_listener.h"
#include "arbor/i_property_holder.h"
#include "monitor/open_alerts.h"
#include "platform/native_handle.h"
#include "printer/alert_types.h"
#include "tern/abstract_listener.h"

#include <cstdint>
#include <string>

namespace tern {
class EventBroker;
class IInstanceManager;
}  // namespace tern

// Decides for every status of the printer whether the user must be told, and opens the alert. Hears
// what the user does in the alerts, and stops the broker when printing has ended and none is left.
// Main thread only.
class DefaultLMSListener : public tern::AbstractListener {
public:
    // Asks `owner` for the broker; neither is owned, both outlive us. Messages of `messageType`
    // come from the status channel; `secondType` is the identity of its other end. `hinstance`
    // holds the dialogs, `hSinstance` the texts; both are passed on to the alerts.
    DefaultLMSListener(tern::IInstanceManager* owner, const arbor::Guid& messageType,
                       const arbor::Guid& secondType, platform::NativeHandle hinstance,
                       platform::NativeHandle hSinstance);
    ~DefaultLMSListener() override = default;

    [[nodiscard]] const arbor::Guid* getClassId() const override;

    // One handler for each alert, virtual so that a derived listener may change any of them. Order
    // and names are kept: see decision 0012.
    virtual void showDialogType0();
    // `mediaGroup` tells which range the status came from, 1 to 3. It is not used: the medium is in
    // the last two digits of the status.
    virtual void showMediaAlert(int mediaGroup);
    virtual void showDialogType2();
    virtual void showDialogType3();
    virtual void showTonerLow(int veryLow);
    virtual void showTonerOut();
    virtual void showDialogType5();
    virtual void showDialogType6();
    virtual void showDialogType7();
    virtual void showDialogType8();
    virtual void showDialogType29();
    virtual void showDialogType9();
    virtual void showDialogType10();
    virtual void showDialogType11();
    virtual void showDialogType14();
    virtual void showDialogType15();
    virtual void showDialogType16();
    virtual void showDialogType17();
    virtual void showDialogType18();
    virtual void showDialogType12();
    virtual void showDialogType19();
    virtual void showDialogType20();
    virtual void showDialogType21();
    virtual void showDialogType23();
    virtual void showDialogType22();
    virtual void showDialogType24();
    virtual void setCartData();
    virtual void showDialogType26();
    virtual void showDialogType27();
    // `status` is not used: the description carries the listener's status already.
    virtual void showGenericStatus(std::int32_t status);
    // Takes the names from the message, then reads the printer's "AlertMask".
    virtual void configurePrinter(arbor::IMessage* message);
    // Closes the alerts of the job. Stops the channel when none is left, else with the last one.
    virtual void onEndDocument();
    // False when the companion application is not installed or does not start.
    virtual bool launchCompanion();
    virtual void showDialogType32();

    // True when a status was filtered out before any alert was considered; false is no error.
    bool notify(arbor::IMessage* message) override;

protected:
    // The tail of every handler: describes the alert and opens it.
    void showAlert(AlertType dialogType);

    OpenAlerts _alerts;  // the name is kept: see decision 0012

private:
    friend bool fillDialogDescription(const DefaultLMSListener& listener,
                                      arbor::IPropertyHolder& description);

    void describeAndOpen(arbor::IPropertyHolder& description, AlertType dialogType);
    // These two answer as notify does.
    bool onChannelMessage(arbor::IMessage& message);
    bool onStatus(const arbor::IPropertyHolder& properties);
    [[nodiscard]] bool isSilenced() const;
    void onChannelControl(arbor::IMessage& message);
    [[nodiscard]] bool subcodeIs(std::uint32_t subcode) const;
    void onFeedback(std::uint32_t action, const arbor::IPropertyHolder& properties);
    void onDialogClosed(const arbor::IPropertyHolder& properties);
    void closeAlert(const class StatusDialog* dialog);
    void onFaxLink(const arbor::IPropertyHolder& properties);
    void onCompact(const arbor::IPropertyHolder& properties, bool detailIsLink);
    void pressButton(const wchar_t* button) const;
    void stopChannel();

    std::int32_t _status = 0;  // these two: of the message that is being handled
    std::int32_t _subcode = 0;
    arbor::Guid _messageType;
    arbor::Guid _secondType;
    std::wstring _printerName;
    std::wstring _portName;
    // Which alerts the printer's settings let through; all of them until the printer says
    // otherwise. Names kept: see decision 0012.
    bool _showErrors = true;
    bool _showWarnings = true;
    bool _showInformation = true;
    bool _exitWithLastDialog = false;
    std::uint32_t _cartridgeSN = 0;
    tern::EventBroker* _broker;  // not owned
    platform::NativeHandle _hinstance;
    platform::NativeHandle _hSinstance;
};

// What every alert is told: modules, broker, printer, status. False when some of it could not be
// stored for lack of memory.
[[nodiscard]] bool fillDialogDescription(const DefaultLMSListener& listener,
                                         arbor::IPropertyHolder& description);
