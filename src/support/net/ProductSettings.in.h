#pragma once

// Written by the build from cmake/ProductSettings.cmake.
inline constexpr char kCompiledServiceAddress[] = "@LUMIVAR_SERVICE_ADDRESS@";
inline constexpr char kCompiledServiceKey[] = "@LUMIVAR_SERVICE_KEY@";
inline constexpr char kCompiledSupportMail[] = "@LUMIVAR_SUPPORT_MAIL@";
inline constexpr char kCompiledWebSite[] = "@LUMIVAR_WEB_SITE@";
