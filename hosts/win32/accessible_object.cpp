#include "hosts/win32/accessible_object.h"

#include <oleacc.h>

#include <atomic>

#include "hosts/win32/native_window.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

// Not the name that the platform's library exports: linked, that is the place of a jump.
const IID& accessible_id() { return __uuidof(IAccessible); }

BSTR new_string(const Text& text) {
  return SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()),
                           static_cast<UINT>(text.size()));
}

HRESULT text_answer(const Text& text, BSTR* answer) {
  if (!answer) return E_INVALIDARG;
  *answer = text.empty() ? nullptr : new_string(text);
  if (text.empty()) return S_FALSE;
  return *answer ? S_OK : E_OUTOFMEMORY;
}

void number_answer(long number, VARIANT* answer) {
  answer->vt = VT_I4;
  answer->lVal = number;
}

// A list of child numbers, for more than one selected part.
class PartNumbers : public IEnumVARIANT {
 public:
  PartNumbers(std::vector<int> parts, std::size_t next) : parts_(std::move(parts)), next_(next) {}
  virtual ~PartNumbers() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** answer) override {
    if (!answer) return E_POINTER;
    *answer = nullptr;
    if (wanted != IID_IUnknown && wanted != IID_IEnumVARIANT) return E_NOINTERFACE;
    *answer = this;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE Next(ULONG wanted, VARIANT* answer, ULONG* fetched) override {
    ULONG got = 0;
    for (; got < wanted && next_ < parts_.size(); ++got) {
      VariantInit(&answer[got]);
      number_answer(parts_[next_++] + 1, &answer[got]);
    }
    if (fetched) *fetched = got;
    return got == wanted ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const std::size_t left = parts_.size() - next_;
    next_ += count < left ? count : left;
    return count <= left ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    next_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** answer) override {
    if (!answer) return E_POINTER;
    *answer = nullptr;
    guarded([&] { *answer = new PartNumbers(parts_, next_); });
    return *answer ? S_OK : E_OUTOFMEMORY;
  }

 private:
  std::atomic<ULONG> references_{1};
  const std::vector<int> parts_;
  std::size_t next_;
};

}  // namespace

int AccessibleSource::accessible_at(Point screen) {
  for (int part = 0; part < accessible_count(); ++part)
    if (accessible_part(part).place.contains(screen)) return part;
  return -1;
}

class AccessibleObject : public IAccessible {
 public:
  AccessibleObject(AccessibleSource& source, HWND window) : source_(&source), window_(window) {}
  virtual ~AccessibleObject() = default;
  void part_from_source() { source_ = nullptr; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** answer) override {
    if (!answer) return E_POINTER;
    *answer = nullptr;
    if (wanted != IID_IUnknown && wanted != IID_IDispatch && wanted != accessible_id())
      return E_NOINTERFACE;
    *answer = static_cast<IAccessible*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  // Screen readers call through the table; nothing is found by name.
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return E_NOTIMPL;
  }

  HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override {
    if (!parent) return E_INVALIDARG;
    *parent = nullptr;
    if (!source_) return CO_E_OBJNOTCONNECTED;
    return AccessibleObjectFromWindow(window_, static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                      reinterpret_cast<void**>(parent));
  }
  HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override {
    if (!count) return E_INVALIDARG;
    *count = 0;
    return ask([&](AccessibleSource& source) {
      *count = source.accessible_count();
      return S_OK;
    });
  }
  HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** answer) override {
    if (!answer) return E_INVALIDARG;
    *answer = nullptr;
    AccessiblePart part;
    const HRESULT known = look_at(child, part);
    if (known != S_OK) return known;
    if (child.lVal != CHILDID_SELF) return S_FALSE;  // a simple element: this object tells of it
    *answer = static_cast<IAccessible*>(this);
    AddRef();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* answer) override {
    return part_text(child, answer, &AccessiblePart::name);
  }
  HRESULT STDMETHODCALLTYPE get_accValue(VARIANT, BSTR* answer) override {
    return text_answer({}, answer);
  }
  HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* answer) override {
    return part_text(child, answer, &AccessiblePart::description);
  }
  HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* answer) override {
    return part_number(child, answer, &AccessiblePart::role);
  }
  HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* answer) override {
    return part_number(child, answer, &AccessiblePart::state);
  }
  HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT, BSTR* answer) override {
    return text_answer({}, answer);
  }
  HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT, long*) override {
    return text_answer({}, file);
  }
  HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT, BSTR* answer) override {
    return text_answer({}, answer);
  }
  HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* answer) override {
    if (!answer) return E_INVALIDARG;
    VariantInit(answer);
    if (GetFocus() != window_) return source_ ? S_FALSE : CO_E_OBJNOTCONNECTED;
    return ask([&](AccessibleSource& source) {
      number_answer(source.accessible_focus() + 1, answer);
      return S_OK;
    });
  }
  HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* answer) override {
    if (!answer) return E_INVALIDARG;
    VariantInit(answer);
    return ask([&](AccessibleSource& source) {
      std::vector<int> selected = source.accessible_selection();
      if (selected.empty()) return S_FALSE;
      if (selected.size() == 1) {
        number_answer(selected.front() + 1, answer);
        return S_OK;
      }
      answer->punkVal = new PartNumbers(std::move(selected), 0);
      answer->vt = VT_UNKNOWN;
      return S_OK;
    });
  }
  HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* answer) override {
    return part_text(child, answer, &AccessiblePart::action);
  }
  HRESULT STDMETHODCALLTYPE accSelect(long flags, VARIANT child) override {
    AccessiblePart part;
    const HRESULT known = look_at(child, part);
    if (known != S_OK) return known;
    if (flags & SELFLAG_TAKEFOCUS) SetFocus(window_);
    if (child.lVal != CHILDID_SELF && flags & SELFLAG_TAKESELECTION) return press(child, part);
    return flags & SELFLAG_TAKEFOCUS ? S_OK : DISP_E_MEMBERNOTFOUND;
  }
  HRESULT STDMETHODCALLTYPE accLocation(long* x, long* y, long* width, long* height,
                                        VARIANT child) override {
    if (!x || !y || !width || !height) return E_INVALIDARG;
    AccessiblePart part;
    const HRESULT known = look_at(child, part);
    *x = part.place.x, *y = part.place.y;
    *width = part.place.width, *height = part.place.height;
    return known;
  }
  HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT* answer) override {
    if (!answer) return E_INVALIDARG;
    VariantInit(answer);
    if (start.vt != VT_I4) return E_INVALIDARG;
    return ask([&](AccessibleSource& source) {
      const int last = source.accessible_count();
      long to = 0;
      switch (direction) {
        case NAVDIR_FIRSTCHILD:
          to = 1;
          break;
        case NAVDIR_LASTCHILD:
          to = last;
          break;
        case NAVDIR_NEXT:
        case NAVDIR_DOWN:
          to = start.lVal == CHILDID_SELF ? 0 : start.lVal + 1;
          break;
        case NAVDIR_PREVIOUS:
        case NAVDIR_UP:
          to = start.lVal - 1;
          break;
        default:
          break;
      }
      if (to < 1 || to > last) return S_FALSE;
      number_answer(to, answer);
      return S_OK;
    });
  }
  HRESULT STDMETHODCALLTYPE accHitTest(long x, long y, VARIANT* answer) override {
    if (!answer) return E_INVALIDARG;
    VariantInit(answer);
    return ask([&](AccessibleSource& source) {
      const Point at{static_cast<int>(x), static_cast<int>(y)};
      if (!source.accessible_self().place.contains(at)) return S_FALSE;
      number_answer(source.accessible_at(at) + 1, answer);
      return S_OK;
    });
  }
  HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override {
    AccessiblePart part;
    const HRESULT known = look_at(child, part);
    return known == S_OK ? press(child, part) : known;
  }
  HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_accValue(VARIANT, BSTR) override { return E_NOTIMPL; }

 private:
  // `action` answers a result; what it throws does not pass through the platform.
  template <typename Action>
  HRESULT ask(Action action) {
    if (!source_) return CO_E_OBJNOTCONNECTED;
    HRESULT result = E_FAIL;
    guarded([&] { result = action(*source_); });
    return result;
  }
  HRESULT look_at(const VARIANT& child, AccessiblePart& part) {
    if (child.vt != VT_I4) return E_INVALIDARG;
    return ask([&](AccessibleSource& source) {
      if (child.lVal < 0 || child.lVal > source.accessible_count()) return E_INVALIDARG;
      part = child.lVal == CHILDID_SELF ? source.accessible_self()
                                        : source.accessible_part(child.lVal - 1);
      return S_OK;
    });
  }
  HRESULT part_text(const VARIANT& child, BSTR* answer, Text AccessiblePart::*text) {
    if (!answer) return E_INVALIDARG;
    *answer = nullptr;
    AccessiblePart part;
    const HRESULT known = look_at(child, part);
    return known == S_OK ? text_answer(part.*text, answer) : known;
  }
  HRESULT part_number(const VARIANT& child, VARIANT* answer, long AccessiblePart::*number) {
    if (!answer) return E_INVALIDARG;
    VariantInit(answer);
    AccessiblePart part;
    const HRESULT known = look_at(child, part);
    if (known == S_OK) number_answer(part.*number, answer);
    return known;
  }
  HRESULT press(const VARIANT& child, const AccessiblePart& part) {
    if (part.action.empty()) return DISP_E_MEMBERNOTFOUND;
    return ask([&](AccessibleSource& source) {
      source.press_accessible(child.lVal - 1);
      return S_OK;
    });
  }

  std::atomic<ULONG> references_{1};
  AccessibleSource* source_;
  HWND window_;
};

AccessibleWindow::~AccessibleWindow() {
  if (!object_) return;
  object_->part_from_source();
  object_->Release();
}

std::optional<LRESULT> AccessibleWindow::answer(HWND window, WPARAM wparam, LPARAM lparam) {
  // Of the number's 32 bits alone: the platform widens them as it likes.
  if (static_cast<LONG>(lparam) != OBJID_CLIENT) return {};
  if (!object_) object_ = new AccessibleObject(source_, window);
  return LresultFromObject(accessible_id(), wparam, object_);
}

void AccessibleWindow::tell(HWND window, DWORD event, int part) {
  NotifyWinEvent(event, window, OBJID_CLIENT, part + 1);
}

}  // namespace orvello
