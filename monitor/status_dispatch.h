#pragma once

#include <cstdint>

class DefaultLMSListener;

// Calls the handler of the alert that a status asks for, through the listener's virtual operations.
// False when no alert belongs to it.
bool dispatchStatus(DefaultLMSListener& listener, std::int32_t status, std::int32_t subcode);
