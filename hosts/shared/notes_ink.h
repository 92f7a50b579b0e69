// Strokes of a pen on a notes page. Lengths are pixels at 96 dpi, from the page's corner.
#pragma once

#include <memory>
#include <vector>

#include "ports/notes.h"

namespace orvello {

struct PagePoint {
  double x = 0, y = 0;
  friend bool operator==(const PagePoint&, const PagePoint&) = default;
};

struct PageBox {
  double left = 0, top = 0, right = 0, bottom = 0;
  bool meets(const PageBox& other) const {
    return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
  }
};

// A value that is cheap to keep for every step that can be undone.
using NotesInk = std::shared_ptr<const std::vector<NotesStroke>>;

// A stroke is drawn smoothly: as curves between the middles of its points, each as thick as it was
// pressed there. A stroke of one point is a dot: one curve without length.
struct InkCurve {
  PagePoint from, bend, to;
  double width = 0;
};
std::vector<InkCurve> curves_of(const NotesStroke& stroke);
PageBox bounds_of(const InkCurve& curve);

// What the last point of a stroke changes on the page.
PageBox bounds_of_end(const NotesStroke& stroke);
PageBox bounds_of(const NotesStroke& stroke);
// How far right and down the ink goes.
PagePoint extent_of(const std::vector<NotesStroke>& ink);

// Whether a move of the eraser from one point to another touches the stroke.
bool touches(const NotesStroke& stroke, PagePoint from, PagePoint to, double reach);
inline constexpr double kEraserReach = 5;  // around its middle

// False when the pen has hardly moved: such points make a stroke uneven.
bool add_point(NotesStroke& stroke, PagePoint at, double pressure);

}  // namespace orvello
