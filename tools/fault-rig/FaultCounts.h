#pragma once

#include <atomic>
#include <cerrno>

/// What can be made to fail below the program. Stores are the files of its configuration but logs and dumps,
/// the line is a strip's.
enum FaultKind {
    FaultRead,      ///< of a store
    FaultWrite,     ///< to a store
    FaultLog,       ///< a write to a log
    FaultSync,      ///< of a store
    FaultRename,    ///< of a store, and a link to one
    FaultOpenRead,  ///< of any file
    FaultOpenWrite, ///< of any file; the line is one
    FaultMap,
    FaultThread,
    FaultMemory, ///< a piece of LUMIVAR_FAULT_BYTES at least
    FaultLineWrite,
    FaultLineRead,
    kFaultKinds
};

struct FaultName
{
    const char* name;
    int error; ///< as errno tells of it
};

constexpr FaultName kFaults[kFaultKinds] = {
    {"read", EIO},      {"write", ENOSPC},     {"log", ENOSPC},        {"sync", EIO},
    {"rename", EACCES}, {"open-read", EMFILE}, {"open-write", ENOSPC}, {"map", ENOMEM},
    {"thread", EAGAIN}, {"memory", ENOMEM},    {"line-write", EIO},    {"line-read", EIO},
};

/// The content of the file that LUMIVAR_FAULT_COUNTS names, shared with the program however that ends.
struct FaultCounts
{
    std::atomic<long> calls[kFaultKinds];
    std::atomic<long> failed[kFaultKinds];
    std::atomic<long> first[kFaultKinds]; ///< of the calls that fail, counted from 1
    std::atomic<long> last[kFaultKinds];  ///< 0: none
};
