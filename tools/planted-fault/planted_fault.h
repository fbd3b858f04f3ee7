// Switches faults on that scripts/plant-faults.py has written into a copy of the sources.
#pragma once
#pragma GCC diagnostic ignored "-Wextra"
#pragma GCC diagnostic ignored "-Wparentheses"
#pragma GCC diagnostic ignored "-Wsign-compare"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wint-in-bool-context"
#pragma GCC diagnostic ignored "-Wunused-variable"
#pragma GCC diagnostic ignored "-Wunused-const-variable"
#pragma GCC diagnostic ignored "-Wunused-value"
#pragma GCC diagnostic ignored "-Wreturn-type"
#pragma GCC diagnostic ignored "-Wbool-compare"
#pragma GCC diagnostic ignored "-Wdangling-else"
#pragma GCC diagnostic ignored "-Wmisleading-indentation"
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#pragma GCC diagnostic ignored "-Waggressive-loop-optimizations"
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace planted {
/// The number of the fault that is on, and a byte for each that a run came across, kept in a file because the
/// program under test may end in any way.
struct State
{
    int active = -1;
    volatile unsigned char* reached = nullptr;
    State()
    {
        constexpr int kMost = 65536;
        if (const char* number = ::getenv("PLANTED_FAULT"))
            active = ::atoi(number);
        const char* path = ::getenv("PLANTED_REACHED");
        const int file = path ? ::open(path, O_RDWR | O_CREAT | O_CLOEXEC, 0666) : -1;
        if (file < 0)
            return;
        if (::ftruncate(file, kMost) == 0) {
            void* map = ::mmap(nullptr, kMost, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
            if (map != MAP_FAILED)
                reached = static_cast<unsigned char*>(map);
        }
        ::close(file);
    }
};
inline bool on(int number)
{
    static State state;
    if (state.reached)
        state.reached[number] = 1;
    return state.active == number;
}

// `a < b` becomes `a < Op<number, LT, LE>() < b`: an operator that binds alike, whatever stands around the
// operands.
enum Kind { LT, LE, GT, GE, EQ, NE, ADD, SUB, MUL, DIV };
template <int N, Kind was, Kind is>
struct Op
{
};
template <class A, int N, Kind was, Kind is>
struct Left
{
    const A& a;
};
template <Kind k, class A, class B>
auto value(const A& a, const B& b)
{
    if constexpr (k == LT)
        return a < b;
    else if constexpr (k == LE)
        return a <= b;
    else if constexpr (k == GT)
        return a > b;
    else if constexpr (k == GE)
        return a >= b;
    else if constexpr (k == EQ)
        return a == b;
    else if constexpr (k == NE)
        return a != b;
    else if constexpr (k == ADD)
        return a + b;
    else if constexpr (k == SUB)
        return a - b;
    else if constexpr (k == MUL)
        return a * b;
    else
        return a / b;
}
#define PLANTED_OPERATOR(X)                                                                                  \
    template <class A, int N, Kind was, Kind is>                                                             \
    Left<A, N, was, is> operator X(const A& a, Op<N, was, is>)                                               \
    {                                                                                                        \
        return {a};                                                                                          \
    }                                                                                                        \
    template <class A, int N, Kind was, Kind is, class B>                                                    \
    auto operator X(Left<A, N, was, is> left, const B& b)                                                    \
    {                                                                                                        \
        return on(N) ? value<is>(left.a, b) : value<was>(left.a, b);                                         \
    }
PLANTED_OPERATOR(<)
PLANTED_OPERATOR(==)
PLANTED_OPERATOR(+)
PLANTED_OPERATOR(*)
} // namespace planted
