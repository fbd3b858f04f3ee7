#pragma once

/// The name by which desktops know the program: its desktop entry, its windows under Wayland, its place on
/// the bus.
inline constexpr char kAppId[] = "org.lumivar.Lumivar";
