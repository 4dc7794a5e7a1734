/// @file
/// Numbers as text and back, whatever the locale. Internal.
#pragma once

#include <cstddef>
#include <string_view>

/// The text of a number, in place.
class NumberText {
public:
    explicit NumberText(int value);
    /// What a classic-locale stream of precision 15 writes.
    explicit NumberText(double value);
    /// The shortest text that `readPlain` or `readNonFinite` turns into the same bits.
    explicit NumberText(float value);

    std::string_view view() const { return {chars_, size_}; }

private:
    static constexpr std::size_t kCapacity = 32;

    char* iEnd() { return chars_ + kCapacity; }
    void iEndAt(const char* last) { size_ = static_cast<std::size_t>(last - chars_); }

    char chars_[kCapacity];
    std::size_t size_;
};

/// Reads plain finite decimal text that has neither blanks nor a plus sign, fits the type and ends
/// with the number. False otherwise, with `value` unchanged: a stream is then asked.
bool readPlain(std::string_view text, double& value);
bool readPlain(std::string_view text, float& value);
bool readPlain(std::string_view text, int& value);

/// Reads the infinities and NaNs that `NumberText(float)` writes; false for any other text.
bool readNonFinite(std::string_view text, float& value);
