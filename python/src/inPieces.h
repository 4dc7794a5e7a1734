// Long work on arrays: without Python's lock, in several threads, and interruptible.
#pragma once

#include <cstddef>
#include <functional>

#include <pybind11/pybind11.h>

namespace geomkitPython {

/// The number of threads that the argument `workers` asks for: itself, or all processors for -1.
std::size_t workerCount(int workers);

/// Calls work(first, last) for ranges that cover 0 to `count`, each of at most `piece` items, in
/// `workers` threads that share them. The lock of the interpreter is released meanwhile. When the
/// user interrupts, it ends within a piece, with the exception that Python raises for it.
///
/// A piece should take a few milliseconds at the most. Called with the lock held.
void inPieces(std::size_t count, std::size_t piece, std::size_t workers,
              const std::function<void(std::size_t, std::size_t)>& work);

}  // namespace geomkitPython
