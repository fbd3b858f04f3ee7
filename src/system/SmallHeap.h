#pragma once

/// Has every large block go back to the system when it is freed, for a program that waits in the tray for
/// days. Before the first one is taken.
void keepHeapSmall();
