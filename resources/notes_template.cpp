#include "resources/notes_template.h"

#include "resources/bitmaps.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Across = ControlTemplate::Across;
using Down = ControlTemplate::Down;

constexpr int kTool = 27, kToolGap = 4;
// Of bold, italic and underlined on their buttons; other languages use the Latin ones.
constexpr TextView kCyrillicLetters = u"ЖКЧ";

// The places of the tools in their strip of pictures.
enum class ToolPicture {
  pen,
  eraser,
  text,
  bold,
  italic,
  underline,
  list,
  undo,
  redo,
  back,
  bold_cyrillic,
  italic_cyrillic,
  underline_cyrillic
};

struct Tool {
  int id;
  Kind kind;
  StringId name;
  ToolPicture picture, cyrillic;
  int left;
  Across across;
};

constexpr int kStyles = kToolGap + kTool + kToolGap;
constexpr Tool kTools[] = {
    {kNotesPen, Kind::toggle, StringId::notes_pen, ToolPicture::pen, ToolPicture::pen, kToolGap,
     Across::keep},
    {kNotesBold, Kind::toggle, StringId::notes_bold, ToolPicture::bold, ToolPicture::bold_cyrillic,
     kStyles, Across::keep},
    {kNotesEraser, Kind::toggle, StringId::notes_eraser, ToolPicture::eraser, ToolPicture::eraser,
     kStyles, Across::keep},
    {kNotesItalic, Kind::toggle, StringId::notes_italic, ToolPicture::italic,
     ToolPicture::italic_cyrillic, kStyles + kTool, Across::keep},
    {kNotesText, Kind::picture_button, StringId::notes_text, ToolPicture::text, ToolPicture::text,
     kStyles + kTool, Across::keep},
    {kNotesUnderline, Kind::toggle, StringId::notes_underline, ToolPicture::underline,
     ToolPicture::underline_cyrillic, kStyles + 2 * kTool, Across::keep},
    {kNotesList, Kind::toggle, StringId::notes_list, ToolPicture::list, ToolPicture::list,
     kStyles + 3 * kTool, Across::keep},
    {kNotesUndo, Kind::picture_button, StringId::undo, ToolPicture::undo, ToolPicture::undo,
     kStyles + 4 * kTool + kToolGap, Across::right},
    {kNotesRedo, Kind::picture_button, StringId::redo, ToolPicture::redo, ToolPicture::redo,
     kStyles + 5 * kTool + kToolGap, Across::right},
    {kNotesBack, Kind::picture_button, StringId::notes_back, ToolPicture::back, ToolPicture::back,
     240 - kToolGap - kTool, Across::right},
};

Image picture_of(const Image& strip, ToolPicture which) {
  const int side = strip.height;
  Image picture{side, side, {}};
  for (int y = 0; y < side; ++y)
    for (int x = 0; x < side; ++x)
      picture.pixels.push_back(strip.at(static_cast<int>(which) * side + x, y));
  return picture;
}

bool is_for_drawing(int id) { return id == kNotesEraser || id == kNotesText; }

bool is_for_typing(int id) {
  return id == kNotesBold || id == kNotesItalic || id == kNotesUnderline || id == kNotesList;
}

}  // namespace

std::vector<ControlTemplate> notes_controls(Language language, const Rect& room,
                                            bool low_resolution) {
  const Image strip = load_bitmap(low_resolution ? kBitmapNotesToolsLow : kBitmapNotesToolsHigh);
  const bool cyrillic = load_string(StringId::notes_letters, language) == kCyrillicLetters;
  std::vector<ControlTemplate> controls;
  for (const Tool& tool : kTools) {
    ControlTemplate control{tool.kind,
                            tool.id,
                            load_string(tool.name, language),
                            {room.x + tool.left, room.y + kToolGap, kTool, kTool},
                            tool.across};
    control.image = picture_of(strip, cyrillic ? tool.cyrillic : tool.picture);
    controls.push_back(std::move(control));
  }
  constexpr int top = kToolGap + kTool + kToolGap;
  controls.push_back({Kind::notes,
                      kNotesPage,
                      load_string(StringId::notes, language),
                      {room.x, room.y + top, room.width, room.height - top},
                      Across::stretch,
                      Down::stretch});
  controls.back().limit = kNotesLength;
  for (ControlTemplate& control : controls) control.hidden = true;
  return controls;
}

DialogTemplate notes_pane_dialog(Language language, bool drawing) {
  DialogTemplate dialog;
  dialog.id = 116;
  dialog.title = load_string(StringId::notes, language);
  dialog.size = {240, 268};
  dialog.controls = notes_controls(language, {0, 0, 240, 268});
  for (ControlTemplate& control : dialog.controls)
    control.hidden = drawing ? is_for_typing(control.id) : is_for_drawing(control.id);
  return dialog;
}

}  // namespace orvello
