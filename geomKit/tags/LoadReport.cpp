#include "geomKit/tags/LoadReport.h"

namespace geomKit {

std::string LoadProblem::text() const {
    std::string result;
    if (line != 0) {
        result = "line " + std::to_string(line) + ", column " + std::to_string(column) + ", ";
    }
    if (!path.empty()) result += path + ": ";
    return result + what + "; " + done;
}

std::string LoadReport::text() const {
    std::string result;
    for (const LoadProblem& problem : problems) {
        result += problem.text() + '\n';
    }
    if (omitted != 0) result += "and " + std::to_string(omitted) + " more\n";
    return result;
}

}  // namespace geomKit
