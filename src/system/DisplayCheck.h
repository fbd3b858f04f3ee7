#pragma once

/// Lets the program run where there is no display: call it before the application object, which would end the
/// process there. Without a reachable X server, Qt gets a list of platforms to try, the offscreen one last; a
/// choice made through QT_QPA_PLATFORM is left alone. True when the list was given: then
/// QGuiApplication::platformName() tells whether anything will be visible.
bool choosePlatformWithoutDisplay();

/// Takes the list back out of the environment, so that programs started from here choose for themselves.
void forgetChosenPlatform();

/// Whether an X server takes connections, or the system always shows windows.
bool isDisplayReachable();

/// Calls `action` on the main thread when a Wayland desktop has gone, before the toolkit ends the process at
/// once; with an X server it does so by exit(). Call it when the log system is there.
void callWhenDisplayBreaks(void (*action)());

/// Keeps the toolkit from loading the drivers of OpenGL, which nothing here draws with; those that draw in
/// software take 50 MB. Call it before the application object. False when QT_XCB_GL_INTEGRATION holds a
/// choice already, which is left alone.
bool chooseNoOpenGl();

/// Takes that back out of the environment, once the application object is there.
void forgetNoOpenGl();
