/// @file
/// A mesh function to a file and back.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>

#include <geomKit/meshFunc2d/MeshFunction2D.h>

#include "examples/meshFunction/Field.h"

namespace demo {

/// Saves the function as a document and loads what the document holds: the loader makes the object
/// by the class name that it finds there. Null, with a message for the user, when either fails.
std::unique_ptr<geomKit::MeshFunction2D> saveAndLoad(const geomKit::MeshFunction2D& function,
                                                     const std::filesystem::path& path,
                                                     std::string* error);

/// Answers in which two fields differ by more than 1e-6. A document holds 15 digits.
std::size_t differingAnswers(const Field& a, const Field& b);

}  // namespace demo
