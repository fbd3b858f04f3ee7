#pragma once

#include <QtGlobal>

// Marks the classes with signals of the libraries that plug-ins share. A signal is known by its address,
// which on Windows is the same in every module only for what is exported and imported by name.

#ifdef LibLumivar_EXPORTS
#define LUMIVAR_SUPPORT_EXPORT Q_DECL_EXPORT
#else
#define LUMIVAR_SUPPORT_EXPORT Q_DECL_IMPORT
#endif

#ifdef lumivar_devices_EXPORTS
#define LUMIVAR_DEVICES_EXPORT Q_DECL_EXPORT
#else
#define LUMIVAR_DEVICES_EXPORT Q_DECL_IMPORT
#endif

#ifdef lumivar_effect_contract_EXPORTS
#define LUMIVAR_EFFECTS_EXPORT Q_DECL_EXPORT
#else
#define LUMIVAR_EFFECTS_EXPORT Q_DECL_IMPORT
#endif
