/// @file
/// `XmlInTag`, a tag of a parsed XML document. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <pugixml.hpp>

#include "host/tags/InTag.h"
#include "host/tags/XmlSource.h"

class XmlInTag final : public InTag {
public:
    /// The parent is null for the root tag. All three must outlive it.
    XmlInTag(XmlSource& source, pugi::xml_node node, const XmlInTag* parent);

    std::string_view name() const override { return node_.name(); }
    std::string_view getAttr(const std::string& name) const override;
    std::string_view text() override;
    void readBody(const Field* field, const NameMap& names) override;
    void report(std::string what, std::string done) const override;

private:
    void readChild(pugi::xml_node child, const ChildReader& reader);
    void skip(pugi::xml_node child, std::string what);
    void reportUnreadAttributes() const;
    void reportUnreadText() const;
    std::string path() const;

    XmlSource& source_;
    pugi::xml_node node_;
    const XmlInTag* parent_;
    int depth_;
    mutable std::uint64_t attributesRead_ = 0;  // a bit for each of the first 64
    bool textWasRead_ = false;
    std::string joinedText_;
};
