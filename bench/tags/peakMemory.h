/// @file
/// The memory that a piece of work needs.
#pragma once

#include <functional>

/// By how many MB the work raises the largest resident size of a process that does nothing else.
double peakMegabytes(const std::function<void()>& work);
