#pragma once

/// What this build was made from; the source is written by the build (see cmake/BuildInfo.cmake).
namespace BuildInfo {

extern const char kGitBranch[];  ///< "unknown" outside of a checkout
extern const char kGitCommit[];  ///< "unknown" outside of a checkout
extern const char kBuildDate[];  ///< yymmdd
extern const char kAppVersion[]; ///< three groups and the build date, such as "1.2.1.240426"

} // namespace BuildInfo
