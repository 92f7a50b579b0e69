// A list of applications as the desktop's rules for file types have it (mimeapps.list): groups of
// lines "type=first.desktop;second.desktop;", where what stands first is preferred. Changes leave
// everything else as it stands, comments too.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvello {

inline constexpr std::string_view kDefaultApplications = "Default Applications";
inline constexpr std::string_view kAddedAssociations = "Added Associations";
inline constexpr std::string_view kRemovedAssociations = "Removed Associations";

std::vector<std::string> applications_for(std::string_view list, std::string_view group,
                                          std::string_view type);

// `application` first for the type, and no second time.
std::string with_first_application(std::string_view list, std::string_view group,
                                   std::string_view type, std::string_view application);

// Without it; a type that has no other loses its line, and a group without lines goes, too.
std::string without_application(std::string_view list, std::string_view group,
                                std::string_view type, std::string_view application);

}  // namespace orvello
