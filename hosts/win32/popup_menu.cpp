#include "hosts/win32/popup_menu.h"

#include <commctrl.h>
#include <oleacc.h>

#include <algorithm>
#include <memory>

#include "hosts/win32/form_look.h"
#include "hosts/win32/native_window.h"
#include "hosts/win32/painting.h"
#include "hosts/win32/wide_text.h"
#include "hosts/win32/win32_surface.h"
#include "hosts/win32/win32_window.h"

namespace orvello {
namespace {

constexpr int kMarkWidth = 18, kSeparatorHeight = 7;  // design units

// One row as the platform keeps it; what it begins with tells a screen reader its text.
struct MenuRow {
  MSAAMENUINFO told{};
  MenuItem item;
};

// The rows as the platform shows them.
class MenuHandle {
 public:
  MenuHandle(const std::vector<MenuItem>& items, Color ground) : menu_(CreatePopupMenu()) {
    MENUINFO info{};
    info.cbSize = sizeof info;
    info.fMask = MIM_BACKGROUND;
    brush_ = CreateSolidBrush(static_cast<COLORREF>(ground));
    info.hbrBack = brush_;
    SetMenuInfo(menu_, &info);
    UINT position = 0;
    for (const MenuItem& item : items) add(item, position++);
  }
  ~MenuHandle() {
    DestroyMenu(menu_);
    DeleteObject(brush_);
  }
  MenuHandle(const MenuHandle&) = delete;
  MenuHandle& operator=(const MenuHandle&) = delete;
  HMENU menu() const { return menu_; }

 private:
  void add(const MenuItem& item, UINT position) {
    rows_.push_back(std::make_unique<MenuRow>());
    MenuRow& row = *rows_.back();
    row.item = item;
    row.told.dwMSAASignature = static_cast<DWORD>(MSAA_MENU_SIG);
    row.told.cchWText = static_cast<DWORD>(row.item.text.size());
    row.told.pszWText = const_cast<wchar_t*>(wide(row.item.text));
    Text label;  // a single & would mark the next letter as the key
    for (const char16_t unit : item.text) label.append(unit == u'&' ? 2 : 1, unit);
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_DATA | MIIM_STRING;
    info.fType = MFT_OWNERDRAW | (item.command == 0 ? UINT{MFT_SEPARATOR} : 0);
    info.fState = (item.enabled && item.command != 0 ? UINT{MFS_ENABLED} : UINT{MFS_GRAYED}) |
                  (item.checked ? UINT{MFS_CHECKED} : 0);
    info.wID = item.command;
    info.dwItemData = reinterpret_cast<ULONG_PTR>(&row);
    info.dwTypeData = const_cast<wchar_t*>(wide(label));
    InsertMenuItemW(menu_, position, TRUE, &info);
  }

  HMENU menu_;
  HBRUSH brush_ = nullptr;
  std::vector<std::unique_ptr<MenuRow>> rows_;
};

// Measures and draws them while the menu stands.
class MenuOwner : public NativeWindow {
 public:
  explicit MenuOwner(Win32Window& window) : window_(window), density_(window.form_density()) {
    Creation creation;
    creation.window_class = L"OrvelloMenuOwner";
    creation.style = WS_POPUP;
    creation.place = {0, 0, 0, 0};
    creation.parent = window.frame();
    create_own(creation);
  }

 protected:
  LRESULT message(UINT id, WPARAM wparam, LPARAM lparam) override {
    if (id == WM_MEASUREITEM)
      measure(*reinterpret_cast<MEASUREITEMSTRUCT*>(lparam));
    else if (id == WM_DRAWITEM)
      draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lparam));
    else
      return by_default(id, wparam, lparam);
    return TRUE;
  }

 private:
  FontSpec font() const { return {density_.scaled(kTextSize), 400, false}; }

