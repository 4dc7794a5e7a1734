#include "examples/gallery/SvgSink.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <iterator>

#include <geomKit/debugDraw/gkFuncBinder.h>

using namespace geomKit;

namespace gallery {
namespace {

// The classes of the style sheet, in the order of the enumerations and colour numbers.
constexpr const char* kStyleNames[] = {"d", "l", "t", "h", "b", "a", "s"};
constexpr const char* kRoleNames[] = {"ti", "ca", "la"};
constexpr const char* kAnchorNames[] = {"", " m", " e"};
constexpr const char* kColours[] = {"#1f2933", "#8996a5", "#d3dae2", "#ffffff", "#2464ab",
                                    "#d2691e", "#2c8a57", "#c0343f", "#7a4fa3", "#2464ab",
                                    "#5c8bc3", "#93b4d9", "#c6d8eb", "#f1f1ee", "#f6d9c2",
                                    "#eeb88f", "#e2935a", "#d2691e"};
static_assert(std::size(kColours) == kRamp + kRampSize);
static_assert(std::size(kStyleNames) == kSolid + 1);

constexpr const char* kStyleSheet =
    "path{fill:none;stroke:currentColor;stroke-width:2;stroke-linejoin:round;"
    "stroke-linecap:round}"
    ".d{stroke-width:4.6}.t{stroke-width:1}.h{stroke-width:1.5;stroke-dasharray:4 4}"
    ".b{stroke-width:3}.a{fill:currentColor;fill-opacity:.18;stroke-width:1}"
    ".s{fill:currentColor;stroke:#fff;stroke-opacity:.5;stroke-width:.6}"
    ".r{fill:currentColor;stroke-width:.7}.p{fill:currentColor;stroke:#fff;stroke-width:1.2}"
    "text{font-family:Helvetica,Arial,sans-serif;fill:#1f2933}"
    ".ti{font-size:17px;font-weight:bold}.ca{font-size:13px;fill:#47525f}"
    ".la{font-size:12.5px;paint-order:stroke;stroke:#f6f8fa;stroke-width:3px;stroke-linejoin:round}"
    ".m{text-anchor:middle}.e{text-anchor:end}";

constexpr double kDotRadius = 4.2;
constexpr double kHeadLength = 9.0;
constexpr double kHeadHalfWidth = 3.6;

std::string coordinate(double value) {
    return number(value, 2);
}

std::string pair(Pixel p) {
    return coordinate(p.x) + ' ' + coordinate(p.y);
}

std::string colourClass(int colour) {
    return " c" + std::to_string(colour) + '"';
}

std::string escaped(std::string_view words) {
    std::string result;
    for (const char c : words) {
        switch (c) {
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '&':
                result += "&amp;";
                break;
            default:
                result += c;
        }
    }
    return result;
}

}  // namespace

struct SvgSink::Callbacks {
    static void drawVector(const Vector3& origin, const Vector3& vector, int colour, double scale,
                           void* context) {
        SvgSink& sink = from(context);
        const Vector3 end = origin + vector * scale;
        const Pixel a = sink.projection(origin);
        const Pixel b = sink.projection(end);
        sink.addPath({origin, end}, colour, kLine);
        const double dx = b.x - a.x;
        const double dy = b.y - a.y;
        const double length = std::sqrt(dx * dx + dy * dy);
        if (!(length > kHeadLength)) return;
        const double along = kHeadLength / length;
        const double across = kHeadHalfWidth / length;
        const Pixel foot{b.x - dx * along, b.y - dy * along};
        sink.body_ += "<path class=\"r" + colourClass(colour) + " d=\"M" + pair(b) + 'L' +
                      pair({foot.x - dy * across, foot.y + dx * across}) + 'L' +
                      pair({foot.x + dy * across, foot.y - dx * across}) + "Z\"/>\n";
    }

