// The text of a notes page with its styles: what a host keeps beside a text box of its platform,
// which need not tell where styles begin and end. Places are UTF-16 units of the text.
#pragma once

#include <vector>

#include "ports/notes.h"

namespace orvello {

// One piece of text in the place of another.
struct TextChange {
  int start = 0, removed = 0, inserted = 0;
  friend bool operator==(const TextChange&, const TextChange&) = default;
};

// What a person did who left the caret there: of equal letters those before it are the new ones.
TextChange change_between(TextView before, TextView now, int caret);

class NotesText {
 public:
  void set(const Text& text, const std::vector<NotesRun>& runs);
  const Text& text() const { return text_; }
  int size() const { return static_cast<int>(text_.size()); }
  // Line ends look like what stands on both sides of them.
  std::vector<NotesRun> runs() const;

  NotesStyle style_of(int unit) const;  // of a letter, and its paragraph's bullet
  bool bullet_at(int place) const;      // of the paragraph that a place between letters is in
  bool is_empty_line(int place) const;
  bool starts_line(int place) const;

  // New paragraphs have the bullets of the one that they came into; what is joined those of the
  // first. The style's bullet does not matter.
  void replace(const TextChange& change, TextView now, const NotesStyle& style);
  // Of the letters, and the bullets of the paragraphs that they stand in, also of none.
  void set_style(int start, int length, const NotesStyle& style);

 private:
  std::size_t paragraph_at(int place) const;
  NotesStyle letter(std::size_t unit, std::size_t paragraph) const;

  Text text_;
  std::vector<NotesStyle> letters_;   // without bullets
  std::vector<bool> bullets_{false};  // of each paragraph, also of an empty last one
};

}  // namespace orvello
