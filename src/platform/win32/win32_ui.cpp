#include "platform/win32/win32_ui.h"

#include <windows.h>

#include <cstdint>

#include "platform/win32/win32_shaped.h"

namespace v2::win32 {
namespace {

constexpr const char* kFormClass = "vantrel2 form";
constexpr COLORREF kFieldColour = RGB(0xE0, 0xE0, 0xE0);

HWND ToHwnd(Hwnd h) {
  return reinterpret_cast<HWND>(
      static_cast<INT_PTR>(static_cast<std::int32_t>(h)));
}
Hwnd FromHwnd(HWND h) {
  return static_cast<Hwnd>(reinterpret_cast<UINT_PTR>(h));
}

int Pixels(int twips, bool horizontal) {
  HDC screen = GetDC(nullptr);
  int per_inch = GetDeviceCaps(screen, horizontal ? LOGPIXELSX : LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  if (per_inch <= 0) per_inch = 96;
  return MulDiv(twips, per_inch, 1440);
}

// The text of a real control, for a control of the program to read.
class WindowText : public TextPeer {
 public:
  explicit WindowText(HWND h) : h_(h) {}
  std::string Read() override {
    int n = GetWindowTextLengthA(h_);
    std::string text(static_cast<std::size_t>(n) + 1, '\0');
    n = GetWindowTextA(h_, text.data(), n + 1);
    text.resize(static_cast<std::size_t>(n > 0 ? n : 0));
    return text;
  }
  void Write(const std::string& text) override {
    SetWindowTextA(h_, text.c_str());
  }

 private:
  HWND h_;
};

class RealList : public ListPeer {
 public:
  explicit RealList(HWND h) : h_(h) {}
  void Added(const std::string& item) override {
    SendMessageA(h_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
  }
  void Removed(int index) override {
    SendMessageA(h_, LB_DELETESTRING, static_cast<WPARAM>(index), 0);
  }
  void Cleared() override { SendMessageA(h_, LB_RESETCONTENT, 0, 0); }

 private:
  HWND h_;
};

}  // namespace

struct Win32Ui::Control {
  HWND hwnd = nullptr;
  int id = 0;
  WNDPROC original = nullptr;
  std::function<void()> click;   // list: double click; label: click
  std::function<void(int)> key;  // text box: each character
  ListBox* list = nullptr;
  std::unique_ptr<TextPeer> text;  // text box, label caption
  std::unique_ptr<ListPeer> rows;  // list box
};

namespace {

Win32Ui::Control* ControlOf(HWND h) {
  return reinterpret_cast<Win32Ui::Control*>(GetPropA(h, "vantrel2.control"));
}

LRESULT CALLBACK FormProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
  switch (msg) {
    case WM_COMMAND: {
      Win32Ui::Control* c = ControlOf(reinterpret_cast<HWND>(l));
      if (!c) break;
      if (c->list && HIWORD(w) == LBN_DBLCLK) {
        LRESULT at = SendMessageA(c->hwnd, LB_GETCURSEL, 0, 0);
        c->list->ListIndex = at == LB_ERR ? -1 : static_cast<int>(at);
        if (c->click) c->click();
        return 0;
      }
      if (!c->list && HIWORD(w) == STN_CLICKED && c->click) {
        c->click();
        return 0;
      }
      break;
    }
    case WM_CTLCOLORSTATIC:
      // The labels lie on the picture.
      SetBkMode(reinterpret_cast<HDC>(w), TRANSPARENT);
      return reinterpret_cast<LRESULT>(GetStockObject(NULL_BRUSH));
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLOREDIT: {
      static HBRUSH field = CreateSolidBrush(kFieldColour);
      SetBkColor(reinterpret_cast<HDC>(w), kFieldColour);
      return reinterpret_cast<LRESULT>(field);
    }
    case WM_CLOSE:
      // The member's windows are never destroyed; closing hides.
      ShowWindow(hwnd, SW_HIDE);
      return 0;
    default:
      break;
  }
  return DefWindowProcA(hwnd, msg, w, l);
}

LRESULT CALLBACK TextProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
  Win32Ui::Control* c = ControlOf(hwnd);
  if (!c) return DefWindowProcA(hwnd, msg, w, l);
  WNDPROC original = c->original;
  if (msg == WM_CHAR && c->key) {
    auto key = c->key;
    key(static_cast<int>(w));
    // A single-line edit has nothing to do with Enter but beep.
    if (w == VK_RETURN) return 0;
  }
  return CallWindowProcA(original, hwnd, msg, w, l);
}

}  // namespace

Win32Ui::Win32Ui() {
  WNDCLASSEXA wc{};
  wc.cbSize = sizeof(wc);
  wc.lpfnWndProc = FormProc;
  wc.hInstance = GetModuleHandleA(nullptr);
  wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
  wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  wc.lpszClassName = kFormClass;
  RegisterClassExA(&wc);
}

Win32Ui::~Win32Ui() {
  for (auto& [h, c] : controls_) {
    if (IsWindow(c->hwnd)) RemovePropA(c->hwnd, "vantrel2.control");
  }
}

Hwnd Win32Ui::CreateForm(const std::string& title, int width_twips,
                         int height_twips) {
  HWND h = CreateWindowExA(
      WS_EX_TOOLWINDOW, kFormClass, title.c_str(), WS_POPUP, CW_USEDEFAULT,
      CW_USEDEFAULT, Pixels(width_twips, true), Pixels(height_twips, false),
      nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
  return FromHwnd(h);
}

void Win32Ui::AddListBox(Hwnd form, ListBox& list, TwipsRect at,
                         std::function<void()> DblClick) {
  auto c = std::make_unique<Control>();
  c->id = next_id_++;
  c->hwnd = CreateWindowExA(
      WS_EX_CLIENTEDGE, "LISTBOX", "",
      WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
      Pixels(at.left, true), Pixels(at.top, false), Pixels(at.width, true),
      Pixels(at.height, false), ToHwnd(form),
      reinterpret_cast<HMENU>(static_cast<INT_PTR>(c->id)),
      GetModuleHandleA(nullptr), nullptr);
  if (!c->hwnd) return;
  c->list = &list;
  c->click = std::move(DblClick);
  c->rows = std::make_unique<RealList>(c->hwnd);
  for (const std::string& item : list.items) c->rows->Added(item);
  list.peer = c->rows.get();
  SetPropA(c->hwnd, "vantrel2.control", c.get());
  controls_[FromHwnd(c->hwnd)] = std::move(c);
}

void Win32Ui::AddTextBox(Hwnd form, TextBox& box, TwipsRect at,
                         std::function<void(int KeyAscii)> KeyPress) {
  auto c = std::make_unique<Control>();
  c->id = next_id_++;
  c->hwnd = CreateWindowExA(
      WS_EX_CLIENTEDGE, "EDIT", box.Text.Get().c_str(),
      WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, Pixels(at.left, true),
      Pixels(at.top, false), Pixels(at.width, true), Pixels(at.height, false),
      ToHwnd(form), reinterpret_cast<HMENU>(static_cast<INT_PTR>(c->id)),
      GetModuleHandleA(nullptr), nullptr);
  if (!c->hwnd) return;
  c->key = std::move(KeyPress);
  c->text = std::make_unique<WindowText>(c->hwnd);
  box.Text.Attach(c->text.get());
  SetPropA(c->hwnd, "vantrel2.control", c.get());
  c->original = reinterpret_cast<WNDPROC>(SetWindowLongPtrA(
      c->hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&TextProc)));
  controls_[FromHwnd(c->hwnd)] = std::move(c);
}

void Win32Ui::AddLabel(Hwnd form, Label& label, TwipsRect at,
                       std::function<void()> Click) {
  auto c = std::make_unique<Control>();
  c->id = next_id_++;
  c->hwnd = CreateWindowExA(
      0, "STATIC", label.Caption.Get().c_str(),
      WS_CHILD | WS_VISIBLE | SS_NOTIFY, Pixels(at.left, true),
      Pixels(at.top, false), Pixels(at.width, true), Pixels(at.height, false),
      ToHwnd(form), reinterpret_cast<HMENU>(static_cast<INT_PTR>(c->id)),
      GetModuleHandleA(nullptr), nullptr);
  if (!c->hwnd) return;
  // The labels are drawn small, to fit the picture they lie on.
  static HFONT small = CreateFontA(-Pixels(135, false), 0, 0, 0, FW_NORMAL, 0,
                                   0, 0, ANSI_CHARSET, 0, 0, 0, 0, "Tahoma");
  SendMessageA(c->hwnd, WM_SETFONT, reinterpret_cast<WPARAM>(small), FALSE);
  c->click = std::move(Click);
  c->text = std::make_unique<WindowText>(c->hwnd);
  label.Caption.Attach(c->text.get());
  SetPropA(c->hwnd, "vantrel2.control", c.get());
  controls_[FromHwnd(c->hwnd)] = std::move(c);
}

std::unique_ptr<ShapedWindow> Win32Ui::Shaped(Hwnd form) {
  if (!form) return nullptr;
  return std::make_unique<Win32ShapedWindow>(form);
}

std::unique_ptr<PictureBox> Win32Ui::Picture(Hwnd form,
                                             const v2::Pixels& picture,
                                             float width_twips,
                                             float height_twips, ColorRef back,
                                             MouseMove handler) {
  auto box = std::make_unique<Win32PictureBox>(picture, width_twips,
                                               height_twips, back);
  if (form) box->AttachTo(form, std::move(handler));
  return box;
}

}  // namespace v2::win32
