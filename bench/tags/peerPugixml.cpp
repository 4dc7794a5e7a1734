#include <pugixml.hpp>

#include "bench/tags/peers.h"

using namespace geomKit;

namespace {

using Point = MeshFunction2D::Point;

struct Appender : pugi::xml_writer {
    std::string text;
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
    }
};

void addPoints(pugi::xml_node parent, const char* name, const char* item,
               const std::vector<Point>& points) {
    pugi::xml_node list = parent.append_child(name);
    for (const Point& p : points) {
        pugi::xml_node node = list.append_child(item);
        node.append_attribute("u").set_value(Chars(p.u).get());
        node.append_attribute("v").set_value(Chars(p.v).get());
    }
}

template <typename T>
void addNumbers(pugi::xml_node parent, const char* name, const char* item,
                const std::vector<T>& numbers) {
    pugi::xml_node list = parent.append_child(name);
    for (const T value : numbers) {
        list.append_child(item).append_child(pugi::node_pcdata).set_value(Chars(value).get());
    }
}

void readPoints(pugi::xml_node list, std::vector<Point>& points) {
    for (const pugi::xml_node node : list.children()) {
        points.emplace_back(number<double>(node.attribute("u").value()),
                            number<double>(node.attribute("v").value()));
    }
}

template <typename T>
void readNumbers(pugi::xml_node list, std::vector<T>& numbers) {
    for (const pugi::xml_node node : list.children()) {
        numbers.push_back(number<T>(node.child_value()));
    }
}

}  // namespace

std::string savePugixml(const MeshFunction2D& function) {
    pugi::xml_document document;
    pugi::xml_node root = document.append_child("MeshFunction2D");
    root.append_child("super");
    addPoints(root, "params", "param", function.params);
    addPoints(root, "values", "value", function.values);
    addNumbers(root, "normaldots", "normaldot", function.normaldots);
    addNumbers(root, "facets", "facet", function.facets);
    pugi::xml_node flag = root.append_child("extrapolateFlag");
    flag.append_child(pugi::node_pcdata).set_value(function.extrapolateFlag ? "true" : "false");
    Appender out;
    document.save(out, "  ", pugi::format_indent | pugi::format_no_escapes);
    return std::move(out.text);
}

std::unique_ptr<MeshFunction2D> loadPugixml(const std::string& text) {
    pugi::xml_document document;
    document.load_buffer(text.data(), text.size(), pugi::parse_default | pugi::parse_embed_pcdata);
    const pugi::xml_node root = document.document_element();
    auto function = std::make_unique<MeshFunction2D>(false);
    readPoints(root.child("params"), function->params);
    readPoints(root.child("values"), function->values);
    readNumbers(root.child("normaldots"), function->normaldots);
    readNumbers(root.child("facets"), function->facets);
    function->extrapolateFlag = std::string_view(root.child_value("extrapolateFlag")) == "true";
    function->initEvaluatorHelper();
    return function;
}
