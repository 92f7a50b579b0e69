// What the controls of forms that are more than a platform's own do beyond the dialogs' contract.
#include <objbase.h>
#include <oleacc.h>

#include "hosts/win32/form_paint.h"
#include "hosts/win32/notes_window.h"
#include "hosts/win32/win32_dialogs.h"
#include "tests/contract/every_kind.cpp"  // NOLINT
#include "tests/contract/win32/native_objects.h"
#include "tests/contract/win32/window_bench.h"

namespace orvello::test {
namespace {

using Kind = ControlTemplate::Kind;
using Event = DialogEvent::Kind;

constexpr Color kPale = rgb(240, 250, 240), kRed = rgb(200, 0, 0), kBlue = rgb(0, 0, 160);

// One control over the whole form.
DialogTemplate form_of(Kind kind, int id) {
  DialogTemplate form;
  form.id = 595;
  form.size = {240, 268};
  ControlTemplate control{kind, id, u"", {0, 0, 240, 268}};
  control.across = ControlTemplate::Across::stretch;
  control.down = ControlTemplate::Down::stretch;
  form.controls = {control};
  return form;
}

HWND find_child(HWND parent, const wchar_t* window_class) {
  struct Search {
    const wchar_t* name;
    HWND found;
  } search{window_class, nullptr};
  EnumChildWindows(
      parent,
      [](HWND child, LPARAM asked) -> BOOL {
        auto& looks = *reinterpret_cast<Search*>(asked);
        wchar_t name[64] = {};
        GetClassNameW(child, name, 64);
        if (lstrcmpiW(name, looks.name) == 0) looks.found = child;
        return looks.found == nullptr;
      },
      reinterpret_cast<LPARAM>(&search));
  return search.found;
}

struct Stage {
  explicit Stage(Kind kind, int id, Win32WindowOptions options = small_screen())
      : window(std::move(options)), dialogs(window) {
    EXPECT_TRUE(window.create(u"OrvelloRichTest", u"", 320, handler));
    window.show();
    dialog = dialogs.open_modeless(form_of(kind, id), told);
    settle(window);
  }
  HWND child(const wchar_t* window_class) { return find_child(window.frame(), window_class); }
  // What the screen shows of a control, after what is to be painted.
  Color pixel(HWND of, Point at) {
    settle(window);
    const HDC dc = GetDC(of);
    const COLORREF color = GetPixel(dc, at.x, at.y);
    ReleaseDC(of, dc);
    return color;
  }

  Recorder handler;
  Win32Window window;
  Win32Dialogs dialogs;
  RecordingProcedure told;
  std::unique_ptr<Dialog> dialog;
};

ReportContent colored_rows(int rows) {
  ReportContent content;
  content.columns = {{60, Align::right}, {40, Align::left}, {140, Align::left}};
  content.padding = 3;
  content.picture_column = 1;
  content.picture_gap = 2;
  content.pictures = {{8, 8, std::vector<Color>(64, kRed)}};
  content.background = kPale;
  content.selected_background = kBlue;
  for (int i = 0; i < rows; ++i) {
    ReportRow row;
    row.cells = {u"10:00", u"", u"Row " + to_utf16(std::to_string(i))};
    row.height = i == 1 ? 40 : 20;
    if (i == 1) row.line_above = kBlue;
    if (i == 0) row.pictures = {0, 0};
    content.rows.push_back(std::move(row));
  }
  return content;
}

TEST(RichControls, AReportShowsItsRowsAndTellsAScreenReaderOfThem) {
  Stage stage(Kind::report, 21);
  ReportList& report = *stage.dialog->report(21);
  ReportContent content = colored_rows(3);
  content.rows[1].name = u"Lunch, from noon";
  report.set_content(content);
  report.select({2});
  const HWND list = stage.child(L"OrvelloReport");
  EXPECT_EQ(stage.pixel(list, {5, 200}), kPale) << "below the rows";
  EXPECT_EQ(stage.pixel(list, {5, 20}), kBlue) << "the line above the second row";
  EXPECT_EQ(stage.pixel(list, {5, 21}), kWhite);
  EXPECT_EQ(stage.pixel(list, {239, 70}), kBlue) << "a selected row";
  EXPECT_EQ(stage.pixel(list, {60, 6}), kRed);
  EXPECT_EQ(stage.pixel(list, {69, 10}), kWhite) << "between two pictures";
  EXPECT_EQ(stage.pixel(list, {70, 10}), kRed);

  ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));

