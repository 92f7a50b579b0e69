#include "hosts/qt/flat_edit.h"

#include <QEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTextCursor>
#include <QTextDocument>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/qt_keys.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"
#include "ports/messages.h"

namespace orvello {
namespace {

QString within(const QString& text, int limit) {
  return limit > 0 ? to_qt(cut(from_qt(text), static_cast<std::size_t>(limit))) : text;
}

}  // namespace

FlatEdit::FlatEdit(QWidget* parent, const Density& density, int limit, bool edge)
    : Guarded(parent), density_(density), limit_(limit), edge_(edge) {
  setFrame(false);
  if (limit > 0) setMaxLength(limit);
  // The toolkit has two more of its own.
  const int side = density.scaled(1.5 * kGrid) - 2 - (edge ? 0 : density.scaled(kFieldEdge));
  setTextMargins(side, 0, side, 0);
  follow_text();
  on_signal(this, &QLineEdit::textChanged, this, [this] { follow_text(); });
}

// The text keeps its own direction, and stands where lines begin on the screen.
void FlatEdit::follow_text() {
  setLayoutDirection(text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  setAlignment(turned_alignment(Qt::AlignLeft) | Qt::AlignVCenter);
}

void FlatEdit::set_text(const QString& text) {
  const QSignalBlocker silence(this);
  setText(within(text, limit_));
  follow_text();
}

void FlatEdit::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  if (edge_) paint_field_edge(*this, density_, hasFocus());
}

void FlatEdit::keyPressEvent(QKeyEvent* event) {
  const std::uint32_t key = virtual_key(*event);
  const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  if (!key_left || !plain || (key != kKeyUp && key != kKeyDown))
    return QLineEdit::keyPressEvent(event);
  event->accept();
  key_left(key);
}

void FlatEdit::changeEvent(QEvent* event) {
  QLineEdit::changeEvent(event);
  if (event->type() == QEvent::EnabledChange) update();
}

FlatTextEdit::FlatTextEdit(QWidget* parent, const Density& density, int limit)
    : FlatArea<QPlainTextEdit>(parent, density), limit_(limit) {
  setTabChangesFocus(true);
  document()->setDocumentMargin(density.scaled(kGrid));
  setCursorWidth(std::max(1, density.scaled(1)));
  flatten_scroll_bar(*verticalScrollBar(), density);
  on_signal(document(), &QTextDocument::contentsChange, this, [this](int place, int, int added) {
    place_ = place;
    added_ = added;
  });
  on_signal(this, &QPlainTextEdit::textChanged, this, [this] { text_changed(); });
}

void FlatTextEdit::set_text(const QString& text) {
  setting_ = true;
  setPlainText(within(text, limit_));
  setting_ = false;
}

void FlatTextEdit::text_changed() {
  if (setting_) return;
  const int length = document()->characterCount() - 1;
  if (limit_ > 0 && length > limit_) {
    // The end of what came goes again, and as one step with it when that is undone.
    const int end = std::min(place_ + added_, length);
    int start = std::max(0, end - (length - limit_));
    if (document()->characterAt(start).isLowSurrogate()) --start;
    QTextCursor cursor(document());
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    setting_ = true;
    cursor.joinPreviousEditBlock();
    cursor.removeSelectedText();
    cursor.endEditBlock();
    setting_ = false;
  }
  if (edited) edited();
}

}  // namespace orvello
