// Fields to type into, of one line and of several. What a limit does not allow is cut off, of a
// text that is set as well as of what is typed or pasted.
#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>
#include <functional>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/flat_field.h"

namespace orvello {

class FlatEdit : public Guarded<QLineEdit> {
 public:
  // A limit of 0 is none. Without an edge of its own it stands inside of another field.
  FlatEdit(QWidget* parent, const Density& density, int limit, bool edge = true);

  std::function<void(std::uint32_t key)> key_left;  // Up and Down, for which a line has no use

  void set_text(const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void follow_text();

  const Density& density_;
  int limit_;
  bool edge_;
};

class FlatTextEdit : public FlatArea<QPlainTextEdit> {
 public:
  FlatTextEdit(QWidget* parent, const Density& density, int limit);

  std::function<void()> edited;  // by the person

  void set_text(const QString& text);

 private:
  void text_changed();

  int limit_;
  int place_ = 0, added_ = 0;  // of the last change
  bool setting_ = false;
};

}  // namespace orvello