  IAccessible* rows = nullptr;
  ASSERT_EQ(AccessibleObjectFromWindow(list, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                       reinterpret_cast<void**>(&rows)),
            S_OK);
  long count = 0;
  rows->get_accChildCount(&count);
  EXPECT_EQ(count, 3);
  VARIANT child{};
  child.vt = VT_I4;
  child.lVal = 2;
  BSTR name = nullptr;
  ASSERT_EQ(rows->get_accName(child, &name), S_OK);
  EXPECT_STREQ(name, L"Lunch, from noon");
  SysFreeString(name);
  VARIANT state{};
  child.lVal = 3;
  rows->get_accState(child, &state);
  EXPECT_TRUE(state.lVal & STATE_SYSTEM_SELECTED);
  int tapped = -1;
  stage.told.act = [&](Dialog&, const DialogEvent& event) {
    if (event.kind == Event::pointer_down) tapped = report.row_at(event.point);
  };
  child.lVal = 1;
  EXPECT_EQ(rows->accDoDefaultAction(child), S_OK);
  settle(stage.window);
  EXPECT_EQ(tapped, 0);
  stage.dialog.reset();
  settle(stage.window);
  EXPECT_EQ(rows->get_accChildCount(&count), CO_E_OBJNOTCONNECTED) << "it outlives the list";
  EXPECT_EQ(rows->Release(), 0u);
}

TEST(RichControls, ALongReportScrollsByPixelsAndShowsItsRows) {
  Stage stage(Kind::report, 21);
  ReportList& report = *stage.dialog->report(21);
  report.set_content(colored_rows(60000));
  const Rect place = stage.dialog->place(21);
  EXPECT_EQ(report.row_place(2).y, place.y + 60);
  report.scroll_by(25);
  EXPECT_EQ(report.row_place(2).y, place.y + 35);
  report.show_row(40000);
  EXPECT_EQ(report.row_place(40000).bottom(), place.bottom());
  report.scroll_by(100000000);
  EXPECT_EQ(report.row_place(59999).bottom(), place.bottom());
  const HWND bar = stage.child(L"OrvelloFormScrollBar");
  // The thumb, which stands at the end, is drawn to the other one and past it.
  SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, packed_point({5, place.height - 5}));
  SendMessageW(bar, WM_MOUSEMOVE, MK_LBUTTON, packed_point({5, place.height - 5}));
  EXPECT_EQ(report.row_place(59999).bottom(), place.bottom()) << "it is held where it was taken";
  SendMessageW(bar, WM_MOUSEMOVE, MK_LBUTTON, packed_point({5, -50}));
  SendMessageW(bar, WM_LBUTTONUP, 0, packed_point({5, -50}));
  EXPECT_EQ(report.row_place(0).y, place.y);
}

// A box of the platform's lays itself out from the right: what is drawn in it keeps its sides.
TEST(RichControls, WhatIsPaintedIsNotTurnedWithTheWindow) {
  class Painted : public NativeWindow {
   public:
    Painted() {
      Creation creation;
      creation.window_class = L"OrvelloTestPainted";
      creation.style = WS_POPUP | WS_VISIBLE;
      creation.extended_style = WS_EX_LAYOUTRTL | WS_EX_TOPMOST;
      creation.place = {10, 10, 50, 30};
      create_own(creation);
    }

   private:
    LRESULT message(UINT id, WPARAM wparam, LPARAM lparam) override {
      if (id != WM_PAINT) return by_default(id, wparam, lparam);
      const BufferedPaint painting(window());
      fill_room(painting.dc(), painting.room(), kBlue);
      fill_room(painting.dc(), {0, 0, 10, 20}, kRed);
      return 0;
    }
  } painted;
  UpdateWindow(painted.window());
  const HDC dc = GetDC(painted.window());
  SetLayout(dc, 0);
  EXPECT_EQ(GetPixel(dc, 5, 10), static_cast<COLORREF>(kRed));
  EXPECT_EQ(GetPixel(dc, 35, 10), static_cast<COLORREF>(kBlue));
  ReleaseDC(painted.window(), dc);
}

