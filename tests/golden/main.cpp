// Prints one line a family of functions. `./dev check` compares the lines of many builds with each
// other and with golden.txt.
#include <cinttypes>
#include <cstdio>
#include <utility>

#include "tests/golden/Digest.h"

Digest::Digest(std::string name, Arithmetic arithmetic)
    : name_(std::move(name)), arithmetic_(arithmetic) {}

Digest::~Digest() {
    std::printf("%-28s %016" PRIx64 "%s\n", name_.c_str(), hash_,
                arithmetic_ == Arithmetic::MathLibrary ? " math-library" : "");
}

int main() {
    digestVectorAlgebra();
    digestTransforms();
    digestQueries();
    digestFitting();
    digestImplicits();
    digestMeshFunctions();
}
