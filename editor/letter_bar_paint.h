// The letter bar: cells side by side across all of it.
#pragma once

#include "draw/screen_layout.h"
#include "editor/chooser_rules.h"
#include "ports/canvas.h"
#include "ports/form_colors.h"

namespace orvello {

Rect letter_cell(int cell, Size bar);
int letter_cell_at(int x, Size bar);  // the nearest one
void paint_letter_bar(const LetterBar& letters, Size size, const ScreenLayout& screen,
                      const FormColors& colors, Canvas& canvas);

}  // namespace orvello
