// The way the program's screens run. What a right-to-left one shows is mirrored here, in the host:
// above it every x is counted from the edge where lines begin, and the Left key goes towards that.
#pragma once

#include <QRect>
#include <QString>

class QPainter;
class QWidget;

namespace orvello {

// For the whole program, before its first widget.
void set_right_to_left(bool right_to_left);
bool is_right_to_left();

// What stands at a place of something so wide; the place itself where lines run from the left.
QRect turned(const QRect& place, int width);
// Of Left and Right the one that means the same; other keys as they are.
int turned_key(int key);

// A text in the direction of its own letters, which may not be that of the screen: the toolkit
// would put its punctuation on the wrong side. Flags as QPainter has them; Left is where lines
// begin.
void draw_directed(QPainter& painter, const QRect& room, int flags, QString text);
// For widgets of the toolkit that show a text by themselves.
Qt::Alignment turned_alignment(Qt::Alignment alignment);
QString kept_direction(const QString& text);

}  // namespace orvello
