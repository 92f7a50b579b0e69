// The controls of the settings sheet's Profiles page.
#pragma once

namespace orvello {

inline constexpr int kDialogProfilesPage = 128;

}  // namespace orvello
