/// @file
/// Numbers as text and back, whatever the locale. Internal.
#pragma once

#include <cstddef>
#include <string_view>

namespace geomKit::detail {

/// The text of a number, held in the object itself.
class NumberText {
public:
    explicit NumberText(int value) noexcept;
    /// What a classic-locale stream of precision 15 writes.
    explicit NumberText(double value) noexcept;
    /// The shortest text that `readPlain` or `readNonFinite` turns into the same bits.
    explicit NumberText(float value) noexcept;

    [[nodiscard]] std::string_view view() const noexcept { return {chars_, size_}; }

private:
    static constexpr std::size_t kCapacity = 32;

    char* iEnd() noexcept { return chars_ + kCapacity; }
    void iEndAt(const char* last) noexcept { size_ = static_cast<std::size_t>(last - chars_); }

    char chars_[kCapacity];
    std::size_t size_;
};

/// Reads plain finite decimal text that has neither blanks nor a plus sign, fits the type and ends
/// with the number. False otherwise, with `value` unchanged: the caller then reads by a stream.
[[nodiscard]] bool readPlain(std::string_view text, double& value) noexcept;
[[nodiscard]] bool readPlain(std::string_view text, float& value) noexcept;
[[nodiscard]] bool readPlain(std::string_view text, int& value) noexcept;

/// Reads the infinities and NaNs that `NumberText(float)` writes; false for any other text.
[[nodiscard]] bool readNonFinite(std::string_view text, float& value) noexcept;

}  // namespace geomKit::detail
