#include <tinyxml2.h>

#include "bench/tags/peers.h"

using namespace geomKit;

namespace {

using Point = MeshFunction2D::Point;
using Element = tinyxml2::XMLElement;

void addPoints(Element* parent, const char* name, const char* item,
               const std::vector<Point>& points) {
    Element* list = parent->InsertNewChildElement(name);
    for (const Point& p : points) {
        Element* node = list->InsertNewChildElement(item);
        node->SetAttribute("u", Chars(p.u).get());
        node->SetAttribute("v", Chars(p.v).get());
    }
}

template <typename T>
void addNumbers(Element* parent, const char* name, const char* item,
                const std::vector<T>& numbers) {
    Element* list = parent->InsertNewChildElement(name);
    for (const T value : numbers) {
        list->InsertNewChildElement(item)->InsertNewText(Chars(value).get());
    }
}

void readPoints(const Element* list, std::vector<Point>& points) {
    for (const Element* node = list->FirstChildElement(); node != nullptr;
         node = node->NextSiblingElement()) {
        points.emplace_back(number<double>(node->Attribute("u")),
                            number<double>(node->Attribute("v")));
    }
}

template <typename T>
void readNumbers(const Element* list, std::vector<T>& numbers) {
    for (const Element* node = list->FirstChildElement(); node != nullptr;
         node = node->NextSiblingElement()) {
        numbers.push_back(number<T>(node->GetText()));
    }
}

}  // namespace

std::string saveTinyxml2(const MeshFunction2D& function) {
    tinyxml2::XMLDocument document;
    document.InsertFirstChild(document.NewDeclaration());
    Element* root = document.NewElement("MeshFunction2D");
    document.InsertEndChild(root);
    root->InsertNewChildElement("super");
    addPoints(root, "params", "param", function.params);
    addPoints(root, "values", "value", function.values);
    addNumbers(root, "normaldots", "normaldot", function.normaldots);
    addNumbers(root, "facets", "facet", function.facets);
    root->InsertNewChildElement("extrapolateFlag")
        ->InsertNewText(function.extrapolateFlag ? "true" : "false");
    tinyxml2::XMLPrinter printer;
    document.Print(&printer);
    return printer.CStr();
}

std::unique_ptr<MeshFunction2D> loadTinyxml2(const std::string& text) {
    tinyxml2::XMLDocument document;
    document.Parse(text.data(), text.size());
    const Element* root = document.RootElement();
    auto function = std::make_unique<MeshFunction2D>(false);
    readPoints(root->FirstChildElement("params"), function->params);
    readPoints(root->FirstChildElement("values"), function->values);
    readNumbers(root->FirstChildElement("normaldots"), function->normaldots);
    readNumbers(root->FirstChildElement("facets"), function->facets);
    function->extrapolateFlag =
        std::string_view(root->FirstChildElement("extrapolateFlag")->GetText()) == "true";
    function->initEvaluatorHelper();
    return function;
}
