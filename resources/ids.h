// Numbers of commands, dialogs, menus, strings and bitmaps.
#pragma once

#include <cstdint>

namespace orvello {

// Commands of the menu bar and of the menus.
inline constexpr std::uint32_t kCommandNew = 40001;
inline constexpr std::uint32_t kCommandOptions = 40004;
inline constexpr std::uint32_t kCommandExit = 40008;
inline constexpr std::uint32_t kCommandSettings = 40011;
inline constexpr std::uint32_t kCommandCopy = 40015;
inline constexpr std::uint32_t kCommandDelete = 40017;
inline constexpr std::uint32_t kCommandCut = 40018;
inline constexpr std::uint32_t kCommandEditAppointment = 40019;
inline constexpr std::uint32_t kCommandPaste = 40020;
inline constexpr std::uint32_t kCommandCreate = 40021;
inline constexpr std::uint32_t kCommandBeam = 40027;
inline constexpr std::uint32_t kCommandProfileMenu = 40031;
inline constexpr std::uint32_t kCommandDayView = 40032;
inline constexpr std::uint32_t kCommandMonthView = 40033;
inline constexpr std::uint32_t kCommandYearView = 40035;
// By view mode: Day, Month, Year.
inline constexpr std::uint32_t kViewCommands[] = {kCommandDayView, kCommandMonthView,
                                                  kCommandYearView};
inline constexpr std::uint32_t kCommandMoveTo = 40103;
inline constexpr std::uint32_t kCommandUndo = 40101;
inline constexpr std::uint32_t kCommandRedo = 40102;
inline constexpr std::uint32_t kCommandSearch = 40104;
inline constexpr std::uint32_t kCommandToday = 40105;
inline constexpr std::uint32_t kCommandOpenDay = 40106;
inline constexpr std::uint32_t kCommandFirstProfile = 60000;

// Dialog templates.
inline constexpr int kDialogDayView = 106;
inline constexpr int kDialogNotes = 108;
inline constexpr int kDialogDayPopup = 124;
inline constexpr int kDialogDelete = 149;
inline constexpr int kDialogDate = 310;
inline constexpr int kDialogGreeting = 320;
inline constexpr int kDialogOrganizer = 330;
inline constexpr int kDialogSearch = 350;

// Controls.
inline constexpr int kControlDayList = 222;
inline constexpr int kControlOk = 1;
inline constexpr int kControlCancel = 2;
inline constexpr int kControlNotes = 1013;
inline constexpr int kControlDayHeader = 303;
inline constexpr int kControlCalendar = 311;
inline constexpr int kControlSubject = 312;
inline constexpr int kControlQuestion = 313;
inline constexpr int kControlOccurrence = 314;
inline constexpr int kControlSeries = 315;
inline constexpr int kControlFollowing = 316;
inline constexpr int kControlGreeting = 321;
inline constexpr int kControlOrganizerName = 331;
inline constexpr int kControlOrganizerAddress = 332;
inline constexpr int kControlOrganizerText = 333;
inline constexpr int kControlOrganizerNameLabel = 334;
inline constexpr int kControlOrganizerAddressLabel = 335;
inline constexpr int kControlSearchText = 351;
inline constexpr int kControlSearchList = 352;

// What can be typed to be searched for.
inline constexpr int kSearchLength = 200;

// Bitmaps that depend on the screen's density.
inline constexpr int kBitmapMenuBarLow = 129;
inline constexpr int kBitmapMenuBarHigh = 1590;
inline constexpr int kBitmapTodayLow = 188;
inline constexpr int kBitmapTodayHigh = 187;

// The texts of menus, dialogs and the screens, in the order of the languages' files.
enum class StringId : int {
#define LANGUAGE(name, code, own_name, direction, plurals)
#define TEXT(id, text) id,
#define FORMS(id, text) id,
#include "resources/languages/english.inc"
#undef TEXT
#undef FORMS
};
inline constexpr int kTextCount = 0
#define TEXT(id, text) +1
#define FORMS(id, text) +1
#include "resources/languages/english.inc"
#undef LANGUAGE
#undef TEXT
#undef FORMS
    ;

}  // namespace orvello
