// Strokes of a pen on a notes page. Lengths are pixels at 96 dpi, from the page's corner.
#pragma once

#include <QPointF>
#include <QRectF>
#include <memory>
#include <vector>

#include "ports/notes.h"

class QPainter;

namespace orvello {

// A value that is cheap to keep for every step that can be undone.
using NotesInk = std::shared_ptr<const std::vector<NotesStroke>>;

// Draws it smoothly, as far as it is seen: as curves between the middles of its points, as thick as
// it was pressed; in a colour that can be seen where the stroke's own could not.
void paint_stroke(QPainter& painter, const NotesStroke& stroke, const QRectF& seen, Color color);
// What the last point of a stroke changes on the page.
QRectF bounds_of_end(const NotesStroke& stroke);
QRectF bounds_of(const NotesStroke& stroke);
// How far right and down the ink goes.
QPointF extent_of(const std::vector<NotesStroke>& ink);

// Whether a move of the eraser from one point to another touches the stroke.
bool touches(const NotesStroke& stroke, QPointF from, QPointF to, double reach);

// False when the pen has hardly moved: such points make a stroke uneven.
bool add_point(NotesStroke& stroke, QPointF at, double pressure);

}  // namespace orvello
