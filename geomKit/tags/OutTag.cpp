#include "geomKit/tags/OutTag.h"

#include "geomKit/tags/AttrMap.h"
#include "geomKit/tags/TagWriter.h"
#include "geomKit/tags/numberText.h"

namespace geomKit {

namespace {

using detail::AttrMap;
using detail::NumberText;
using detail::TagWriter;

}  // namespace

OutTag::OutTag(std::ostream& document, const std::string& name)
    : owned_(std::make_unique<TagWriter>(document)), writer_(owned_.get()), name_(name) {}

OutTag::OutTag(OutTag& parent, const std::string& name) : writer_(parent.writer_), name_(name) {}

OutTag::~OutTag() {
    if (attrs_ != nullptr) writer_->giveBack(std::move(attrs_));
}

std::string_view OutTag::getAttr(const std::string& name) const noexcept {
    const AttrMap::Attr* found = attrs_ == nullptr ? nullptr : attrs_->find(name);
    return found == nullptr ? std::string_view() : std::string_view(found->text);
}

void OutTag::setAttr(const std::string& name, std::string_view text) {
    if (attrs_ == nullptr) attrs_ = writer_->takeMap();
    attrs_->set(name, text);
}

void OutTag::setAttr(const std::string& name, double value) {
    setAttr(name, NumberText(value).view());
}

void OutTag::iWriteStart() {
    writer_->startLine();
    writer_->put('<');
    writer_->put(name_);
    if (attrs_ == nullptr) return;
    for (const AttrMap::Attr& attr : *attrs_) {
        writer_->put(' ');
        writer_->put(attr.name);
        writer_->put("=\"");
        writer_->putEscaped(attr.text);
        writer_->put('"');
    }
}

void OutTag::writeOpenTag(bool hasChildren) {
    iWriteStart();
    writer_->put('>');
    if (hasChildren) writer_->enter();
}

void OutTag::writeCloseTag(bool hasChildren) {
    if (hasChildren) {
        writer_->leave();
        writer_->startLine();
    }
    writer_->put("</");
    writer_->put(name_);
    writer_->put('>');
}

void OutTag::writeSingleTag() {
    iWriteStart();
    writer_->put("/>");
}

void OutTag::writeText(std::string_view text) {
    writer_->putEscaped(text);
}

void OutTag::writeValue(int value) {
    writer_->put(NumberText(value).view());
}

void OutTag::writeValue(float value) {
    writer_->put(NumberText(value).view());
}

void OutTag::writeValue(bool value) {
    writer_->put(value ? "true" : "false");
}

}  // namespace geomKit
