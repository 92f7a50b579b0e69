// Makes the control of a template's entry.
#pragma once

#include <memory>

#include "hosts/win32/form_control.h"

namespace orvello {

// Not created yet. The look and the sink outlive it.
std::unique_ptr<FormControl> make_form_control(const ControlTemplate& made, const FormLook& look,
                                               const ControlSink& sink);
// Of these kinds: report, notes, custom, date_picker, month_calendar, slider; null for others.
std::unique_ptr<FormControl> make_rich_control(const ControlTemplate& made, const FormLook& look,
                                               const ControlSink& sink);

}  // namespace orvello
