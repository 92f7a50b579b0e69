// What keeps the program from starting, told where a person sees it.
#pragma once

#include <string>

#include "hosts/qt/qt_message_boxes.h"

namespace orvello {

// Whether standard error goes where nobody looks and a window would be seen: the start came from a
// launcher. Only once the toolkit runs.
bool started_by_launcher();

// On standard error and, for one who has no terminal but a display, in a window. Before the toolkit
// runs.
void tell_start_fault(int argc, char** argv, const std::string& sentence);
// The same once it runs.
void tell_start_fault(MessageBoxes& boxes, const std::string& sentence);

// The toolkit's message handler: a display that it cannot open leads to the
// start without one instead of ending the process.
void handle_toolkit_message(QtMsgType type, const QMessageLogContext&, const QString& text);

}  // namespace orvello
