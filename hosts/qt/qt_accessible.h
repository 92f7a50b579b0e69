// What a screen reader finds in the places that the program draws by itself: the content area as a
// table of cells, a drawn control as its parts.
#pragma once

class QWidget;

namespace orvello {

// Makes the toolkit ask here for such widgets. Can be called again.
void install_accessibility();

// Tells those who listen on which cell or part of such a widget the keyboard stands now.
void tell_accessible_change(QWidget& widget);

}  // namespace orvello