    static void drawPoint(const Vector3& point, int colour, void* context) {
        SvgSink& sink = from(context);
        const Pixel p = sink.projection(point);
        sink.body_ += "<circle class=\"p" + colourClass(colour) + " cx=\"" + coordinate(p.x) +
                      "\" cy=\"" + coordinate(p.y) + "\" r=\"" + coordinate(kDotRadius) + "\"/>\n";
    }

    static void drawPoints(const std::vector<Vector3>& points, int colour, int style,
                           void* context) {
        if (!points.empty()) from(context).addPath(points, colour, style);
    }

    static void clear(void* context) { from(context).body_.clear(); }

    static SvgSink& from(void* context) { return *static_cast<SvgSink*>(context); }
};

SvgSink::SvgSink(double width, double height, const std::string& title) {
    const std::string size = "width=\"" + number(width, 0) + "\" height=\"" + number(height, 0);
    head_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" " + size + "\" viewBox=\"0 0 " +
            number(width, 0) + ' ' + number(height, 0) + "\" role=\"img\">\n<title>" +
            escaped(title) + "</title>\n<style>" + kStyleSheet;
    for (int i = 0; i < kRamp + kRampSize; ++i) {
        head_ += ".c" + std::to_string(i) + "{color:" + kColours[i] + '}';
    }
    head_ += "</style>\n<rect " + size + "\" rx=\"8\" fill=\"#fff\"/>\n";
    gkFuncBinder::registerDrawVector(&Callbacks::drawVector, this);
    gkFuncBinder::registerDrawPoint(&Callbacks::drawPoint, this);
    gkFuncBinder::registerDrawPoints(&Callbacks::drawPoints, this);
    gkFuncBinder::registerClear(&Callbacks::clear, this);
}

SvgSink::~SvgSink() {
    gkFuncBinder::iGet()->iReset();
}

void SvgSink::addPath(const std::vector<Vector3>& points, int colour, int style) {
    // The hooks pass any number on.
    if (style < kDots || style > kSolid) style = kLine;
    body_ += std::string("<path class=\"") + kStyleNames[style] + colourClass(colour) + " d=\"";
    for (std::size_t i = 0; i < points.size(); ++i) {
        body_ += i == 0 || style == kDots ? 'M' : 'L';
        body_ += pair(projection(points[i]));
        // A stroke of no length with round ends is a dot.
        if (style == kDots) body_ += "h0";
    }
    body_ += style == kArea || style == kSolid ? "Z\"/>\n" : "\"/>\n";
}

void SvgSink::panel(Pixel corner, double width, double height) {
    body_ += "<rect x=\"" + coordinate(corner.x) + "\" y=\"" + coordinate(corner.y) +
             "\" width=\"" + coordinate(width) + "\" height=\"" + coordinate(height) +
             "\" rx=\"5\" fill=\"#f6f8fa\"/>\n";
}

void SvgSink::text(Pixel at, std::string_view words, Role role, Anchor anchor) {
    body_ += "<text x=\"" + coordinate(at.x) + "\" y=\"" + coordinate(at.y) + "\" class=\"" +
             kRoleNames[static_cast<int>(role)] + kAnchorNames[static_cast<int>(anchor)] + "\">" +
             escaped(words) + "</text>\n";
}

std::string SvgSink::document() const {
    return head_ + body_ + "</svg>\n";
}

std::string number(double value, int decimals) {
    // Far below a unit of the last decimal, far above the differences between C libraries.
    constexpr double kUp = 1e-5;
    double unit = 1.0;
    for (int i = 0; i < decimals; ++i)
        unit *= 10.0;
    const double rounded = std::floor(value * unit + 0.5 + kUp) / unit;
    char text[64];
    const std::to_chars_result end =
        std::to_chars(text, text + sizeof text, rounded + 0.0, std::chars_format::fixed, decimals);
    return end.ec == std::errc() ? std::string(text, end.ptr) : "?";
}

}  // namespace gallery
