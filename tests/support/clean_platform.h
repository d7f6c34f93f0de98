#pragma once

// Puts the platform back as tests expect it: nothing of the monitor in the registry; natively
// nothing at all in the simulated world, and no faults.
void cleanPlatform();
