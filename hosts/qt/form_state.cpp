// What of a form is seen and can be used, and where its focus goes.
#include <QPlainTextEdit>
#include <QRadioButton>

#include "hosts/qt/choice_box.h"
#include "hosts/qt/flat_edit.h"
#include "hosts/qt/form_widget.h"
#include "hosts/qt/modal_layer.h"
#include "hosts/qt/notes_pane.h"
#include "hosts/qt/qt_look.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;

template <typename Edit>
void put_caret(Edit& edit, Caret caret) {
  QTextCursor cursor = edit.textCursor();
  if (caret == Caret::all)
    cursor.select(QTextCursor::Document);
  else
    cursor.movePosition(QTextCursor::End);
  edit.setTextCursor(cursor);
}

void put_caret(QWidget& widget, Caret caret) {
  if (caret == Caret::unchanged) return;
  const auto* choice = dynamic_cast<ChoiceBox*>(&widget);
  auto* line = choice ? choice->edit() : dynamic_cast<FlatEdit*>(&widget);
  if (line && caret == Caret::all) line->selectAll();
  if (line && caret == Caret::end) line->end(false);
  if (auto* edit = qobject_cast<QPlainTextEdit*>(&widget)) put_caret(*edit, caret);
  if (auto* notes = dynamic_cast<NotesPane*>(&widget)) put_caret(*notes, caret);
}

}  // namespace

Kind FormWidget::kind_of(int id) const {
  return template_.controls[static_cast<std::size_t>(index_of(id))].kind;
}

// What a row, a date or a position is chosen in; a text that is typed into a combo is none.
bool FormWidget::is_choice(int id) const {
  switch (kind_of(id)) {
    case Kind::combo:
      return !dynamic_cast<ChoiceBox&>(*control(id)).is_typed();
    case Kind::drop_list:
    case Kind::date_picker:
    case Kind::list:
    case Kind::multi_list:
    case Kind::slider:
    case Kind::month_calendar:
      return true;
    default:
      return false;
  }
}

bool FormWidget::is_seen(std::size_t at) const {
  const int step = template_.controls[at].step;
  return made_[at].shown && (step == 0 || step == step_);
}

bool FormWidget::can_focus(std::size_t at) const {
  return takes_focus(template_.controls[at].kind) && made_[at].enabled && is_seen(at);
}

// Shows what is to be seen. What had the focus and is not there any more leaves it to nobody: the
// toolkit would give it to a neighbour.
void FormWidget::keep_seen() {
  const int at = index_of(focus_.control());
  if (at >= 0 && !can_focus(static_cast<std::size_t>(at))) {
    left_ = at;
    focus(0);
  }
  for (std::size_t i = 0; i < made_.size(); ++i) {
    made_[i].widget->setVisible(is_seen(i));
    made_[i].widget->setEnabled(made_[i].enabled);
  }
}

void FormWidget::set_enabled(int id, bool enabled) {
  if (const int at = index_of(id); at >= 0) made_[static_cast<std::size_t>(at)].enabled = enabled;
  keep_seen();
}

void FormWidget::set_shown(int id, bool shown) {
  if (const int at = index_of(id); at >= 0) made_[static_cast<std::size_t>(at)].shown = shown;
  keep_seen();
}

void FormWidget::set_step(int step) {
  step_ = step;
  keep_seen();
  lay_out();
}

void FormWidget::focus(int id, Caret caret) {
  const int at = index_of(id);
  if (id != 0 && (at < 0 || !can_focus(static_cast<std::size_t>(at)))) return;
  QWidget* widget = id == 0 ? body_ : made_[static_cast<std::size_t>(at)].widget;
  if (id == 0 && focus_.control() != 0) left_ = index_of(focus_.control());
  focus_.move(id);
  // Where the form is not seen yet, it is given when it comes.
  if (isVisible()) give_focus(*widget);
  put_caret(*widget, caret);
  if (id != 0) bring_in_sight(*widget);
}

// As a whole where it can be: of what takes text the toolkit would look at the caret alone.
void FormWidget::bring_in_sight(QWidget& widget) {
  const int gap = density_.scaled(kGrid);
  if (widget.height() + 2 * gap > scroll_->viewport()->height())
    return scroll_->ensureWidgetVisible(&widget, 0, gap);
  const QPoint middle = widget.mapTo(body_, widget.rect().center());
  scroll_->ensureVisible(middle.x(), middle.y(), 0, widget.height() / 2 + gap);
}

// Of a group of radio buttons the chosen one, or the first.
bool FormWidget::is_tab_stop(std::size_t at) const {
  const auto* radio = qobject_cast<QRadioButton*>(made_[at].widget);
  if (!radio || radio->isChecked()) return true;
  const int group = template_.controls[at].group;
  for (std::size_t i = 0; i < made_.size(); ++i) {
    const auto* other = qobject_cast<QRadioButton*>(made_[i].widget);
    if (!other || template_.controls[i].group != group) continue;
    if (other->isChecked() && can_focus(i)) return false;
    if (i < at && can_focus(i)) return false;
  }
  return true;
}

// Rather something to be filled in or pressed than a picture.
int FormWidget::first_focus() const {
  int picture = 0;
  for (std::size_t i = 0; i < made_.size(); ++i) {
    const ControlTemplate& control = template_.controls[i];
    if (!can_focus(i) || !is_tab_stop(i)) continue;
    if (control.kind != Kind::custom) return control.id;
    if (picture == 0) picture = control.id;
  }
  return picture;
}

void FormWidget::come(bool needs_focus) {
  int wanted = focus_.control();
  if (wanted == 0 && needs_focus) wanted = first_focus();
  if (wanted != 0 || needs_focus) focus(wanted);
  focus_.come();
}

// From where the focus was when it went to nobody.
bool FormWidget::focusNextPrevChild(bool next) {
  if (!body_->hasFocus() || left_ < 0) {
    if (!QWidget::focusNextPrevChild(next)) return false;
    if (const int to = index_of(focus_.control()); to >= 0 && focus_.control() != 0)
      bring_in_sight(*made_[static_cast<std::size_t>(to)].widget);
    return true;
  }
  const auto count = made_.size();
  auto at = static_cast<std::size_t>(left_);
  for (std::size_t i = 0; i < count; ++i) {
    at = (at + (next ? 1 : count - 1)) % count;
    if (!can_focus(at) || !is_tab_stop(at)) continue;
    made_[at].widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
  }
  return true;
}

}  // namespace orvello
