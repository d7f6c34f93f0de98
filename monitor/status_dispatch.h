#pragma once

#include <cstdint>

class DefaultLMSListener;

// Calls the handler of the alert that a status asks for, through the listener's virtual operations.
// Does nothing when no alert belongs to it.
void dispatchStatus(DefaultLMSListener& listener, std::int32_t status, std::int32_t subcode);
