/// @file
/// The same document, written and read by hand with the XML libraries themselves.
#pragma once

#include <charconv>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "geomKit/meshFunc2d/MeshFunction2D.h"

std::string savePugixml(const geomKit::MeshFunction2D& function);
std::unique_ptr<geomKit::MeshFunction2D> loadPugixml(const std::string& document);

std::string saveTinyxml2(const geomKit::MeshFunction2D& function);
std::unique_ptr<geomKit::MeshFunction2D> loadTinyxml2(const std::string& document);

/// A number as text that ends with a zero, as both libraries want it.
class Chars {
public:
    template <typename T>
    explicit Chars(T value) {
        *std::to_chars(text_, text_ + kSize, value).ptr = '\0';
    }
    explicit Chars(double value) {
        *std::to_chars(text_, text_ + kSize, value, std::chars_format::general, 15).ptr = '\0';
    }
    const char* get() const { return text_; }

private:
    static constexpr std::size_t kSize = 40;
    char text_[kSize + 1];
};

template <typename T>
T number(const char* text) {
    const std::string_view view(text);
    T value{};
    std::from_chars(view.data(), view.data() + view.size(), value);
    return value;
}
