// Prints one line a family of functions. `./dev check` compares the lines of many builds with each
// other and with golden.txt.
#include <cinttypes>
#include <cstdio>

#include "tests/golden/Digest.h"

using namespace geomKit;

void Digest::print(const char* name) const {
    if (ieee_ != kEmpty) std::printf("%-28s %016" PRIx64 "\n", name, ieee_);
    if (math_ != kEmpty) std::printf("%-28s %016" PRIx64 " math-library\n", name, math_);
}

void sample(const char* name, std::uint64_t seed, int samples,
            void (*add)(Digest&, InputSource&, int)) {
    InputSource in(seed);
    Digest digest;
    for (int i = 0; i < samples; ++i)
        add(digest, in, i);
    digest.print(name);
}

int main() {
    digestVectorAlgebra();
    digestTransforms();
    digestQueries();
    digestImplicits();
    digestMeshFunctions();
}
