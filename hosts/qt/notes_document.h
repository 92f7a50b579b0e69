// The text of a notes page: between the port's runs and the toolkit's document.
#pragma once

#include "ports/notes.h"

class QTextCursor;
class QTextDocument;

namespace orvello {

// The strokes are not the document's.
void write_document(QTextDocument& document, const Text& text, const std::vector<NotesRun>& runs);
void read_document(const QTextDocument& document, Text& text, std::vector<NotesRun>& runs);

// Of what is selected, or of what is typed next.
NotesStyle style_at(const QTextCursor& cursor);
void set_style_at(QTextCursor& cursor, const NotesStyle& style);

}  // namespace orvello
