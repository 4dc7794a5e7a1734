/// @file
/// `LoadReport`, the faults that were found while a document was loaded.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "geomKit/tags/export.h"

namespace geomKit {

/// One fault of a document.
struct LoadProblem {
    /// Where the faulty tag starts: lines and characters counted from 1, whatever the encoding. 0
    /// when the fault has no place, as with a file that cannot be opened.
    std::size_t line = 0;
    std::size_t column = 0;
    /// The tags from the root to the fault, as "MeshFunction2D/params/param[3]/@u": the number
    /// counts the tags of that name within their parent from 1 and is left out when there is only
    /// one; after the @ follows an attribute.
    std::string path;
    std::string what;
    /// What the loader did about it.
    std::string done;

    /// All of it in one line.
    [[nodiscard]] GEOMKIT_TAGS_API std::string text() const;
};

/// The faults of a document in the order in which they were met.
struct LoadReport {
    /// A file that is wrong throughout must not fill the memory with messages.
    static constexpr std::size_t kMaxProblems = 100;

    std::vector<LoadProblem> problems;
    /// How many more there were.
    std::size_t omitted = 0;

    [[nodiscard]] bool isClean() const noexcept { return problems.empty(); }
    /// One line for each problem. Each ends with a newline.
    [[nodiscard]] GEOMKIT_TAGS_API std::string text() const;
};

}  // namespace geomKit
