#include "geomKit/tags/XmlInTag.h"

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <utility>
#include <vector>

#include "geomKit/tags/Field.h"

namespace geomKit::detail {

namespace {

/// How deep tags may be nested. Classes do not come near it, and the stack holds far more.
constexpr int kMaxDepth = 256;

/// Whether a node or an attribute is null. The parser's own test is a call into its library. A
/// small tag would need four of them, and they would take as long as reading its number.
template <typename Handle>
bool _isNone(const Handle& handle) {
    static_assert(std::is_trivially_copyable_v<Handle>, "compared byte by byte");
    static const Handle none;
    return std::memcmp(&handle, &none, sizeof handle) == 0;
}

bool _isBlank(const char* text) {
    return *text == '\0' || text[std::strspn(text, " \t\r\n")] == '\0';
}

/// Whether tags within a tag are nested deeper than so many levels. Does not recurse.
bool _isDeeperThan(pugi::xml_node top, int levels) {
    pugi::xml_node node = top;
    int level = 0;
    while (true) {
        if (pugi::xml_node child = node.first_child()) {
            node = child;
            ++level;
            if (level > levels && node.type() == pugi::node_element) return true;
            continue;
        }
        while (node != top && !node.next_sibling()) {
            node = node.parent();
            --level;
        }
        if (node == top) return false;
        node = node.next_sibling();
    }
}

/// The entry of a name, null if there is none. The one that is expected next is tried first, as
/// fields usually come in the order of their description.
const std::pair<std::string, InTag::ChildReader>* _find(const InTag::NameMap& names,
                                                        const char* name, std::size_t next) {
    const auto isIt = [name](const auto& entry) {
        return std::strcmp(entry.first.c_str(), name) == 0;
    };
    if (next < names.size() && isIt(names[next])) return &names[next];
    const auto found = std::find_if(names.begin(), names.end(), isIt);
    return found == names.end() ? nullptr : &*found;
}

}  // namespace

XmlInTag::XmlInTag(XmlSource& source, pugi::xml_node node, const XmlInTag* parent)
    : source_(source),
      node_(node),
      parent_(parent),
      depth_(parent == nullptr ? 1 : parent->depth_ + 1),
      nextAttribute_(node.first_attribute()) {}

std::string_view XmlInTag::getAttr(const std::string& name) const {
    if (std::strcmp(name.c_str(), nextAttribute_.name()) == 0) {
        const char* text = nextAttribute_.value();
        nextAttribute_ = nextAttribute_.next_attribute();
        return text;
    }
    const pugi::xml_attribute found = node_.attribute(name.c_str());
    if (!found) return {};
    passedAttributes_.push_back(found);
    return found.value();
}

std::string_view XmlInTag::readText() {
    if (!_isNone(nextAttribute_)) iReportUnreadAttributes();
    pugi::xml_node child = node_.first_child();
    if (_isNone(child)) return node_.value();
    joinedText_ = node_.value();
    for (; child; child = child.next_sibling()) {
        if (child.type() == pugi::node_element) {
            iSkip(child, "unknown tag");
        } else {
            joinedText_ += child.value();
        }
    }
    return joinedText_;
}

void XmlInTag::readBody(const Field* field, const NameMap& names) {
    if (!_isNone(nextAttribute_)) iReportUnreadAttributes();
    bool hasText = !_isBlank(node_.value());
    const pugi::xml_node first = node_.first_child();
    if (!_isNone(first) && iReadChildren(first, field, names)) hasText = true;
    if (hasText) report("text where only tags belong", "it was ignored");
}

bool XmlInTag::iReadChildren(pugi::xml_node child, const Field* field, const NameMap& names) {
    bool hasText = false;
    std::vector<bool> met(field == nullptr ? 0 : names.size());
    std::size_t next = 0;
    XmlInTag tag(source_, child, this);
    for (;; child = child.next_sibling()) {
        const char* const name = child.name();
        if (*name == '\0') {
            if (_isNone(child)) return hasText;
            // Comments are dropped: what has no name is text.
            hasText = hasText || !_isBlank(child.value());
            continue;
        }
        const auto* entry = _find(names, name, next);
        if (entry == nullptr) {
            iSkip(child, "unknown tag");
            continue;
        }
        if (field != nullptr) {
            const auto index = static_cast<std::size_t>(entry - names.data());
            if (met[index]) {
                iSkip(child, "repeated tag");
                continue;
            }
            met[index] = true;
            next = index + 1;
        }
        if (depth_ >= kMaxDepth) {
            iSkip(child, "tag nested more than " + std::to_string(kMaxDepth) + " deep");
            continue;
        }
        if (!entry->second) continue;
        tag.iMoveTo(child);
        entry->second(tag);
    }
}

void XmlInTag::iMoveTo(pugi::xml_node sibling) {
    node_ = sibling;
    nextAttribute_ = sibling.first_attribute();
    passedAttributes_.clear();
}

void XmlInTag::iSkip(pugi::xml_node child, std::string what) {
    if (depth_ < kMaxDepth && _isDeeperThan(child, kMaxDepth - depth_ - 1)) {
        what += " that holds tags nested more than " + std::to_string(kMaxDepth) + " deep";
    }
    XmlInTag(source_, child, this).report(std::move(what), "it was skipped with its content");
}

void XmlInTag::iReportUnreadAttributes() const {
    for (pugi::xml_attribute unread = nextAttribute_; unread; unread = unread.next_attribute()) {
        if (std::find(passedAttributes_.begin(), passedAttributes_.end(), unread) !=
            passedAttributes_.end()) {
            continue;
        }
        report("unknown or repeated attribute \"" + std::string(unread.name()) + "\"",
               "it was ignored");
    }
}

void XmlInTag::report(std::string what, std::string done) const {
    source_.report(node_, source_.hasRoom() ? iPath() : std::string(), std::move(what),
                   std::move(done));
}

std::string XmlInTag::iPath() const {
    std::string result(name());
    std::size_t before = 0;
    for (pugi::xml_node node = node_.previous_sibling(node_.name()); node;
         node = node.previous_sibling(node_.name())) {
        ++before;
    }
    if (before != 0 || node_.next_sibling(node_.name())) {
        result += '[' + std::to_string(before + 1) + ']';
    }
    if (parent_ != nullptr) result = parent_->iPath() + '/' + result;
    if (!attributeInReading().empty()) result += "/@" + std::string(attributeInReading());
    return result;
}

}  // namespace geomKit::detail
