// Functions of single items, called for arrays that broadcast.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <tuple>
#include <type_traits>
#include <utility>

#include "Broadcast.h"
#include "Layout.h"
#include "inPieces.h"

namespace geomkitPython {

/// Some hundred microseconds of work for most functions, some milliseconds for the slowest.
constexpr std::size_t kItemsPerPiece = 4096;

/// By how many threads items are shared, and how many they take at a time.
struct Sharing {
    int workers;
    std::size_t piece = kItemsPerPiece;
};

template <typename Answer>
class Outputs;

/// An array for each member of a function's answer.
template <typename... T>
class Outputs<std::tuple<T...>> {
public:
    explicit Outputs(const Shape& leading) : outputs_(Output<T>(leading)...) {}

    void set(std::size_t item, const std::tuple<T...>& answer) const {
        iSet(item, answer, std::index_sequence_for<T...>());
    }
    py::tuple arrays() const {
        return std::apply([](const auto&... output) { return py::make_tuple(output.array()...); },
                          outputs_);
    }

private:
    template <std::size_t... k>
    void iSet(std::size_t item, const std::tuple<T...>& answer, std::index_sequence<k...>) const {
        ((std::get<k>(outputs_).items()[item] = std::get<k>(answer)), ...);
    }

    std::tuple<Output<T>...> outputs_;
};

namespace detail {

/// A run of items, in the order of the result. The two most common steps have loops of their own,
/// which take 0.5 to 0.9 of the time: items one by one, and a first argument that stays the same.
template <typename F, typename Answers, std::size_t... k, typename Head, typename... Tail>
void doRun(const F& function, const Answers& answers, std::size_t item, std::size_t count,
           const Broadcast::Run& run, std::index_sequence<0, k...> /*numbers*/, const Head* head,
           const Tail*... tail) {
    head += run.first[0];
    ((tail += run.first[k]), ...);
    const bool isPlain = ((run.step[k] == 1) && ...);
    if (isPlain && run.step[0] == 1) {
        for (std::size_t i = 0; i < count; ++i)
            answers.set(item + i, function(head[i], tail[i]...));
    } else if (isPlain && run.step[0] == 0) {
        const Head one = *head;
        for (std::size_t i = 0; i < count; ++i)
            answers.set(item + i, function(one, tail[i]...));
    } else {
        for (std::size_t i = 0; i < count; ++i) {
            answers.set(item + i, function(*head, *tail...));
            head += run.step[0];
            ((tail += run.step[k]), ...);
        }
    }
}

}  // namespace detail

/// A tuple of arrays: what the function answers, a std::tuple, for each item of the shape that the
/// inputs broadcast to.
template <typename F, typename... T>
py::tuple forEachItem(const Sharing& sharing, const F& function, const Input<T>&... inputs) {
    static_assert(sizeof...(T) <= Broadcast::kMostArguments);
    const std::size_t threads = workerCount(sharing.workers);
    const Broadcast plan({{inputs.name(), &inputs.numbers().leading()}...});
    const Outputs<std::invoke_result_t<F, const T&...>> answers(plan.shape());
    inPieces(plan.count(), sharing.piece, threads, [&](std::size_t first, std::size_t last) {
        while (first < last) {
            const Broadcast::Run run = plan.runFrom(first);
            const std::size_t count = (std::min)(run.count, last - first);
            detail::doRun(function, answers, first, count, run, std::index_sequence_for<T...>(),
                          inputs.items()...);
            first += count;
        }
    });
    return answers.arrays();
}

/// The same for a function whose answer is one `Out`: its array.
template <typename Out, typename F, typename... T>
py::object forEach(int workers, const F& function, const Input<T>&... inputs) {
    const auto answer = [&function](const T&... items) {
        return std::tuple<Out>(function(items...));
    };
    return forEachItem({workers}, answer, inputs...)[0];
}

namespace detail {

template <typename T>
using HandleOf = py::handle;

template <typename F, typename Answer, typename... T, std::size_t... k>
void addLoop(py::module_& module, const char* name,
             const std::array<const char*, sizeof...(T)>& names, const F& function,
             Answer (F::* /*call*/)(T...) const, std::index_sequence<k...> /*numbers*/) {
    module.def(name, [function, names](HandleOf<T>... arguments, int workers) {
        // In braces, arguments are evaluated from left to right: the first bad one is told.
        const std::tuple<Input<std::decay_t<T>>...> inputs{
            Input<std::decay_t<T>>(names[k], arguments)...};
        return std::apply(
            [&](const auto&... input) { return forEachItem({workers}, function, input...); },
            inputs);
    });
}

}  // namespace detail

/// Adds a function of arrays, and of the number of workers, that calls `function` for each item.
/// The errors call the arrays by `names`.
template <std::size_t count, typename F>
void addLoop(py::module_& module, const char* name, const char* const (&names)[count],
             const F& function) {
    std::array<const char*, count> list = {};
    std::copy(names, names + count, list.begin());
    detail::addLoop(module, name, list, function, &F::operator(),
                    std::make_index_sequence<count>());
}

}  // namespace geomkitPython
