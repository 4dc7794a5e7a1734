// Two inline functions of one name in two object files would become one, by the order of linking.
#include <cstdio>

#include "tests/names/hostVector.h"

int main() {
    const double ours = libraryLength(3.0, 4.0, 0.0);
    const double theirs = static_cast<double>(hostLength({3.0F, 4.0F, 0.0F}));
    std::printf("library %g, host %g\n", ours, theirs);
    return ours == 5.0 && theirs == 5.0 ? 0 : 1;
}
