/// @file
/// `AttrMap`, the attributes of a tag that is not yet written. Internal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace geomKit::detail {

/// A map from name to text in the order of insertion. Tags have few attributes, so a search from
/// the front is the fastest. A cleared map keeps its memory for the next tag.
class AttrMap {
public:
    struct Attr {
        std::string name;
        std::string text;
    };

    void set(const std::string& name, std::string_view text);
    /// Null if there is none.
    [[nodiscard]] const Attr* find(const std::string& name) const noexcept;
    void clear() noexcept { used_ = 0; }

    [[nodiscard]] const Attr* begin() const noexcept { return attrs_.data(); }
    [[nodiscard]] const Attr* end() const noexcept { return attrs_.data() + used_; }

private:
    std::vector<Attr> attrs_;
    std::size_t used_ = 0;
};

inline const AttrMap::Attr* AttrMap::find(const std::string& name) const noexcept {
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
        // The text is copied before the vector grows, as it may be that of another attribute.
        attrs_.push_back({name, std::string(text)});
    } else {
        attrs_[used_].name = name;
        attrs_[used_].text = text;
    }
    ++used_;
}

}  // namespace geomKit::detail
