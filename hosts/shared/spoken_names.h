// What a screen reader is told of the controls and rows that do not say it by themselves.
#pragma once

#include "ports/dialog_template.h"
#include "ports/report_list.h"

namespace orvello {

// Of the others their own text says it.
bool is_named_by_label(ControlTemplate::Kind kind);

// The label that goes for what follows `control`, where `label` went for that: a label's own goes
// for all without a name of their own up to the next, a line and the edit in its place.
void pass_label(const ControlTemplate& control, Text& label);

// A control without a text of its own is called after the label before it, else after the form.
Text spoken_name(const ControlTemplate& control, const Text& label, const Text& title);

// A row without a name is told by its cells.
Text spoken_row(const ReportRow& row);

}  // namespace orvello
