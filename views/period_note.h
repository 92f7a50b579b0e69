// Quiet words on a page that would else look empty without a reason.
#pragma once

#include "draw/screen_layout.h"

namespace orvello {

// So high is a note with the room around it: two lines of a narrow page, else one.
int note_height(const ScreenLayout& screen);

// In the middle of the place, on as many lines as it has room for.
void draw_note(TextView text, const Rect& place, Color color, const ScreenLayout& screen,
               Canvas& canvas);

}  // namespace orvello
