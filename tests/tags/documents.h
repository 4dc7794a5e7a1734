/// @file
/// What the tests of documents share.
#pragma once

#include <locale>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "host/tags/loadDocument.h"
#include "host/tags/saveDocument.h"

inline std::string saved(const Serializable& object) {
    std::ostringstream out;
    EXPECT_TRUE(saveDocument(object, out));
    return out.str();
}

/// The object of a document, which must be of the class; the report must be clean unless it is
/// asked for.
template <typename T>
std::unique_ptr<T> loadedAs(std::string_view document, LoadReport* report = nullptr) {
    LoadedDocument loaded = loadDocument(document);
    if (report == nullptr) {
        EXPECT_TRUE(loaded.report.isClean()) << loaded.report.text();
    } else {
        *report = loaded.report;
    }
    T* object = dynamic_cast<T*>(loaded.object.get());
    EXPECT_NE(object, nullptr) << loaded.report.text();
    if (object != nullptr) loaded.object.release();
    return std::unique_ptr<T>(object);
}

/// The process-wide locale with a decimal comma, as long as it lives.
class CommaLocale {
public:
    CommaLocale() : old_(std::locale::global(std::locale(std::locale(), new Comma))) {}
    ~CommaLocale() { std::locale::global(old_); }

private:
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::locale old_;
};
