/// @file
/// What the tests of documents share.
#pragma once

#include <locale>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "geomKit/tags/loadDocument.h"
#include "geomKit/tags/saveDocument.h"

inline std::string saved(const geomKit::Serializable& object) {
    geomKit::SavedDocumentText result = geomKit::saveDocumentText(object);
    EXPECT_TRUE(result) << result.text();
    return std::move(result.document);
}

/// The object of a document, which must be of the class; the report must be clean unless it is
/// asked for.
template <typename T>
std::unique_ptr<T> loadedAs(std::string_view document, geomKit::LoadReport* report = nullptr) {
    geomKit::LoadedDocument loaded = geomKit::loadDocumentText<T>(document);
    if (report == nullptr) {
        EXPECT_TRUE(loaded.report.isClean()) << loaded.text();
    } else {
        *report = loaded.report;
    }
    EXPECT_TRUE(loaded) << loaded.text();
    return std::move(loaded.object);
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
