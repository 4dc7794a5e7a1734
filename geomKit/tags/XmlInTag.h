/// @file
/// `XmlInTag`, a tag of a parsed XML document. Internal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "geomKit/tags/InTag.h"
#include "geomKit/tags/XmlSource.h"

namespace geomKit::detail {

/// Reads a tag that the parser has made. One object serves all child tags of a parent in turn.
class XmlInTag final : public InTag {
public:
    /// The parent is null for the root tag. All three must outlive it.
    XmlInTag(XmlSource& source, pugi::xml_node node, const XmlInTag* parent);

    [[nodiscard]] std::string_view name() const noexcept override { return node_.name(); }
    std::string_view getAttr(const std::string& name) const override;
    std::string_view readText() override;
    void readBody(const Field* field, const NameMap& names) override;
    void report(std::string what, std::string done) const override;

private:
    /// Reads a child and all after it. Returns whether there was text among them.
    bool iReadChildren(pugi::xml_node child, const Field* field, const NameMap& names);
    /// Becomes the tag of another child of the same parent: cheaper than a new object.
    void iMoveTo(pugi::xml_node sibling);
    void iSkip(pugi::xml_node child, std::string what);
    void iReportUnreadAttributes() const;
    std::string iPath() const;

    XmlSource& source_;
    pugi::xml_node node_;
    const XmlInTag* parent_;
    int depth_;
    // Attributes are usually asked for in the order of the document. All before `nextAttribute_`
    // were read; `passedAttributes_` are those that were read out of order.
    mutable pugi::xml_attribute nextAttribute_;
    mutable std::vector<pugi::xml_attribute> passedAttributes_;
    std::string joinedText_;  // what `readText` returns when comments or tags split the text
};

}  // namespace geomKit::detail
