/// @file
/// The layout of a picture: a title over equal panels, each with its view and its caption.
#pragma once

#include <string>
#include <string_view>

#include <geomKit/vAlgebra/Matrix3.h>
#include <geomKit/vAlgebra/Vector3.h>

#include "examples/gallery/SvgSink.h"

namespace gallery {

/// A parallel projection onto a panel.
struct View {
    geomKit::Matrix3 frame;  ///< Rows: to the right, up, towards the viewer.
    geomKit::Vector3 centre;
    double width = 2.0;   ///< Of what the panel shows, in the drawing's units.
    double height = 0.0;  ///< Likewise; 0 takes the scale of the width.

    /// The xy plane at one scale.
    static View map(const geomKit::Vector3& centre, double width);
    /// The part of the xy plane between two corners, stretched to fill the panel.
    static View graph(const geomKit::Vector3& low, const geomKit::Vector3& high);
    /// From a place around the centre, z up. Angles in degrees.
    static View orbit(double azimuth, double elevation, const geomKit::Vector3& centre,
                      double width);

    geomKit::Vector3 towardsViewer() const { return {frame(2, 0), frame(2, 1), frame(2, 2)}; }
};

class Sheet {
public:
    Sheet(const std::string& title, int columns, int rows, double panelHeight, int captionLines);

    /// Starts the next panel: what is drawn from here on lies in it.
    void panel(const View& view);
    /// Likewise for a graph between two corners, with a line at y = 0. Ticks at multiples of the
    /// steps stand on the left and lower rim with their labels outside, where no curve runs through
    /// them.
    void graph(const geomKit::Vector3& low, const geomKit::Vector3& high, double stepX,
               double stepY);
    /// Adds a line under the panel.
    void caption(std::string_view words);
    /// Words beside a point of the drawing, `dx` and `dy` pixels off it.
    void label(const geomKit::Vector3& at, std::string_view words, double dx = 8.0,
               double dy = -6.0, Anchor anchor = Anchor::kStart);

    std::string document() const { return sink_.document(); }

private:
    Pixel project(const geomKit::Vector3& p) const;

    int columns_;
    double panelWidth_;
    double panelHeight_;
    double rowHeight_;
    int panelCount_ = 0;
    int captionCount_ = 0;
    Pixel corner_{0.0, 0.0};
    View view_;
    SvgSink sink_;
};

}  // namespace gallery
