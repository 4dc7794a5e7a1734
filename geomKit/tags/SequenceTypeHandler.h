/// @file
/// `SequenceTypeHandler`, the handler of sequences.
#pragma once

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "geomKit/tags/InTag.h"
#include "geomKit/tags/OutTag.h"
#include "geomKit/tags/TypeHandler.h"

namespace geomKit {

/// A sequence as one child tag for each element, in order, all of one name; an empty sequence is a
/// single tag. Loading replaces what the sequence held.
template <typename ElementHandler>
class SequenceTypeHandler final : public TypeHandler<std::vector<typename ElementHandler::Value>> {
public:
    using Element = typename ElementHandler::Value;
    using Sequence = std::vector<Element>;
    static_assert(!std::is_same_v<Element, bool>,
                  "a std::vector<bool> has no elements to refer to");

    explicit SequenceTypeHandler(std::string elementName, ElementHandler handler = {})
        : elementName_(std::move(elementName)), handler_(std::move(handler)) {}

    void save(const Sequence& sequence, OutTag& tag) const override;
    void load(Sequence& sequence, InTag& tag) const override;

private:
    std::string elementName_;
    ElementHandler handler_;
};

template <typename ElementHandler>
void SequenceTypeHandler<ElementHandler>::save(const Sequence& sequence, OutTag& tag) const {
    if (sequence.empty()) {
        tag.writeSingleTag();
        return;
    }
    tag.writeOpenTag(true);
    for (const Element& element : sequence) {
        OutTag child(tag, elementName_);
        handler_.save(element, child);
    }
    tag.writeCloseTag(true);
}

template <typename ElementHandler>
void SequenceTypeHandler<ElementHandler>::load(Sequence& sequence, InTag& tag) const {
    sequence.clear();
    tag.readBody(nullptr, {{elementName_, [this, &sequence](InTag& child) {
                                handler_.load(sequence.emplace_back(), child);
                            }}});
}

}  // namespace geomKit
