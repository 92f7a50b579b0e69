#include "hosts/qt/notes_pane.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>

#include "draw/readable.h"
#include "hosts/qt/callbacks.h"
#include "hosts/qt/ink_paint.h"
#include "hosts/qt/notes_document.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"

namespace orvello {
namespace {

constexpr int kNotesText = 12;  // design units
constexpr int kPageEdge = 2 * kGrid;

}  // namespace

NotesPane::NotesPane(QWidget* parent, const Density& density, int limit)
    : FlatArea<QTextEdit>(parent, density), density_(density), limit_(limit) {
  setAcceptRichText(false);
  setTabChangesFocus(true);
  setCursorWidth(std::max(1, density.scaled(1)));
  setUndoRedoEnabled(false);            // text and ink are taken back together
  setLayoutDirection(Qt::LeftToRight);  // ink lies on its text, whatever the screen's language
  setFont(widget_font(density, kNotesText));
  document()->setDefaultFont(font());
  document()->setIndentWidth(density.scaled(4 * kGrid));
  setLineWrapMode(QTextEdit::FixedPixelWidth);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  flatten_scroll_bar(*verticalScrollBar(), density);
  flatten_scroll_bar(*horizontalScrollBar(), density);
  now_.ink = std::make_shared<std::vector<NotesStroke>>();
  on_signal(this, &QTextEdit::textChanged, this, [this] { text_changed(); });
  on_signal(this, &QTextEdit::cursorPositionChanged, this, [this] { look_at_style(); });
  on_signal(this, &QTextEdit::selectionChanged, this, [this] { look_at_style(); });
  lay_out_page();
}

NotesContent NotesPane::content() const {
  if (!touched_) return set_;
  return {now_.text, now_.runs, *now_.ink, now_.width};
}

void NotesPane::set_content(const NotesContent& content) {
  set_ = content;
  touched_ = false;
  history_.clear();
  drawing_.reset();
  now_ = {content.text, content.runs, std::make_shared<std::vector<NotesStroke>>(content.strokes),
          content.strokes.empty() ? 0 : content.width, 0};
  show_state();
  read_document(*document(), now_.text, now_.runs);
  verticalScrollBar()->setValue(0);
  horizontalScrollBar()->setValue(0);
}

void NotesPane::show_state() {
  setting_ = true;
  write_document(*document(), now_.text, now_.runs);
  QTextCursor caret = textCursor();
  caret.setPosition(std::min(now_.caret, document()->characterCount() - 1));
  setTextCursor(caret);
  setting_ = false;
  told_style_ = style();
  lay_out_page();
  viewport()->update();
}

void NotesPane::set_tool(NotesTool tool) {
  tool_ = tool;
  drawing_.reset();
  const bool draws = tool != NotesTool::text;
  viewport()->setAttribute(Qt::WA_AcceptTouchEvents, draws);
  viewport()->setCursor(draws ? Qt::CrossCursor : Qt::IBeamCursor);
  lay_out_page();
}

NotesStyle NotesPane::style() const { return style_at(textCursor()); }

void NotesPane::set_style(const NotesStyle& style) {
  const bool was_setting = std::exchange(setting_, true);
  QTextCursor cursor = textCursor();
  set_style_at(cursor, style);
  setTextCursor(cursor);
  setting_ = was_setting;
  told_style_ = this->style();
  NotesState before = now_;
  if (note_text()) history_.note(std::move(before));
}

void NotesPane::look_at_style() {
  if (setting_ || style() == told_style_) return;
  told_style_ = style();
  if (style_moved) style_moved();
}

// False when the page is as it was: only what is typed next may be another.
bool NotesPane::note_text() {
  NotesState before = now_;
  read_document(*document(), now_.text, now_.runs);
  if (now_.text == before.text && now_.runs == before.runs) return false;
  touched_ = true;
  lay_out_page();
  return true;
}

// A person's change can be taken back.
void NotesPane::text_changed() {
  if (setting_) return;
  NotesState before = now_;
  const bool was_touched = touched_;
  if (!note_text()) return;
  if (is_too_long(before)) {
    now_ = std::move(before);
    touched_ = was_touched;
    return show_state();
  }
  const int caret = textCursor().position();
  const bool letter = now_.text.size() == before.text.size() + 1 && caret == before.caret + 1 &&
                      document()->characterAt(before.caret).isLetterOrNumber();
  history_.note(std::move(before), letter ? caret : -1);
  tell();
}

bool NotesPane::is_too_long(const NotesState& before) const {
  const std::size_t size = now_.text.size();
  return limit_ > 0 && size > static_cast<std::size_t>(limit_) && size > before.text.size();
}

void NotesPane::set_ink(std::vector<NotesStroke> ink) {
  touched_ = true;
  if (ink.empty())
    now_.width = 0;
  else if (now_.ink->empty())
    now_.width = static_cast<float>(viewport()->width() / density_.unit());
  now_.ink = std::make_shared<std::vector<NotesStroke>>(std::move(ink));
  lay_out_page();
  viewport()->update();
}

bool NotesPane::move(bool (NotesHistory::*step)(NotesState&)) {
  now_.caret = textCursor().position();
  if (!(history_.*step)(now_)) return false;
  touched_ = true;
  show_state();
  return true;
}

// Text wraps at the pane's width, or at that of the page; what goes farther, to the right or down,
// can be scrolled to.
void NotesPane::lay_out_page() {
  // The scroll bar takes its room before the first stroke: text must not wrap anew under it.
  const bool drawn = tool_ != NotesTool::text || now_.width > 0;
  setVerticalScrollBarPolicy(drawn ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAsNeeded);
  const double unit = density_.unit();
  const QPointF extent = to_qt(extent_of(*now_.ink)) * unit;
  const int edge = density_.scaled(kPageEdge), room = viewport()->width();
  const int wrap = now_.width > 0 ? density_.scaled(now_.width) : room;
  const int width = std::max({room, wrap, static_cast<int>(extent.x()) + edge});
  const bool was_setting = std::exchange(setting_, true);
  if (lineWrapColumnOrWidth() != width) setLineWrapColumnOrWidth(width);
  QTextFrame* page = document()->rootFrame();
  QTextFrameFormat format = page->frameFormat();
  const double text = document()->size().height() - format.bottomMargin();
  double down = extent.y() + edge;
  if (tool_ == NotesTool::pen) down += viewport()->height() / 2.0;  // room to go on
  const double bottom = std::max<double>(edge, down - text), right = edge + width - wrap;
  if (format.bottomMargin() != bottom || format.rightMargin() != right) {
    format.setMargin(edge);
    format.setRightMargin(right);
    format.setBottomMargin(bottom);
    page->setFrameFormat(format);
  }
  setting_ = was_setting;
}

void NotesPane::resizeEvent(QResizeEvent* event) {
  QTextEdit::resizeEvent(event);
  lay_out_page();
}

void NotesPane::paintEvent(QPaintEvent* event) {
  QTextEdit::paintEvent(event);
  QPainter painter(viewport());
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(-horizontalScrollBar()->value(), -verticalScrollBar()->value());
  painter.scale(density_.unit(), density_.unit());
  const QRectF seen = QRectF(on_page(event->rect().topLeft()), on_page(event->rect().bottomRight()))
                          .adjusted(-1, -1, 1, 1);
  const auto paint = [&](const NotesStroke& stroke) {
    paint_stroke(painter, stroke, seen, legible_on(density_.colors->field, stroke.color));
  };
  for (const NotesStroke& stroke : *now_.ink)
    if (to_qt(bounds_of(stroke)).intersects(seen)) paint(stroke);
  if (drawing_) paint(*drawing_);
}

bool NotesPane::take_key(const QKeyEvent& event) {
  if (event.matches(QKeySequence::Undo) || event.matches(QKeySequence::Redo)) {
    if (event.matches(QKeySequence::Undo) ? undo_step() : redo_step()) tell();
    return true;
  }
  NotesStyle wanted = style();
  if (event.matches(QKeySequence::Bold))
    wanted.bold = !wanted.bold;
  else if (event.matches(QKeySequence::Italic))
    wanted.italic = !wanted.italic;
  else if (event.matches(QKeySequence::Underline))
    wanted.underline = !wanted.underline;
  else if (leaves_list(event))
    wanted.bullet = false;
  else
    return false;
  const std::vector<NotesRun> before = now_.runs;
  const NotesStyle style_before = style();
  set_style(wanted);
  if (now_.runs != before)
    tell();
  else if (style() != style_before && style_moved)
    style_moved();
  return true;
}

// Return on an empty line of a list, Backspace at the start of one.
bool NotesPane::leaves_list(const QKeyEvent& event) const {
  const QTextCursor caret = textCursor();
  if (caret.hasSelection() || !caret.currentList()) return false;
  const bool goes_on = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
  return goes_on ? caret.block().text().isEmpty()
                 : event.key() == Qt::Key_Backspace && caret.atBlockStart();
}

void NotesPane::keyPressEvent(QKeyEvent* event) {
  if (take_key(*event)) return;
  if (event->key() == Qt::Key_Escape) return event->ignore();  // the form's
  now_.caret = textCursor().position();
  QTextEdit::keyPressEvent(event);
}

void NotesPane::hideEvent(QHideEvent* event) {
  drawing_.reset();
  QTextEdit::hideEvent(event);
}

bool NotesPane::canInsertFromMimeData(const QMimeData* source) const { return source->hasText(); }

// In the style of where it goes.
void NotesPane::insertFromMimeData(const QMimeData* source) {
  now_.caret = textCursor().position();
  QString text = source->text();
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  if (limit_ > 0) {
    const QTextCursor caret = textCursor();
    const int selected = caret.selectionEnd() - caret.selectionStart();
    const int room = limit_ - (static_cast<int>(now_.text.size()) - selected);
    text = to_qt(orvello::cut(from_qt(text), static_cast<std::size_t>(std::max(0, room))));
  }
  textCursor().insertText(text);
}

}  // namespace orvello
