#include "geomKit/tags/getSingularName.h"

#include <string_view>

namespace geomKit {

namespace {

struct Ending {
    std::string_view plural;
    std::string_view singular;
};

/// The first ending that fits is replaced. Words may begin with a capital: their first letter is
/// left out where the rest tells the word, and stands in both forms where it does not.
constexpr Ending kEndings[] = {
    {"ertices", "ertex"}, {"ndices", "ndex"}, {"atrices", "atrix"},
    {"hildren", "hild"},  {"eople", "erson"}, {"eries", "eries"},
    {"pecies", "pecies"}, {"ovies", "ovie"},  {"ies", "y"},
    {"axes", "axis"},     {"Axes", "Axis"},   {"xes", "x"},
    {"tches", "tch"},     {"nches", "nch"},   {"rches", "rch"},
    {"shes", "sh"},       {"sses", "ss"},     {"zzes", "zz"},
    {"tatuses", "tatus"}, {"halves", "half"}, {"Halves", "Half"},
    {"elves", "elf"},     {"leaves", "leaf"}, {"Leaves", "Leaf"},
    {"oes", "o"},         {"ss", "ss"},       {"us", "us"},
    {"is", "is"},         {"s", ""},
};

bool _endsWith(std::string_view text, std::string_view ending) {
    return text.size() >= ending.size() && text.substr(text.size() - ending.size()) == ending;
}

}  // namespace

std::string getSingularName(const std::string& name) {
    for (const Ending& ending : kEndings) {
        if (!_endsWith(name, ending.plural)) continue;
        const std::string stem = name.substr(0, name.size() - ending.plural.size());
        const std::string singular = stem + std::string(ending.singular);
        return singular.empty() ? name : singular;
    }
    return name;
}

}  // namespace geomKit
