#pragma once

/// Sees to it that the user's folders can be found: where the environment does not name the home folder, the
/// system is asked for it. Call it before the application object.
void provideHomeFolder();