// Its bar stands beside the rows, where the platform tells of presses by the screen's places.
TEST(RichControls, ALongListIsScrolledByItsBar) {
  for (const bool right_to_left : {false, true}) {
    Win32WindowOptions options = small_screen();
    options.right_to_left = right_to_left;
    Stage stage(Kind::list, 21, options);
    const HWND list = stage.child(L"LISTBOX");
    RECT whole{}, rows{};
    const auto measure = [&] {
      GetWindowRect(list, &whole);
      GetClientRect(list, &rows);
      MapWindowPoints(list, nullptr, reinterpret_cast<POINT*>(&rows), 2);
      return right_to_left ? rows.left - whole.left : whole.right - rows.right;
    };
    stage.dialog->list(21)->set_rows(std::vector<Text>(3, u"row"));
    const LONG edge = measure();
    stage.dialog->list(21)->set_rows(std::vector<Text>(200, u"row"));
    EXPECT_GE(measure(), edge + kScrollBarWidth);
    const LONG x = right_to_left ? rows.left - 5 : rows.right + 5;
    EXPECT_EQ(SendMessageW(list, WM_NCHITTEST, 0, MAKELPARAM(x, rows.bottom - 2)), HTBORDER);
    SendMessageW(list, WM_NCLBUTTONDOWN, HTBORDER, MAKELPARAM(x, rows.top + 2));
    POINT end{x, rows.bottom + 20};
    ScreenToClient(list, &end);
    SendMessageW(list, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(end.x, end.y));
    SendMessageW(list, WM_LBUTTONUP, 0, MAKELPARAM(end.x, end.y));
    EXPECT_EQ(GetCapture(), nullptr);
    RECT last{};
    SendMessageW(list, LB_GETITEMRECT, 199, reinterpret_cast<LPARAM>(&last));
    EXPECT_LE(last.bottom, rows.bottom - rows.top) << "the last row is seen";
    EXPECT_TRUE(stage.dialog->list(21)->selected().empty());
  }
}

// The field holds the pointer while its calendar is down: a press beside that closes it, and leaves
// the date and what was pressed alone.
TEST(RichControls, ACalendarThatIsDownClosesWithAPressBesideItAndChangesNothing) {
  Stage stage(Kind::date_picker, 21);
  stage.dialog->date(21)->set_date({2, 28, 2027});
  const HWND field = stage.child(L"OrvelloDatePicker");
  click(field, {20, 10});
  const HWND calendar = stage.child(L"OrvelloDroppedCalendar");
  ASSERT_TRUE(calendar);
  RECT place{}, frame{};
  GetWindowRect(calendar, &place);
  GetWindowRect(stage.window.frame(), &frame);
  EXPECT_TRUE(place.left >= frame.left && place.right <= frame.right && place.top >= frame.top &&
              place.bottom <= frame.bottom);
  POINT beside{place.left + 5, place.top > frame.top + 10 ? place.top - 5 : place.bottom + 5};
  ScreenToClient(field, &beside);
  SendMessageW(field, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(beside.x, beside.y));
  SendMessageW(field, WM_LBUTTONUP, 0, MAKELPARAM(beside.x, beside.y));
  EXPECT_FALSE(stage.child(L"OrvelloDroppedCalendar"));
  EXPECT_EQ(GetCapture(), nullptr);
  EXPECT_EQ(stage.dialog->date(21)->date(), (MonthDayYear{2, 28, 2027}));
  stage.dialog.reset();
}

