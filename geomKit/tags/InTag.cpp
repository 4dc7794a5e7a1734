#include "geomKit/tags/InTag.h"

#include <istream>
#include <iterator>
#include <locale>
#include <sstream>

#include "geomKit/tags/NoThrow.h"
#include "geomKit/tags/numberText.h"

namespace geomKit {

namespace {

using detail::NoThrow;
using detail::readNonFinite;
using detail::readPlain;

constexpr std::size_t kQuoteSize = 40;

/// The beginning of a text, short enough for a message.
std::string _quote(std::string_view text) {
    std::string result = "\"" + std::string(text.substr(0, kQuoteSize));
    return result + (text.size() > kQuoteSize ? "...\"" : "\"");
}

std::string_view _trimmed(std::string_view text) {
    constexpr const char* kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

template <typename T>
void _readAsStream(const InTag& tag, std::string_view text, T& value) {
    std::istringstream is{std::string(text)};
    // Running out of memory must not look like a malformed number.
    is.exceptions(std::ios::badbit);
    is.imbue(std::locale::classic());
    is >> value;
    tag.checkEndText(is);
}

}  // namespace

void InTag::readAttr(const std::string& name, double& value) const {
    const std::string_view text = getAttr(name);
    if (readPlain(text, value)) return;
    attribute_ = name;
    if (text.data() == nullptr) {
        report("missing attribute", "the number keeps its value");
    } else {
        _readAsStream(*this, text, value);
    }
    attribute_ = {};
}

void InTag::readValue(int& value) {
    const std::string_view content = readText();
    if (!readPlain(content, value)) _readAsStream(*this, content, value);
}

void InTag::readValue(float& value) {
    const std::string_view content = readText();
    if (readPlain(content, value) || readNonFinite(_trimmed(content), value)) return;
    _readAsStream(*this, content, value);
}

void InTag::readValue(bool& value) {
    const std::string_view content = _trimmed(readText());
    const bool isTrue = content == "true" || content == "1";
    if (isTrue || content == "false" || content == "0") {
        value = isTrue;
    } else {
        report("malformed truth value " + _quote(content), "it keeps its value");
    }
}

bool InTag::checkEndText(std::istream& is) const {
    const NoThrow noThrow(is);
    const bool wasRead = !is.fail();
    is.clear();
    if (!wasRead) is.seekg(0);
    const std::string text{std::istreambuf_iterator<char>(is), std::istreambuf_iterator<char>()};
    const std::string_view rest = _trimmed(text);
    if (!wasRead) {
        report("malformed number " + _quote(rest), "the value is what could be read of it");
    } else if (!rest.empty()) {
        report("text after the number: " + _quote(rest), "it was ignored");
    }
    return wasRead && rest.empty();
}

}  // namespace geomKit
