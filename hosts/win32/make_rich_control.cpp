#include "hosts/win32/make_control.h"

namespace orvello {

std::unique_ptr<FormControl> make_rich_control(const ControlTemplate&, const FormLook&,
                                               const ControlSink&) {
  return nullptr;
}

}  // namespace orvello