  void measure(MEASUREITEMSTRUCT& wanted) const {
    const auto& row = *reinterpret_cast<const MenuRow*>(wanted.itemData);
    Win32Canvas canvas(window_.fonts(), {1, 1});
    const Size text = canvas.measure(row.item.text, font());
    // The platform adds room for a mark of its own.
    const int edges = density_.scaled(kMarkWidth + 4 * kGrid);
    wanted.itemWidth = static_cast<UINT>(std::max(
        density_.scaled(kTouchHeight), text.width + edges - GetSystemMetrics(SM_CXMENUCHECK)));
    wanted.itemHeight = static_cast<UINT>(
        row.item.command == 0
            ? density_.scaled(kSeparatorHeight)
            : std::max(density_.scaled(kTouchHeight), text.height + 2 * density_.scaled(kGrid)));
  }

  void draw(const DRAWITEMSTRUCT& place) const {
    const auto& row = *reinterpret_cast<const MenuRow*>(place.itemData);
    const LookColors& look = *density_.colors;
    const Rect on = from_native(place.rcItem);
    Win32Surface surface(window_.fonts(), {on.width, on.height}, window_.right_to_left());
    Canvas& canvas = surface.canvas();
    const Rect all{0, 0, on.width, on.height};
    const bool chosen = (place.itemState & ODS_SELECTED) != 0 && row.item.enabled;
    canvas.fill_rect(all, chosen ? look.accent : look.field);
    const int edge = density_.scaled(kGrid), mark = density_.scaled(kMarkWidth);
    if (row.item.command == 0) {
      canvas.fill_rect({edge, on.height / 2, on.width - 2 * edge, std::max(1, density_.scaled(1))},
                       look.line);
    } else {
      const Color color = chosen ? look.accent_text : row.item.enabled ? look.text : look.dim_text;
      const Rect room{edge + mark, 0, on.width - mark - 2 * edge, on.height};
      canvas.draw_text(row.item.text, room, {font(), color, Align::left, true, false});
      if (row.item.checked) draw_mark(canvas, {edge, 0, mark, on.height}, color);
    }
    surface.publish();
    surface.paint(place.hDC, {on.width, on.height}, {on.x, on.y});
  }

  void draw_mark(Canvas& canvas, const Rect& room, Color color) const {
    const Point at = room.center();
    const int unit = density_.scaled(3);
    canvas.polyline(
        {{at.x - unit, at.y}, {at.x - unit / 3, at.y + unit}, {at.x + unit, at.y - unit}}, color,
        std::max(1, density_.scaled(1.5)));
  }

  Win32Window& window_;
  Win32Density density_;
};

std::uint32_t run_menu(Win32Window& window, const std::vector<MenuItem>& items, POINT at,
                       const RECT* beside) {
  if (items.empty() || !window.frame()) return 0;
  const MenuHandle rows(items, window.form_density().colors->field);
  const MenuOwner owner(window);
  if (!rows.menu() || !owner.window()) return 0;
  window.let_pointer_go();  // the menu gets the release
  UINT flags = TPM_RETURNCMD | TPM_NONOTIFY | TPM_LEFTBUTTON;
  flags |= beside ? TPM_BOTTOMALIGN | TPM_VERTICAL : TPM_TOPALIGN;
  // The rows are mirrored as they are drawn: a mirrored menu would turn them round again.
  if (window.right_to_left()) flags |= TPM_RIGHTALIGN;
  TPMPARAMS around{};
  around.cbSize = sizeof around;
  if (beside) around.rcExclude = *beside;
  const BOOL chosen =
      TrackPopupMenuEx(rows.menu(), flags, at.x, at.y, owner.window(), beside ? &around : nullptr);
  return static_cast<std::uint32_t>(chosen);
}

}  // namespace

std::uint32_t run_popup_menu(Win32Window& window, const std::vector<MenuItem>& items, POINT at) {
  return run_menu(window, items, at, nullptr);
}

std::uint32_t run_popup_menu_above(Win32Window& window, const std::vector<MenuItem>& items,
                                   const RECT& place) {
  const POINT at{window.right_to_left() ? place.right : place.left, place.top};
  return run_menu(window, items, at, &place);
}

}  // namespace orvello
