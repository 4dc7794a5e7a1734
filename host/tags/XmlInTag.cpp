#include "host/tags/XmlInTag.h"

#include <utility>
#include <vector>

#include "host/tags/Field.h"

namespace {

/// Far beyond any description of a class, and harmless to the stack.
constexpr int kMaxDepth = 256;

bool _isText(pugi::xml_node node) {
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

bool _isBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

/// Whether the tags within a tag reach deeper than a number of levels. Does not recurse.
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
                                                        std::string_view name, std::size_t next) {
    if (next < names.size() && names[next].first == name) return &names[next];
    for (const auto& entry : names) {
        if (entry.first == name) return &entry;
    }
    return nullptr;
}

}  // namespace

XmlInTag::XmlInTag(XmlSource& source, pugi::xml_node node, const XmlInTag* parent)
    : source_(source),
      node_(node),
      parent_(parent),
      depth_(parent == nullptr ? 1 : parent->depth_ + 1) {}

std::string_view XmlInTag::getAttr(const std::string& name) const {
    std::uint64_t bit = 1;
    for (const pugi::xml_attribute attribute : node_.attributes()) {
        if (name == attribute.name()) {
            attributesRead_ |= bit;
            return attribute.value();
        }
        bit <<= 1;
    }
    return {};
}

std::string_view XmlInTag::text() {
    textWasRead_ = true;
    if (!node_.first_child()) return node_.value();
    joinedText_ = node_.value();
    for (const pugi::xml_node child : node_.children()) {
        if (_isText(child)) joinedText_ += child.value();
    }
    return joinedText_;
}

void XmlInTag::readBody(const Field* field, const NameMap& names) {
    reportUnreadAttributes();
    if (!textWasRead_) reportUnreadText();
    std::vector<bool> met(field == nullptr ? 0 : names.size());
    std::size_t next = 0;
    for (const pugi::xml_node child : node_.children()) {
        if (child.type() != pugi::node_element) continue;
        const auto* entry = _find(names, child.name(), next);
        if (entry == nullptr) {
            skip(child, "unknown tag");
            continue;
        }
        if (field != nullptr) {
            const auto index = static_cast<std::size_t>(entry - names.data());
            if (met[index]) {
                skip(child, "repeated tag");
                continue;
            }
            met[index] = true;
            next = index + 1;
        }
        readChild(child, entry->second);
    }
}

void XmlInTag::readChild(pugi::xml_node child, const ChildReader& reader) {
    if (depth_ >= kMaxDepth) {
        skip(child, "tag nested more than " + std::to_string(kMaxDepth) + " deep");
        return;
    }
    XmlInTag tag(source_, child, this);
    reader(tag);
}

void XmlInTag::skip(pugi::xml_node child, std::string what) {
    if (depth_ < kMaxDepth && _isDeeperThan(child, kMaxDepth - depth_ - 1)) {
        what += " that holds tags nested more than " + std::to_string(kMaxDepth) + " deep";
    }
    XmlInTag(source_, child, this).report(std::move(what), "it was skipped with its content");
}

void XmlInTag::reportUnreadAttributes() const {
    std::uint64_t bit = 1;
    for (const pugi::xml_attribute attribute : node_.attributes()) {
        if ((attributesRead_ & bit) == 0) {
            report("unknown or repeated attribute \"" + std::string(attribute.name()) + "\"",
                   "it was ignored");
        }
        bit <<= 1;
    }
}

void XmlInTag::reportUnreadText() const {
    bool found = !_isBlank(node_.value());
    for (pugi::xml_node child = node_.first_child(); child && !found;
         child = child.next_sibling()) {
        found = _isText(child) && !_isBlank(child.value());
    }
    if (found) report("text where only tags belong", "it was ignored");
}

void XmlInTag::report(std::string what, std::string done) const {
    source_.report(node_, source_.hasRoom() ? path() : std::string(), std::move(what),
                   std::move(done));
}

std::string XmlInTag::path() const {
    std::string result(name());
    std::size_t before = 0;
    for (pugi::xml_node node = node_.previous_sibling(node_.name()); node;
         node = node.previous_sibling(node_.name())) {
        ++before;
    }
    if (before != 0 || node_.next_sibling(node_.name())) {
        result += '[' + std::to_string(before + 1) + ']';
    }
    if (parent_ != nullptr) result = parent_->path() + '/' + result;
    if (!attributeInReading().empty()) result += "/@" + std::string(attributeInReading());
    return result;
}
