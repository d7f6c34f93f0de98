#pragma once

// Keys in the bag of a component, and of the parameters that it is made from. Parameters come from
// the command line as "key=value". Kept: see decision 0012.
namespace tern::component_key {

// In the component's own bag; its thread stands there under arbor::kThreadKey.
inline constexpr wchar_t kListener[] = L"listener";   // pointer: the component's IListener
inline constexpr wchar_t kBroker[] = L"eventBroker";  // pointer: its broker; set by the broker

// In the parameters
inline constexpr wchar_t kThreadControl[] = L"threadControl";  // pointer: IListener of the thread
inline constexpr wchar_t kInputPipe[] = L"inputPipe";          // text: pipe of the status channel
inline constexpr wchar_t kOutputPipe[] = L"outputPipe";        // text: pipe of VeloListener
inline constexpr wchar_t kPrinterId[] = L"printerid";          // text: decimal number
inline constexpr wchar_t kInterval[] = L"interval";            // int: milliseconds of the timer

}  // namespace tern::component_key