TEST(RichControls, NotesAreTypedPastedAndTakenBackWithTheirInk) {
  Stage stage(Kind::notes, 21);
  NotesControl& notes = *stage.dialog->notes(21);
  stage.dialog->focus(21);
  settle(stage.window);
  const HWND edit = GetFocus();
  const auto type = [&](TextView text) {
    for (const char16_t unit : text) SendMessageW(edit, WM_CHAR, unit, 0);
    settle(stage.window);
  };
  const auto press = [&](WPARAM key, int held = 0) {
    const HeldKeys keys(held);
    SendMessageW(edit, WM_KEYDOWN, key, 0);
    SendMessageW(edit, WM_KEYUP, key, 0);
  };
  type(u"{\\rtf1 one");
  EXPECT_EQ(notes.content().text, u"{\\rtf1 one") << "letters, not a format";
  NotesContent page;
  page.text = u"{\\rtf1 \\b x}\nsecond\nthird";
  page.runs = {{13, 6, {false, false, false, true}}};
  page.strokes = {{kRed, 6, {{100, 200, 1}, {160, 200, 1}}}};
  page.width = 200;
  notes.set_content(page);
  EXPECT_EQ(stage.pixel(stage.child(L"OrvelloNotesView"), {130, 200}), kRed);

  press('A', kControlHeld);
  press('B', kControlHeld);
  EXPECT_EQ(notes.content().text, page.text);
  EXPECT_EQ(notes.content().runs, (std::vector<NotesRun>{{0, 25, {true}}}));
  press('Z', kControlHeld);
  EXPECT_EQ(notes.content().runs, page.runs);
  EXPECT_EQ(notes.content().strokes, page.strokes);
  // Backspace joins a bulleted paragraph with a plain one, which says what both are.
  notes.set_tool(NotesTool::text);
  SendMessageW(edit, EM_SETSEL, 13, 13);
  press(VK_BACK);
  EXPECT_TRUE(notes.content().runs.empty()) << "first it leaves the list";
  EXPECT_EQ(notes.content().text, page.text);
  press(VK_BACK);
  EXPECT_EQ(notes.content().text, u"{\\rtf1 \\b x}second\nthird");
  EXPECT_TRUE(notes.undo() && notes.undo());
  EXPECT_EQ(notes.content().runs, page.runs);
}

// A page of notes under a pen whose readings are given; points of the view's pixels.
struct ChangingPen {
  struct At {
    LONG x, y;
    double pressure;
    bool erases = false;
  };
  ChangingPen() {
    EXPECT_TRUE(window.create(u"OrvelloRichTest", u"", 320, handler));
    window.show();
    sink.tell = [this](Event kind, int) { changes += kind == Event::changed; };
    sink.focused = [](int) {};
    sink.covered = [] { return false; };
    sink.pen = [this](UINT32) { return std::exchange(reading, {}); };
    EXPECT_TRUE(notes.create(window.frame()));
    notes.put({0, 0, 240, 268});
    notes.show(true);
    page = find_child(window.frame(), L"OrvelloNotesView");
  }
  void send(UINT message, const std::vector<At>& points = {}) {
    for (const At& at : points) {
      POINT screen{at.x, at.y};
      ClientToScreen(page, &screen);
      reading.push_back({screen, at.pressure, at.erases});
    }
    SendMessageW(page, message, MAKEWPARAM(9, 0), 0);
  }
  std::vector<NotesStroke> strokes() { return notes.notes()->content().strokes; }

  Win32Window window{small_screen()};
  Recorder handler;
  LocaleData locale = english_locale();
  FormLook look{{}, locale};
  ControlSink sink;
  NotesWindow notes{form_of(Kind::notes, 21).controls[0], look, sink};
  HWND page = nullptr;
  std::vector<PenPoint> reading;
  int changes = 0;
};

