// Loaded into the program before the C library: counts calls of each kind in the file LUMIVAR_FAULT_COUNTS
// and lets those fail that it names. Stores are what lies below LUMIVAR_FAULT_STORES, and pieces of memory
// count from LUMIVAR_FAULT_BYTES on. Programs that the program starts are left alone.
#include "FaultCounts.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

constexpr int kMaxFiles = 4096;

enum FileKind : char { OtherFile, StoreFile, LogFile, LineFile };

FaultCounts* s_counts = nullptr; // null: nothing is counted
const char* s_stores = "";
size_t s_storesLength = 0;
size_t s_leastBytes = 0;
std::atomic<FileKind> s_files[kMaxFiles]; // by descriptor

template <typename Function>
Function* original(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// Counts the call; true when it has to fail, with errno set.
bool fails(FaultKind kind)
{
    if (!s_counts)
        return false;
    const long call = ++s_counts->calls[kind];
    if (call < s_counts->first[kind] || call > s_counts->last[kind])
        return false;
    ++s_counts->failed[kind];
    errno = kFaults[kind].error;
    return true;
}

FileKind kindOf(const char* path)
{
    if (s_storesLength == 0 || strncmp(path, s_stores, s_storesLength) != 0)
        return OtherFile;
    const char* rest = path + s_storesLength;
    if (strncmp(rest, "/dumps/", 7) == 0)
        return OtherFile;
    return strncmp(rest, "/logs/", 6) == 0 ? LogFile : StoreFile;
}

FileKind kindOf(int file)
{
    return file >= 0 && file < kMaxFiles ? s_files[file].load() : OtherFile;
}

bool failsToOpen(int flags)
{
    return fails((flags & O_ACCMODE) == O_RDONLY ? FaultOpenRead : FaultOpenWrite);
}

int opened(int file, const char* path)
{
    if (file >= 0 && file < kMaxFiles)
        s_files[file] = *path && isatty(file) ? LineFile : kindOf(path);
    return file;
}

bool failsToWrite(int file)
{
    const FileKind kind = kindOf(file);
    return (kind == StoreFile && fails(FaultWrite)) || (kind == LogFile && fails(FaultLog)) ||
           (kind == LineFile && fails(FaultLineWrite));
}

__attribute__((constructor)) void begin()
{
    const char* counts = getenv("LUMIVAR_FAULT_COUNTS");
    if (!counts || strcmp(program_invocation_short_name, "lumivar") != 0)
        return;
    if (const char* stores = getenv("LUMIVAR_FAULT_STORES")) {
        s_stores = stores;
        s_storesLength = strlen(stores);
    }
    if (const char* bytes = getenv("LUMIVAR_FAULT_BYTES"))
        s_leastBytes = strtoul(bytes, nullptr, 10);
    const int file = open(counts, O_RDWR | O_CLOEXEC);
    void* memory = mmap(nullptr, sizeof(FaultCounts), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    close(file);
    if (memory == MAP_FAILED)
        abort(); // nothing may go by uncounted
    s_counts = static_cast<FaultCounts*>(memory);
}

/// One of the heap's own functions. No guarded static holds it: what guards those may need memory.
template <typename Function>
struct HeapFunction
{
    Function* find(const char* name)
    {
        if (!m_found)
            m_found = original<Function>(name);
        return m_found;
    }
    Function* m_found = nullptr;
};

} // namespace

extern "C" {

// The C library's take any number of arguments; where no mode is given, what stands in its place is not
// looked at.
int openPath(const char* path, int flags, mode_t mode) __asm__("open");
int openPath64(const char* path, int flags, mode_t mode) __asm__("open64");
int openBelow(int folder, const char* path, int flags, mode_t mode) __asm__("openat");

int openPath(const char* path, int flags, mode_t mode)
{
    static const auto real = original<int(const char*, int, ...)>("open");
    return failsToOpen(flags) ? -1 : opened(real(path, flags, mode), path);
}

int openPath64(const char* path, int flags, mode_t mode)
{
    return openPath(path, flags, mode);
}

int openBelow(int folder, const char* path, int flags, mode_t mode)
{
    static const auto real = original<int(int, const char*, int, ...)>("openat");
    return failsToOpen(flags) ? -1 : opened(real(folder, path, flags, mode), path);
}

FILE* fopen(const char* path, const char* mode)
{
    static const auto real = original<FILE*(const char*, const char*)>("fopen");
    if (failsToOpen(mode[0] == 'r' && !strchr(mode, '+') ? O_RDONLY : O_RDWR))
        return nullptr;
    FILE* file = real(path, mode);
    if (file)
        opened(fileno(file), path);
    return file;
}

FILE* fopen64(const char* path, const char* mode)
{
    return fopen(path, mode);
}

int close(int file)
{
    static const auto real = original<int(int)>("close");
    opened(file, ""); // first: another thread may be given the number
    return real(file);
}

ssize_t write(int file, const void* bytes, size_t size)
{
    static const auto real = original<ssize_t(int, const void*, size_t)>("write");
    return failsToWrite(file) ? -1 : real(file, bytes, size);
}

ssize_t writev(int file, const iovec* pieces, int count)
{
    static const auto real = original<ssize_t(int, const iovec*, int)>("writev");
    return failsToWrite(file) ? -1 : real(file, pieces, count);
}

ssize_t read(int file, void* bytes, size_t size)
{
    static const auto real = original<ssize_t(int, void*, size_t)>("read");
    const FileKind kind = kindOf(file);
    const bool isFault =
        (kind == StoreFile && fails(FaultRead)) || (kind == LineFile && fails(FaultLineRead));
    return isFault ? -1 : real(file, bytes, size);
}

int fsync(int file)
{
    static const auto real = original<int(int)>("fsync");
    return kindOf(file) == StoreFile && fails(FaultSync) ? -1 : real(file);
}

int fdatasync(int file)
{
    static const auto real = original<int(int)>("fdatasync");
    return kindOf(file) == StoreFile && fails(FaultSync) ? -1 : real(file);
}

int rename(const char* from, const char* to) noexcept
{
    static const auto real = original<int(const char*, const char*)>("rename");
    return kindOf(to) == StoreFile && fails(FaultRename) ? -1 : real(from, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept
{
    static const auto real = original<int(int, const char*, int, const char*, unsigned)>("renameat2");
    return kindOf(to) == StoreFile && fails(FaultRename) ? -1 : real(fromFolder, from, toFolder, to, flags);
}

int link(const char* from, const char* to) noexcept
{
    static const auto real = original<int(const char*, const char*)>("link");
    return kindOf(to) == StoreFile && fails(FaultRename) ? -1 : real(from, to);
}

void* mmap(void* address, size_t size, int protection, int flags, int file, off_t offset) noexcept
{
    static const auto real = original<void*(void*, size_t, int, int, int, off_t)>("mmap");
    return fails(FaultMap) ? MAP_FAILED : real(address, size, protection, flags, file, offset);
}

void* mmap64(void* address, size_t size, int protection, int flags, int file, off64_t offset) noexcept
{
    return mmap(address, size, protection, flags, file, offset);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*run)(void*),
                   void* argument) noexcept
{
    using Create = int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    static const auto real = original<Create>("pthread_create");
    return fails(FaultThread) ? errno : real(thread, attributes, run, argument);
}

void* malloc(size_t bytes) noexcept
{
    static HeapFunction<void*(size_t)> real;
    return bytes >= s_leastBytes && fails(FaultMemory) ? nullptr : real.find("malloc")(bytes);
}

void* calloc(size_t count, size_t bytes) noexcept
{
    static HeapFunction<void*(size_t, size_t)> real;
    return count * bytes >= s_leastBytes && fails(FaultMemory) ? nullptr : real.find("calloc")(count, bytes);
}

void* realloc(void* old, size_t bytes) noexcept
{
    static HeapFunction<void*(void*, size_t)> real;
    return bytes >= s_leastBytes && fails(FaultMemory) ? nullptr : real.find("realloc")(old, bytes);
}

} // extern "C"
