#pragma once

// Resets the platform for a test: removes the monitor's keys from the registry. Natively it empties
// the simulated world and removes all injected faults.
void cleanPlatform();
