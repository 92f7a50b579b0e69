// The port's view of single controls. Handles outlive their widgets.
#pragma once

#include <QWidget>
#include <memory>

#include "hosts/qt/density.h"
#include "ports/controls.h"
#include "ports/dialog_template.h"
#include "ports/notes.h"
#include "ports/report_list.h"

namespace orvello {

// Those that a control of its kind has.
struct ControlHandles {
  std::unique_ptr<ChoiceControl> choice;
  std::unique_ptr<ListControl> list;
  std::unique_ptr<DateControl> date;
  std::unique_ptr<RangeControl> range;
  std::unique_ptr<NotesControl> notes;
  std::unique_ptr<ReportList> report;
  std::unique_ptr<DrawnControl> drawn;
};

// `density` outlives the handles.
ControlHandles make_handles(ControlTemplate::Kind kind, QWidget& widget, const Density& density);

}  // namespace orvello
