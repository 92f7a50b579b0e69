// The procedures of the settings sheet's pages, each in a file of its own. The context outlives
// them.
#pragma once

#include <memory>

#include "options/options_context.h"

namespace orvello {

std::unique_ptr<DialogProcedure> make_display_page(const OptionsContext& context);
std::unique_ptr<DialogProcedure> make_options_page(const OptionsContext& context);
std::unique_ptr<DialogProcedure> make_pretext_page(const OptionsContext& context);
std::unique_ptr<DialogProcedure> make_profiles_page(const OptionsContext& context);
std::unique_ptr<DialogProcedure> make_times_page(const OptionsContext& context);
std::unique_ptr<DialogProcedure> make_color_page(const OptionsContext& context);
std::unique_ptr<DialogProcedure> make_category_page(const OptionsContext& context);
std::unique_ptr<DialogProcedure> make_icons_page(const OptionsContext& context);

}  // namespace orvello