// A pen that tells its pressure, with the points that it went through since the last message.
TEST(RichControls, APenOnAPageIsAsThickAsItIsPressedAndErasesTurnedRound) {
  ChangingPen pen;
  pen.send(kPointerDown, {{20, 40, 0.25}});
  pen.send(kPointerMoved, {{40, 40, 0.5}, {60, 44, 1}});
  pen.send(kPointerUp);
  ASSERT_EQ(pen.strokes().size(), 0u) << "letters are chosen";
  pen.notes.notes()->set_tool(NotesTool::pen);
  pen.send(kPointerDown, {{5, 5, 1}, {20, 40, 0.25}});
  pen.send(kPointerMoved, {{40, 40, 0.5}, {60, 44, 1}});
  pen.send(kPointerUp);
  ASSERT_EQ(pen.strokes().size(), 1u);
  const NotesStroke stroke = pen.strokes()[0];
  ASSERT_EQ(stroke.points.size(), 3u) << "from where it was pressed";
  EXPECT_NEAR(stroke.points[0].pressure, 0.25, 0.01);
  EXPECT_NEAR(stroke.points[1].pressure, 0.5, 0.01);
  EXPECT_NEAR(stroke.points[2].pressure, 1, 0.01);
  EXPECT_NEAR(stroke.points[1].x - stroke.points[0].x, 20, 0.01);
  EXPECT_EQ(pen.changes, 1);
  pen.send(kPointerDown, {{40, 30, 1, true}});
  pen.send(kPointerMoved, {{40, 60, 1, true}});
  pen.send(kPointerLost);
  EXPECT_TRUE(pen.strokes().empty());
  EXPECT_EQ(pen.changes, 2);
  EXPECT_TRUE(pen.notes.notes()->undo());
  EXPECT_EQ(pen.strokes().size(), 1u);
}

// Rows are measured as the list comes, whatever they were before.
TEST(RichControls, AListThatDropsDownFitsTheRowsThatItHasByThen) {
  Stage shown(Kind::drop_list, 21);
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  ASSERT_TRUE(GetComboBoxInfo(shown.child(L"COMBOBOX"), &parts));
  const auto row_height = [&](WPARAM row) {
    return static_cast<int>(SendMessageW(parts.hwndList, LB_GETITEMHEIGHT, row, 0));
  };
  const auto dropped_height = [&](const std::vector<Text>& rows) {
    shown.dialog->choice(21)->set_rows(rows);
    shown.dialog->choice(21)->open();
    settle(shown.window);
    EXPECT_TRUE(IsWindowVisible(parts.hwndList));
    RECT place{};
    GetWindowRect(parts.hwndList, &place);
    return static_cast<int>(place.bottom - place.top);
  };
  const int two = dropped_height({u"One", u"Two"});
  EXPECT_GE(row_height(0), 27);
  EXPECT_EQ(dropped_height({u"One", u"Two", u"Three"}), two + row_height(0));
  Text long_row;
  for (int i = 0; i < 40; ++i) long_row += u"words ";
  dropped_height({u"One", long_row});
  EXPECT_GT(row_height(1), row_height(0));
}

TEST(RichControls, NoKindKeepsAnythingOfThePlatform) {
  Win32Window window(small_screen());
  Win32Dialogs dialogs(window);
  Recorder handler;
  ASSERT_TRUE(window.create(u"OrvelloRichTest", u"", 320, handler));
  window.show();
  constexpr int kTimes = 5;
  for (int i = 0; i <= static_cast<int>(Kind::custom); ++i) {
    SCOPED_TRACE(i);
    const auto kind = static_cast<Kind>(i);
    const auto open_and_close = [&](int times) {
      for (; times > 0; --times) {
        RecordingProcedure told;
        const auto dialog = dialogs.open_modeless(form_of(kind, 21), told);
        if (kind == Kind::report) dialog->report(21)->set_content(colored_rows(50));
        const NotesStroke stroke{kRed, 2, {{10, 10, 1}, {60, 20, 1}}};
        if (kind == Kind::notes) dialog->notes(21)->set_content({u"text", {}, {stroke}, 180});
        window.loop().deliver();
      }
      settle(window);
    };
    open_and_close(2);  // what is made once
    const int windows = thread_windows(), objects = drawing_objects();
    open_and_close(kTimes);
    EXPECT_EQ(thread_windows(), windows);
    // Some versions' month calendars keep a bold font for each font that they were given.
    const int fonts = kind == Kind::month_calendar ? 2 : kind == Kind::date_picker ? 1 : 0;
    EXPECT_LE(drawing_objects(), objects + fonts * kTimes);
  }
}

}  // namespace
}  // namespace orvello::test
