// A page of notes without a screen.
#pragma once

#include <vector>

#include "base/geometry.h"
#include "ports/notes.h"

namespace orvello {

class HeadlessNotes : public NotesControl {
 public:
  explicit HeadlessNotes(int limit = 0) : limit_(limit) {}
  NotesContent content() const override { return now_; }
  void set_content(const NotesContent& content) override;
  NotesTool tool() const override { return tool_; }
  void set_tool(NotesTool tool) override { tool_ = tool; }
  NotesStyle style() const override;
  void set_style(const NotesStyle& style) override;
  bool can_undo() const override { return !before_.empty(); }
  bool can_redo() const override { return !after_.empty(); }
  bool undo() override { return step(before_, after_); }
  bool redo() override { return step(after_, before_); }

  // What a person does. Typed text replaces what is selected, a line feed on an empty line of a
  // list ends it. A stroke with the eraser takes away what it comes near. False: nothing happened,
  // of `select`: the style is the same.
  bool select(int start, int length);
  bool type(TextView text);
  bool draw(const std::vector<Point>& stroke);

 private:
  bool step(std::vector<NotesContent>& from, std::vector<NotesContent>& to);
  void keep();
  bool erase(const std::vector<Point>& stroke);

  bool ends_list(TextView text) const;

  const int limit_;
  NotesContent now_;
  std::vector<NotesContent> before_, after_;
  NotesTool tool_ = NotesTool::text;
  NotesStyle typing_;
  int start_ = 0, length_ = 0;  // of the selected text
};

}  // namespace orvello
