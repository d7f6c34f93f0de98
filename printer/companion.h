#pragma once

// Starts the maker's companion application Orrery, which shows received faxes. False when it is not
// installed or does not start; the trace says which. Main thread only.
bool startCompanion();
