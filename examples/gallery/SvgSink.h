/// @file
/// A host's side of the debug drawing hooks that writes SVG.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <geomKit/vAlgebra/Vector3.h>

namespace gallery {

/// A place in the picture: y goes down.
struct Pixel {
    double x;
    double y;
};

/// What a colour number of the hooks means here. Behind the last one, `kRampSize` colours from blue
/// through white to orange. Any other number is drawn in black.
enum Colour : int { kInk, kGrey, kPale, kPaper, kBlue, kOrange, kGreen, kRed, kViolet, kRamp };
inline constexpr int kRampSize = 9;

/// What a style number of `drawPoints` means here; any other is a line. `kSolid` is an opaque
/// polygon, `kArea` one that lets what is behind it shine through.
enum Style : int { kDots, kLine, kThin, kDashes, kBold, kArea, kSolid };

enum class Role { kTitle, kCaption, kLabel };
enum class Anchor { kStart, kMiddle, kEnd };

/// While it lives, whatever is drawn through `gkFuncBinder` is added to its document. There is one
/// registry, so one sink at a time. Not for concurrent drawing.
class SvgSink {
public:
    SvgSink(double width, double height, const std::string& title);
    ~SvgSink();
    SvgSink(const SvgSink&) = delete;
    SvgSink& operator=(const SvgSink&) = delete;

    /// From the drawing's own coordinates to pixels; set before the first call of a hook.
    std::function<Pixel(const geomKit::Vector3&)> projection;

    /// A pale background of a part of the picture.
    void panel(Pixel corner, double width, double height);
    void text(Pixel at, std::string_view words, Role role, Anchor anchor);

    /// The picture so far, whole.
    std::string document() const;

private:
    struct Callbacks;

    void addPath(const std::vector<geomKit::Vector3>& points, int colour, int style);

    std::string head_;
    std::string body_;
};

/// `value` with this many decimals, the same in every locale, and never as -0. Halves go up, even
/// if the last bits of the value differ.
std::string number(double value, int decimals);

}  // namespace gallery
