/// @file
/// `AttrMap`, the attributes of a tag that is not yet written. Internal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A map from name to text in the order of insertion. Tags have a few attributes, so that looking
/// from the front is the fastest search. A cleared map keeps its memory for the next tag.
class AttrMap {
public:
    struct Attr {
        std::string name;
        std::string text;
    };

    void set(const std::string& name, std::string_view text);
    const Attr* find(const std::string& name) const;
    void clear() { used_ = 0; }

    const Attr* begin() const { return attrs_.data(); }
    const Attr* end() const { return attrs_.data() + used_; }

private:
    std::vector<Attr> attrs_;
    std::size_t used_ = 0;
};

inline const AttrMap::Attr* AttrMap::find(const std::string& name) const {
    for (const Attr& attr : *this) {
        if (attr.name == name) return &attr;
    }
    return nullptr;
}

inline void AttrMap::set(const std::string& name, std::string_view text) {
    if (const Attr* found = find(name)) {
        attrs_[static_cast<std::size_t>(found - begin())].text = text;
        return;
    }
    if (used_ == attrs_.size()) {
        attrs_.push_back({name, std::string(text)});  // the text may be that of another attribute
    } else {
        attrs_[used_].name = name;
        attrs_[used_].text = text;
    }
    ++used_;
}
