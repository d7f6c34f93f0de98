#pragma once

namespace tern {
class EventBroker;
}

// The print path writes its first record about a millisecond after it has started the monitor, but
// the main loop sleeps a tenth of a second when its first turn finds nothing to do. So this gives
// the first turn something to do: it loads the spooler's library, which the first alert needs, and
// waits a moment for the record. Call it before the loop runs; the broker must outlive that turn.
void waitForFirstRecord(tern::EventBroker& broker);
