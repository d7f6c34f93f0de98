#pragma once

#include "arbor/i_property_holder.h"
#include "ui/default_status_dialog.h"

#include <memory>

// Completes `description` with what its "dialog type" shows and makes the alert of it, without a
// window yet. Null when memory runs out; the description may then be complete in part. Main thread.
std::unique_ptr<DefaultStatusDialog> createAlertDialog(arbor::IPropertyHolder& description);
