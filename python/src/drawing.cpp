// Python callables as drawing hooks.
#include <atomic>
#include <chrono>
#include <thread>

#include "Numbers.h"
#include "families.h"
#include "geomKit/debugDraw/gkFuncBinder.h"

namespace geomkitPython {

namespace {

using geomKit::gkFuncBinder;
using geomKit::Vector3;

/// One callable. The lock of the interpreter guards it; the flag is read without the lock, so that
/// drawing costs nothing, and touches no interpreter, while there is no callable.
class Hook {
public:
    void set(const py::object& callable) {
        const py::object before = callable_;
        isSet_ = !callable.is_none();
        callable_ = callable;
    }
    /// Whether a call has begun that is not over yet.
    bool isRunning() const { return running_ > 0; }

    /// From any thread. Exceptions of the callable must not pass through the code that draws, which
    /// may be declared to throw nothing: they go where Python reports those that nobody can catch.
    template <typename... Args>
    void call(const Args&... args) {
        if (!isSet_) return;
        const py::gil_scoped_acquire lock;
        const py::object callable = callable_;  // stays alive should it unregister itself
        if (!callable || callable.is_none()) return;
        ++running_;
        try {
            callable(toPython(args)...);
        } catch (py::error_already_set& error) {
            // An interrupt is for whoever runs the loop, and comes again when that asks for it.
            if (error.matches(PyExc_KeyboardInterrupt)) {
                PyErr_SetInterrupt();
            } else {
                error.discard_as_unraisable(callable);
            }
        }
        --running_;
    }

private:
    static py::object toPython(const Vector3& v) { return py::array_t<double>(3, v.data()); }
    static py::object toPython(int number) { return py::int_(number); }
    static py::object toPython(double number) { return py::float_(number); }

    std::atomic<bool> isSet_{false};
    py::object callable_;
    int running_ = 0;
};

struct Hooks {
    Hook point;
    Hook vector;
};

/// Never destroyed: the interpreter is gone when objects of static storage are.
Hooks& hooks() {
    static Hooks* const instance = new Hooks;
    return *instance;
}

void drawPoint(const Vector3& point, int colour, void* context) {
    static_cast<Hooks*>(context)->point.call(point, colour);
}

void drawVector(const Vector3& origin, const Vector3& vector, int colour, double scale,
                void* context) {
    static_cast<Hooks*>(context)->vector.call(origin, vector, colour, scale);
}

/// Either may be None.
void setHooks(const py::object& point, const py::object& vector) {
    hooks().point.set(point);
    hooks().vector.set(vector);
}

/// Unregisters at the end of the interpreter, and waits a little for calls that other threads have
/// begun: the end would tear them out of this code.
void finish() {
    constexpr auto kPatience = std::chrono::seconds(1);
    constexpr auto kNap = std::chrono::milliseconds(1);
    setHooks(py::none(), py::none());
    const auto begun = std::chrono::steady_clock::now();
    while (hooks().point.isRunning() || hooks().vector.isRunning()) {
        if (std::chrono::steady_clock::now() - begun > kPatience) return;
        const py::gil_scoped_release unlocked;
        std::this_thread::sleep_for(kNap);
    }
}

Vector3 vectorOf(const py::object& argument, const char* name) {
    return Numbers<double>(argument, name, {3}).as<Vector3>()[0];
}

void showPoint(const py::object& point, int colour) {
    gkFuncBinder::drawPoint(vectorOf(point, "point"), colour);
}

void showVector(const py::object& origin, const py::object& vector, int colour, double scale) {
    gkFuncBinder::drawVector(vectorOf(origin, "origin"), vectorOf(vector, "vector"), colour, scale);
}

}  // namespace

void addDrawing(py::module_& module) {
    // The slots have no lock, so they are filled once, before anything is drawn.
    gkFuncBinder::registerDrawPoint(&drawPoint, &hooks());
    gkFuncBinder::registerDrawVector(&drawVector, &hooks());
    module.def("set_hooks", &setHooks, py::arg("point"), py::arg("vector"));
    module.def("finish_drawing", &finish);
    module.def("draw_point", &showPoint, py::arg("point"), py::arg("colour"));
    module.def("draw_vector", &showVector, py::arg("origin"), py::arg("vector"), py::arg("colour"),
               py::arg("scale"));
}

}  // namespace geomkitPython
