// Window messages, keys and the store's notifications, numbered as the platform numbers them.
#pragma once

#include <cstdint>

namespace orvello {

inline constexpr std::uint32_t kMessageCreate = 0x0001;
inline constexpr std::uint32_t kMessageDestroy = 0x0002;
inline constexpr std::uint32_t kMessageActivate = 0x0006;
// The Tab key brought the keyboard to the view, and took it away.
inline constexpr std::uint32_t kMessageSetFocus = 0x0007;
inline constexpr std::uint32_t kMessageKillFocus = 0x0008;
inline constexpr std::uint32_t kMessagePaint = 0x000F;
inline constexpr std::uint32_t kMessageClose = 0x0010;
inline constexpr std::uint32_t kMessageSettingChange = 0x001A;
// A menu is asked for at the point, by the pointer's other button.
inline constexpr std::uint32_t kMessageContextMenu = 0x007B;
inline constexpr std::uint32_t kMessageKeyDown = 0x0100;
inline constexpr std::uint32_t kMessageKeyUp = 0x0101;
inline constexpr std::uint32_t kMessageCommand = 0x0111;
inline constexpr std::uint32_t kMessageTimer = 0x0113;
inline constexpr std::uint32_t kMessageMouseMove = 0x0200;
inline constexpr std::uint32_t kMessageButtonDown = 0x0201;
inline constexpr std::uint32_t kMessageButtonUp = 0x0202;
inline constexpr std::uint32_t kMessageMouseWheel = 0x020A;
inline constexpr std::uint32_t kMessageMouseSideWheel = 0x020E;  // notches to the right
inline constexpr std::uint32_t kMessageDeactivated = 0x3FF;      // posted after a deactivation
// The program's own: appointments or display settings changed.
inline constexpr std::uint32_t kMessageRefresh = 0x406;

// Change notifications of the calendar store.
inline constexpr std::uint32_t kItemCreatedLocal = 0x8100;
inline constexpr std::uint32_t kItemDeletedLocal = 0x8101;
inline constexpr std::uint32_t kItemChangedLocal = 0x8102;
inline constexpr std::uint32_t kItemCreatedRemote = 0x8105;
inline constexpr std::uint32_t kItemDeletedRemote = 0x8106;
inline constexpr std::uint32_t kItemChangedRemote = 0x8107;

inline constexpr std::uint32_t kScreenRotated = 0x3002;  // the setting change's parameter

inline constexpr std::uint32_t kKeyReturn = 0x0D;
inline constexpr std::uint32_t kKeyEscape = 0x1B;
inline constexpr std::uint32_t kKeySpace = 0x20;
inline constexpr std::uint32_t kKeyPageUp = 0x21;
inline constexpr std::uint32_t kKeyPageDown = 0x22;
inline constexpr std::uint32_t kKeyEnd = 0x23;
inline constexpr std::uint32_t kKeyHome = 0x24;
inline constexpr std::uint32_t kKeyLeft = 0x25;
inline constexpr std::uint32_t kKeyUp = 0x26;
inline constexpr std::uint32_t kKeyRight = 0x27;
inline constexpr std::uint32_t kKeyDown = 0x28;
inline constexpr std::uint32_t kKeyInsert = 0x2D;
inline constexpr std::uint32_t kKeyDelete = 0x2E;
inline constexpr std::uint32_t kKeyMenu = 0x5D;
inline constexpr std::uint32_t kKeyF10 = 0x79;

}  // namespace orvello
