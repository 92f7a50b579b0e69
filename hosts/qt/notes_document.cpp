#include "hosts/qt/notes_document.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <algorithm>

#include "hosts/qt/qt_text.h"

namespace orvello {
namespace {

QTextCharFormat format_of(const NotesStyle& style) {
  QTextCharFormat format;
  format.setFontWeight(style.bold ? QFont::Bold : QFont::Normal);
  format.setFontItalic(style.italic);
  format.setFontUnderline(style.underline);
  return format;
}

NotesStyle style_of(const QTextCharFormat& format, bool bullet) {
  return {format.fontWeight() >= QFont::DemiBold, format.fontItalic(), format.fontUnderline(),
          bullet};
}

// Of every paragraph that is touched.
void set_bullets(const QTextCursor& cursor, bool bullets) {
  QTextBlock block = cursor.document()->findBlock(cursor.selectionStart());
  for (; block.isValid() && block.position() <= cursor.selectionEnd(); block = block.next()) {
    if (bullets == (block.textList() != nullptr)) continue;
    if (bullets) {
      QTextCursor(block).createList(QTextListFormat::ListDisc);
      continue;
    }
    block.textList()->remove(block);
    QTextBlockFormat plain = block.blockFormat();
    plain.setIndent(0);  // leaving a list keeps its indentation
    QTextCursor(block).setBlockFormat(plain);
  }
}

void add_run(std::vector<NotesRun>& runs, int start, int length, const NotesStyle& style) {
  if (length <= 0 || style == NotesStyle{}) return;
  const bool follows = !runs.empty() && runs.back().style == style &&
                       runs.back().start + runs.back().length == start;
  if (follows)
    runs.back().length += length;
  else
    runs.push_back({start, length, style});
}

NotesStyle first_style(const QTextBlock& block) {
  const auto first = block.begin();
  const bool bullet = block.textList();
  if (first.atEnd()) return {false, false, false, bullet};
  return style_of(first.fragment().charFormat(), bullet);
}

}  // namespace

void write_document(QTextDocument& document, const Text& text, const std::vector<NotesRun>& runs) {
  document.clear();
  QTextCursor cursor(&document);
  cursor.beginEditBlock();
  cursor.setBlockFormat(QTextBlockFormat());
  cursor.insertText(to_qt(text), format_of({}));
  const int length = static_cast<int>(text.size());
  for (const NotesRun& run : runs) {
    const int start = std::clamp(run.start, 0, length);
    const int end = std::clamp(run.start + run.length, start, length);
    if (start == end) continue;
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    cursor.mergeCharFormat(format_of(run.style));
    // A run that ends with a paragraph's end does not reach into the next one.
    if (text[static_cast<std::size_t>(end - 1)] == u'\n') {
      cursor.setPosition(start);
      cursor.setPosition(end - 1, QTextCursor::KeepAnchor);
    }
    if (run.style.bullet) set_bullets(cursor, true);
  }
  cursor.endEditBlock();
}

void read_document(const QTextDocument& document, Text& text, std::vector<NotesRun>& runs) {
  text.clear();
  runs.clear();
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    const bool bullet = block.textList();
    NotesStyle last;
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      const QTextFragment piece = at.fragment();
      last = style_of(piece.charFormat(), bullet);
      add_run(runs, piece.position(), piece.length(), last);
    }
    text += from_qt(block.text());
    if (!block.next().isValid()) break;
    // The end of a paragraph looks like what stands on both sides of it. An empty one has nothing
    // else to carry its bullet.
    const NotesStyle next = first_style(block.next());
    const bool goes_on = bullet && (block.length() == 1 || next.bullet);
    add_run(runs, static_cast<int>(text.size()), 1,
            {last.bold && next.bold, last.italic && next.italic, last.underline && next.underline,
             goes_on});
    text += u'\n';
  }
}

NotesStyle style_at(const QTextCursor& cursor) {
  QTextCursor first = cursor;
  // The toolkit's is that of the letter before.
  if (cursor.hasSelection()) first.setPosition(cursor.selectionStart() + 1);
  return style_of(first.charFormat(), cursor.currentList());
}

void set_style_at(QTextCursor& cursor, const NotesStyle& style) {
  cursor.beginEditBlock();
  cursor.mergeCharFormat(format_of(style));
  set_bullets(cursor, style.bullet);
  cursor.endEditBlock();
}

}  // namespace orvello
