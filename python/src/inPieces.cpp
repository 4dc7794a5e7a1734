#include "inPieces.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <exception>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

namespace geomkitPython {

namespace {

namespace py = pybind11;
using Clock = std::chrono::steady_clock;
using Work = std::function<void(std::size_t, std::size_t)>;

/// How often Python is asked for interrupts.
constexpr auto kPatience = std::chrono::milliseconds(50);

/// The ranges that are still to be done, for threads to take one after the other.
class Pieces {
public:
    Pieces(std::size_t count, std::size_t piece, const Work& work)
        : count_(count), piece_(piece), work_(work) {}

    /// Does one piece; false when there is none left or the work was stopped.
    bool doOne() noexcept {
        const std::size_t first = next_.fetch_add(piece_);
        if (first >= count_) return false;
        try {
            work_(first, (std::min)(first + piece_, count_));
        } catch (...) {
            stop(std::current_exception());
        }
        return true;
    }
    /// The first error stays.
    void stop(const std::exception_ptr& error) noexcept {
        next_ = count_;
        const std::lock_guard<std::mutex> lock(mutex_);
        if (!error_) error_ = error;
    }
    const std::exception_ptr& error() const { return error_; }

private:
    const std::size_t count_;
    const std::size_t piece_;
    const Work& work_;
    std::atomic<std::size_t> next_{0};
    std::mutex mutex_;
    std::exception_ptr error_;
};

/// Works on pieces, and asks Python for interrupts now and then.
void _doPieces(Pieces& pieces) {
    Clock::time_point asked = Clock::now();
    while (pieces.doOne()) {
        const Clock::time_point now = Clock::now();
        if (now - asked < kPatience) continue;
        asked = now;
        const py::gil_scoped_acquire lock;
        if (PyErr_CheckSignals() != 0) {
            pieces.stop(std::make_exception_ptr(py::error_already_set()));
            return;
        }
    }
}

/// Starts up to `count` threads. Where the system grants fewer, these do all of the work.
std::vector<std::thread> _startHelpers(Pieces& pieces, std::size_t count) {
    std::vector<std::thread> helpers;
    try {
        helpers.reserve(count);
        while (helpers.size() < count) {
            helpers.emplace_back([&pieces] {
                while (pieces.doOne()) {
                }
            });
        }
    } catch (const std::system_error&) {
        return helpers;
    }
    return helpers;
}

}  // namespace

std::size_t workerCount(int workers) {
    if (workers == -1) return (std::max)(1U, std::thread::hardware_concurrency());
    if (workers >= 1) return static_cast<std::size_t>(workers);
    throw py::value_error("workers: " + std::to_string(workers) +
                          ", wanted a positive number, or -1 for all processors");
}

void inPieces(std::size_t count, std::size_t piece, std::size_t workers, const Work& work) {
    if (count <= piece) {
        const py::gil_scoped_release unlocked;
        if (count > 0) work(0, count);
        return;
    }
    Pieces pieces(count, piece, work);
    {
        const py::gil_scoped_release unlocked;
        const std::size_t pieceCount = count / piece + (count % piece != 0 ? 1 : 0);
        const std::size_t threads = (std::min)(workers, pieceCount);
        std::vector<std::thread> helpers = _startHelpers(pieces, threads > 1 ? threads - 1 : 0);
        _doPieces(pieces);
        for (std::thread& helper : helpers)
            helper.join();
    }
    if (pieces.error()) std::rethrow_exception(pieces.error());
}

}  // namespace geomkitPython
