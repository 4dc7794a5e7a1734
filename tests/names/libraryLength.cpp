#include <geomKit/geomKit.h>

double libraryLength(double x, double y, double z);

double libraryLength(double x, double y, double z) {
    return geomKit::Vector3(x, y, z).length();
}
