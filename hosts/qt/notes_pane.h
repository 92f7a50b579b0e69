// A page of notes: text that is typed and styled, and ink that is drawn over it.
#pragma once

#include <QTextEdit>
#include <functional>
#include <optional>

#include "hosts/qt/flat_field.h"
#include "hosts/qt/qt_pointer.h"
#include "hosts/shared/notes_history.h"

namespace orvello {

class NotesPane : public FlatArea<QTextEdit> {
 public:
  // `limit` is of what a person types and pastes, in UTF-16 units; 0: none.
  NotesPane(QWidget* parent, const Density& density, int limit = 0);

  std::function<void()> changed;      // by the person
  std::function<void()> style_moved;  // the caret came to stand in another style

  NotesContent content() const;
  void set_content(const NotesContent& content);
  NotesTool tool() const { return tool_; }
  void set_tool(NotesTool tool);
  NotesStyle style() const;
  void set_style(const NotesStyle& style);
  const NotesHistory& history() const { return history_; }
  bool undo_step() { return move(&NotesHistory::undo); }
  bool redo_step() { return move(&NotesHistory::redo); }

 protected:
  bool take_viewport_event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  bool canInsertFromMimeData(const QMimeData* source) const override;
  void insertFromMimeData(const QMimeData* source) override;

 private:
  bool take_key(const QKeyEvent& event);
  bool leaves_list(const QKeyEvent& event) const;
  bool take_pointer(QEvent& event);
  void press(QPointF at, double pressure);
  void drag(QPointF at, double pressure);
  void lift();
  void erase(QPointF from, QPointF to);
  void text_changed();
  void look_at_style();
  bool is_too_long(const NotesState& before) const;
  bool note_text();
  void set_ink(std::vector<NotesStroke> ink);
  void show_state();
  bool move(bool (NotesHistory::*step)(NotesState&));
  void lay_out_page();
  QPointF on_page(QPointF place) const;
  void tell() {
    if (changed) changed();
  }

  const Density& density_;
  const int limit_;
  NotesTool tool_ = NotesTool::text;
  NotesState now_;  // as it is shown
  NotesHistory history_;
  NotesContent set_;  // as it was set, until a change
  bool touched_ = false;
  bool setting_ = false;
  NotesStyle told_style_;
  QtPointer pointer_;
  bool erasing_ = false;
  QPointF last_;  // of the eraser
  NotesState before_erasing_;
  std::optional<NotesStroke> drawing_;
};

}  // namespace orvello
