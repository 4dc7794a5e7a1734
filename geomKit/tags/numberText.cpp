#include "geomKit/tags/numberText.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace geomKit::detail {

namespace {

/// The significant digits of a `double` in a document. Decimal numbers of so many digits load and
/// save unchanged.
constexpr int kStreamPrecision = 15;

constexpr std::uint32_t kSignBit = 0x80000000u;
constexpr std::uint32_t kUsualNan = 0x7fc00000u;

std::uint32_t _bitsOf(float value) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

/// Whether the text starts like a finite number: `from_chars` would also read "inf" and "nan".
bool _startsPlain(std::string_view text) {
    const std::size_t first = !text.empty() && text[0] == '-' ? 1 : 0;
    return first < text.size() &&
           ((text[first] >= '0' && text[first] <= '9') || text[first] == '.');
}

template <typename T>
bool _readWhole(std::string_view text, T& value) {
    if (!_startsPlain(text)) return false;
    T read{};
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, read);
    if (result.ec != std::errc() || result.ptr != end) return false;
    value = read;
    return true;
}

}  // namespace

NumberText::NumberText(int value) noexcept {
    iEndAt(std::to_chars(chars_, iEnd(), value).ptr);
}

NumberText::NumberText(double value) noexcept {
    iEndAt(std::to_chars(chars_, iEnd(), value, std::chars_format::general, kStreamPrecision).ptr);
}

NumberText::NumberText(float value) noexcept {
    if (std::isnan(value) && (_bitsOf(value) & ~kSignBit) != kUsualNan) {
        std::memcpy(chars_, "nan(", 4);
        char* last = std::to_chars(chars_ + 4, iEnd(), _bitsOf(value), 16).ptr;
        *last++ = ')';
        iEndAt(last);
        return;
    }
    iEndAt(std::to_chars(chars_, iEnd(), value).ptr);
}

bool readPlain(std::string_view text, double& value) noexcept {
    return _readWhole(text, value);
}

bool readPlain(std::string_view text, float& value) noexcept {
    return _readWhole(text, value);
}

bool readPlain(std::string_view text, int& value) noexcept {
    return _readWhole(text, value);
}

bool readNonFinite(std::string_view text, float& value) noexcept {
    const bool negative = !text.empty() && text[0] == '-';
    if (negative) text.remove_prefix(1);
    std::uint32_t bits = 0;
    if (text == "inf") {
        bits = _bitsOf(std::numeric_limits<float>::infinity());
    } else if (text == "nan") {
        bits = kUsualNan;
    } else if (!negative && text.size() > 5 && text.substr(0, 4) == "nan(" && text.back() == ')') {
        const char* const end = text.data() + text.size() - 1;
        const std::from_chars_result result = std::from_chars(text.data() + 4, end, bits, 16);
        if (result.ec != std::errc() || result.ptr != end) return false;
    } else {
        return false;
    }
    if (negative) bits |= kSignBit;
    float read = 0.0f;
    std::memcpy(&read, &bits, sizeof read);
    if (text.size() > 3 && !std::isnan(read)) return false;
    std::memcpy(&value, &bits, sizeof value);
    return true;
}

}  // namespace geomKit::detail
