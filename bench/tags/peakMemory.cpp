#include "bench/tags/peakMemory.h"

#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double peakOfChild(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

}  // namespace

double peakMegabytes(const std::function<void()>& work) {
    malloc_trim(0);  // memory freed earlier would be taken again without being seen
    const double idle = peakOfChild([] {});
    return peakOfChild(work) - idle;
}
