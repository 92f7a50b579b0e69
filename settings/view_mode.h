// The views, numbered as the setting `startmode` stores them.
#pragma once

namespace orvello {

// 99 is set just before a view command is sent, so that the command always builds the view.
enum class ViewMode : int { day = 0, month = 1, year = 2, none_yet = 99 };

}  // namespace orvello
