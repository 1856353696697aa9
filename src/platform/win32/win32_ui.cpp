#include "platform/win32/win32_ui.h"

#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

#include <algorithm>
#include <cstdint>

#include "platform/win32/win32_loop.h"
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

// The input box's window and the tray's hidden one, further down.
LRESULT CALLBACK InputBoxProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l);
LRESULT CALLBACK OwnerProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l);

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

  WNDCLASSEXA box = wc;
  box.lpfnWndProc = InputBoxProc;
  box.lpszClassName = kInputBoxClass;
  RegisterClassExA(&box);

  WNDCLASSEXA owner{};
  owner.cbSize = sizeof(owner);
  owner.lpfnWndProc = OwnerProc;
  owner.hInstance = wc.hInstance;
  owner.lpszClassName = kTrayWindowClass;
  RegisterClassExA(&owner);
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

namespace {

constexpr UINT_PTR kMenuPumpTimer = 1;
// How often the program's loop runs while a popup menu is open, and how
// long an input box sleeps between passes when nothing comes.
constexpr UINT kMenuPumpMs = 20;
constexpr int kInputBoxStepMs = 50;
constexpr const char* kOriginalProcProp = "vantrel2.original";

HMENU ToHmenu(Hmenu h) {
  return reinterpret_cast<HMENU>(
      static_cast<INT_PTR>(static_cast<std::int32_t>(h)));
}

// An exception cannot pass through the system's frames between a window
// procedure and whoever dispatched its message, so a handler called from a
// window procedure that fails ends there, with a note for a debugger.
template <typename F>
void Guarded(F&& handler) {
  try {
    handler();
  } catch (...) {
    OutputDebugStringA("vantrel2: a handler failed\n");
  }
}

// Pixels at the screen's DPI for a layout drawn at 96 DPI.
int Px(int at96, bool horizontal = true) {
  return Pixels(at96 * 15, horizontal);
}

// ---- The input box ----

struct InputBoxState {
  HWND box = nullptr;
  HWND edit = nullptr;
  HWND cancel = nullptr;
  HWND focus = nullptr;  // the control to give the focus back to
  bool done = false;     // the window is gone
  bool answered = false;
  std::string answer;
};

InputBoxState* BoxStateOf(HWND box) {
  return reinterpret_cast<InputBoxState*>(
      GetWindowLongPtrA(box, GWLP_USERDATA));
}

void CloseBox(InputBoxState& s, bool ok) {
  if (s.done) return;
  if (ok) {
    s.answer = WindowText(s.edit).Read();
    s.answered = true;
  }
  DestroyWindow(s.box);
}

LRESULT CALLBACK InputBoxProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
  if (msg == WM_NCCREATE) {
    auto* create = reinterpret_cast<CREATESTRUCTA*>(l);
    SetWindowLongPtrA(hwnd, GWLP_USERDATA,
                      reinterpret_cast<LONG_PTR>(create->lpCreateParams));
  }
  InputBoxState* s = BoxStateOf(hwnd);
  if (!s) return DefWindowProcA(hwnd, msg, w, l);
  switch (msg) {
    case WM_COMMAND:
      if (HIWORD(w) == BN_CLICKED &&
          (LOWORD(w) == IDOK || LOWORD(w) == IDCANCEL)) {
        CloseBox(*s, LOWORD(w) == IDOK);
        return 0;
      }
      break;
    case WM_ACTIVATE:
      if (LOWORD(w) != WA_INACTIVE && s->focus && IsWindow(s->focus)) {
        SetFocus(s->focus);
        return 0;
      }
      break;
    case WM_CLOSE:
      CloseBox(*s, false);
      return 0;
    case WM_DESTROY:
      s->done = true;
      SetWindowLongPtrA(hwnd, GWLP_USERDATA, 0);
      break;
    default:
      break;
  }
  return DefWindowProcA(hwnd, msg, w, l);
}

// The box's edit and buttons: without a dialog manager, Enter, Esc and Tab
// are theirs to handle. Enter presses the button that has the focus, or OK.
LRESULT CALLBACK BoxFieldProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
  auto original = reinterpret_cast<WNDPROC>(GetPropA(hwnd, kOriginalProcProp));
  if (!original) return DefWindowProcA(hwnd, msg, w, l);
  HWND box = GetParent(hwnd);
  InputBoxState* s = box ? BoxStateOf(box) : nullptr;
  if (s) {
    switch (msg) {
      case WM_KEYDOWN:
        if (w == VK_RETURN || w == VK_ESCAPE) {
          // The window goes here; nothing of it may be touched after.
          CloseBox(*s, w == VK_RETURN && hwnd != s->cancel);
          return 0;
        }
        if (w == VK_TAB) {
          HWND next = GetNextDlgTabItem(box, hwnd, GetKeyState(VK_SHIFT) < 0);
          if (next) {
            SetFocus(next);
            if (next == s->edit) SendMessageA(next, EM_SETSEL, 0, -1);
          }
          return 0;
        }
        break;
      case WM_CHAR:
        if (w == '\r' || w == '\t' || w == 27) return 0;  // no beep
        break;
      case WM_SETFOCUS:
        s->focus = hwnd;
        break;
      default:
        break;
    }
  }
  if (msg == WM_NCDESTROY) {
    RemovePropA(hwnd, kOriginalProcProp);
    SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(original));
  }
  return CallWindowProcA(original, hwnd, msg, w, l);
}

HWND BoxChild(HWND box, DWORD ex_style, const char* cls, const char* text,
              DWORD style, int id, int left, int top, int width, int height) {
  HWND h =
      CreateWindowExA(ex_style, cls, text, WS_CHILD | WS_VISIBLE | style,
                      Px(left), Px(top, false), Px(width), Px(height, false),
                      box, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                      GetModuleHandleA(nullptr), nullptr);
  if (!h) return nullptr;
  SendMessageA(h, WM_SETFONT,
               reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)),
               FALSE);
  if (style & WS_TABSTOP) {
    SetPropA(h, kOriginalProcProp,
             reinterpret_cast<HANDLE>(SetWindowLongPtrA(
                 h, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&BoxFieldProc))));
  }
  return h;
}

// The program's windows that the member could work in while a box is up.
struct Disabled {
  HWND box;
  std::vector<HWND> windows;
};

BOOL CALLBACK DisableOne(HWND h, LPARAM l) {
  auto* d = reinterpret_cast<Disabled*>(l);
  if (h != d->box && IsWindowVisible(h) && IsWindowEnabled(h)) {
    d->windows.push_back(h);
  }
  return TRUE;
}

// ---- The tray's icon: an orange "v²" on a dark rounded square ----

bool GlyphAt(const char* const rows[], int columns, int count, int x, int y) {
  return x >= 0 && y >= 0 && x < columns && y < count && rows[y][x] == '#';
}

HICON MakeTrayIcon() {
  static const char* const kV[] = {"#...#", "#...#", ".#.#.", ".#.#.", "..#.."};
  static const char* const kTwo[] = {"###", "..#", "###", "#..", "###"};
  const int size = std::max(16, GetSystemMetrics(SM_CXSMICON));
  const int u = size / 16;  // one cell of the 16 by 16 drawing
  const double radius = 3.0 * u;

  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = size;
  info.bmiHeader.biHeight = -size;  // top-down
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  HBITMAP colour =
      CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (!colour || !bits) {
    if (colour) DeleteObject(colour);
    return nullptr;
  }
  const int mask_stride = (size + 15) / 16 * 2;
  std::vector<BYTE> mask(static_cast<std::size_t>(mask_stride * size), 0);
  auto* pixel = static_cast<std::uint32_t*>(bits);
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      double px = x + 0.5, py = y + 0.5;
      double cx = std::clamp(px, radius, size - radius);
      double cy = std::clamp(py, radius, size - radius);
      bool inside =
          (px - cx) * (px - cx) + (py - cy) * (py - cy) <= radius * radius;
      std::uint32_t argb = 0;
      if (!inside) {
        mask[static_cast<std::size_t>(y * mask_stride + x / 8)] |=
            static_cast<BYTE>(0x80 >> (x % 8));
      } else if (GlyphAt(kV, 5, 5, (x - u) / (2 * u), (y - 5 * u) / (2 * u)) &&
                 x >= u && y >= 5 * u) {
        argb = 0xFFFF8000;
      } else if (GlyphAt(kTwo, 3, 5, (x - 12 * u) / u, (y - u) / u) &&
                 x >= 12 * u && y >= u) {
        argb = 0xFFFF8000;
      } else {
        argb = 0xFF1E2430;
      }
      pixel[y * size + x] = argb;
    }
  }
  HBITMAP and_mask = CreateBitmap(size, size, 1, 1, mask.data());
  ICONINFO icon{};
  icon.fIcon = TRUE;
  icon.hbmMask = and_mask;
  icon.hbmColor = colour;
  HICON made = and_mask ? CreateIconIndirect(&icon) : nullptr;
  if (and_mask) DeleteObject(and_mask);
  DeleteObject(colour);
  return made;
}

// ---- The popup menu ----

HMENU BuildMenu(const MenuItem& head, std::vector<MenuItem*>& commands) {
  HMENU menu = CreatePopupMenu();
  if (!menu) return nullptr;
  for (MenuItem* item : head.Items) {
    if (!item || !item->Visible) continue;
    if (item->IsSeparator()) {
      AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
      continue;
    }
    UINT flags = MF_STRING | (item->Checked ? MF_CHECKED : MF_UNCHECKED) |
                 (item->Enabled ? MF_ENABLED : MF_GRAYED);
    if (!item->Items.empty()) {
      HMENU sub = BuildMenu(*item, commands);
      if (sub &&
          !AppendMenuA(menu, flags | MF_POPUP, reinterpret_cast<UINT_PTR>(sub),
                       item->Caption.c_str())) {
        DestroyMenu(sub);
      }
      continue;
    }
    commands.push_back(item);
    AppendMenuA(menu, flags, commands.size(), item->Caption.c_str());
  }
  return menu;
}

}  // namespace

Hmenu BuildPopupMenu(const MenuItem& root, std::vector<MenuItem*>& commands) {
  return static_cast<Hmenu>(
      reinterpret_cast<UINT_PTR>(BuildMenu(root, commands)));
}

struct Win32Ui::Owner {
  Win32Ui* ui = nullptr;
  HWND hwnd = nullptr;
  HICON icon = nullptr;
  UINT taskbar_created = 0;
  std::string tip;
  TrayMouseUp mouse_up;
  EventLoop* menu_loop = nullptr;  // run while a popup menu is open
  bool pumping = false;

  // The shell started again (Explorer restarted) and knows no entries; the
  // same message also comes when only the screen changed, with the entry
  // still there.
  void ShellRestarted() {
    if (!ui->tray_wanted_) return;
    ui->tray_shown_ = ui->Notify(NIM_ADD) || ui->Notify(NIM_MODIFY);
  }
};

namespace {

LRESULT CALLBACK OwnerProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
  if (msg == WM_NCCREATE) {
    auto* create = reinterpret_cast<CREATESTRUCTA*>(l);
    SetWindowLongPtrA(hwnd, GWLP_USERDATA,
                      reinterpret_cast<LONG_PTR>(create->lpCreateParams));
  }
  auto* o =
      reinterpret_cast<Win32Ui::Owner*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
  if (!o) return DefWindowProcA(hwnd, msg, w, l);
  if (msg == kTrayCallbackMessage) {
    std::int16_t button = 0;
    switch (static_cast<UINT>(l)) {
      case WM_LBUTTONUP:
        button = 1;
        break;
      case WM_RBUTTONUP:
        button = 2;
        break;
      case WM_MBUTTONUP:
        button = 4;
        break;
      default:
        break;
    }
    if (button && o->mouse_up) {
      // The handler may remove the entry, and with it itself.
      Win32Ui::TrayMouseUp handler = o->mouse_up;
      Guarded([&] { handler(button); });
    }
    return 0;
  }
  if (o->taskbar_created && msg == o->taskbar_created) {
    o->ShellRestarted();
    return 0;
  }
  if (msg == WM_TIMER && w == kMenuPumpTimer) {
    // A handler that waits pumps the loop itself; this pass is for the
    // time the menu's own loop has the thread.
    if (o->menu_loop && !o->pumping) {
      o->pumping = true;
      Guarded([&] { o->menu_loop->PumpEvents(); });
      o->pumping = false;
    }
    return 0;
  }
  if (msg == WM_DESTROY) SetWindowLongPtrA(hwnd, GWLP_USERDATA, 0);
  return DefWindowProcA(hwnd, msg, w, l);
}

}  // namespace

bool Win32Ui::EnsureOwner() {
  if (owner_ && IsWindow(owner_->hwnd)) return true;
  if (!owner_) {
    owner_ = std::make_unique<Owner>();
    owner_->ui = this;
    owner_->icon = MakeTrayIcon();
    owner_->taskbar_created = RegisterWindowMessageA("TaskbarCreated");
  }
  // A top-level window, not a message-only one: the shell's restart is
  // told to top-level windows only.
  owner_->hwnd = CreateWindowExA(
      WS_EX_TOOLWINDOW, kTrayWindowClass, "vantrel2 tray", WS_POPUP, 0, 0, 0, 0,
      nullptr, nullptr, GetModuleHandleA(nullptr), owner_.get());
  return owner_->hwnd != nullptr;
}

Hwnd Win32Ui::TrayWindow() const { return owner_ ? FromHwnd(owner_->hwnd) : 0; }

bool Win32Ui::Notify(unsigned message) {
  if (!owner_ || !owner_->hwnd) return false;
  NOTIFYICONDATAA data{};
  // The size every shell since Windows 2000 knows: a tip of 127 bytes.
  data.cbSize = NOTIFYICONDATAA_V2_SIZE;
  data.hWnd = owner_->hwnd;
  data.uID = 1;
  data.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
  data.uCallbackMessage = kTrayCallbackMessage;
  data.hIcon = owner_->icon;
  owner_->tip.copy(data.szTip, sizeof(data.szTip) - 1);
  return Shell_NotifyIconA(message, &data) != FALSE;
}

void Win32Ui::TrayAdd(const std::string& tip, TrayMouseUp handler) {
  if (!EnsureOwner()) return;
  owner_->tip = tip;
  owner_->mouse_up = std::move(handler);
  tray_wanted_ = true;
  if (tray_shown_ && Notify(NIM_MODIFY)) return;
  tray_shown_ = Notify(NIM_ADD);
}

void Win32Ui::TrayRemove() {
  tray_wanted_ = false;
  if (tray_shown_) Notify(NIM_DELETE);
  tray_shown_ = false;
  if (owner_) owner_->mouse_up = nullptr;
}

void Win32Ui::PopupMenu(EventLoop& loop, const MenuItem& root) {
  if (!EnsureOwner()) return;
  std::vector<MenuItem*> commands;
  HMENU menu = ToHmenu(BuildPopupMenu(root, commands));
  if (!menu) return;
  HWND owner = owner_->hwnd;
  EventLoop* outer = owner_->menu_loop;
  owner_->menu_loop = &loop;
  ::SetTimer(owner, kMenuPumpTimer, kMenuPumpMs, nullptr);
  POINT at{};
  GetCursorPos(&at);
  // Unless its owner is in the foreground, the menu stays open when the
  // member clicks elsewhere; the posted message after it lets the menu go
  // away at once when the member clicks the tray again.
  SetForegroundWindow(owner);
  UINT chosen = static_cast<UINT>(
      TrackPopupMenu(menu, TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, at.x,
                     at.y, 0, owner, nullptr));
  PostMessageA(owner, WM_NULL, 0, 0);
  owner_->menu_loop = outer;
  if (!outer) KillTimer(owner, kMenuPumpTimer);
  DestroyMenu(menu);
  if (chosen >= 1 && chosen <= commands.size()) {
    MenuItem* item = commands[chosen - 1];
    if (item->Enabled && item->Click) item->Click();
  }
}

void Win32Ui::EndProgram() {
  TrayRemove();
  ExitProcess(0);
}

std::string Win32Ui::InputBox(EventLoop& loop, const std::string& prompt,
                              const std::string& title,
                              const std::string& preset) {
  // The classic box: the prompt at the top left, OK and Cancel beside it,
  // the line to answer in across the bottom.
  const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
  const DWORD ex_style = WS_EX_DLGMODALFRAME | WS_EX_TOPMOST;
  RECT frame{0, 0, Px(372), Px(126, false)};
  AdjustWindowRectEx(&frame, style, FALSE, ex_style);
  const int width = frame.right - frame.left;
  const int height = frame.bottom - frame.top;
  InputBoxState s;
  s.box =
      CreateWindowExA(ex_style, kInputBoxClass, title.c_str(), style,
                      (GetSystemMetrics(SM_CXSCREEN) - width) / 2,
                      (GetSystemMetrics(SM_CYSCREEN) - height) / 2, width,
                      height, nullptr, nullptr, GetModuleHandleA(nullptr), &s);
  if (!s.box) return {};
  BoxChild(s.box, 0, "STATIC", prompt.c_str(), SS_LEFT | SS_NOPREFIX, 100, 10,
           10, 270, 76);
  HWND ok = BoxChild(s.box, 0, "BUTTON", "OK", BS_DEFPUSHBUTTON | WS_TABSTOP,
                     IDOK, 290, 10, 72, 24);
  s.cancel = BoxChild(s.box, 0, "BUTTON", "Cancel", BS_PUSHBUTTON | WS_TABSTOP,
                      IDCANCEL, 290, 40, 72, 24);
  s.edit = BoxChild(s.box, WS_EX_CLIENTEDGE, "EDIT", preset.c_str(),
                    ES_AUTOHSCROLL | WS_TABSTOP, 101, 10, 94, 352, 22);
  if (!ok || !s.cancel || !s.edit) {
    DestroyWindow(s.box);
    return {};
  }

  Disabled others{s.box, {}};
  EnumThreadWindows(GetCurrentThreadId(), DisableOne,
                    reinterpret_cast<LPARAM>(&others));
  for (HWND h : others.windows) EnableWindow(h, FALSE);

  ShowWindow(s.box, SW_SHOWNORMAL);
  SetForegroundWindow(s.box);
  SetFocus(s.edit);
  SendMessageA(s.edit, EM_SETSEL, 0, -1);

  // Waits for the member, as long as it takes, with the program's events
  // going on. Once the thread has been told to quit nobody can answer.
  auto* real = dynamic_cast<Win32Loop*>(&loop);
  while (!s.done && !(real && real->quitting())) {
    loop.PumpEvents();
    if (s.done) break;
    loop.WaitUntil(loop.clock().NowMs() + kInputBoxStepMs);
  }
  if (!s.done) DestroyWindow(s.box);

  for (HWND h : others.windows) {
    if (IsWindow(h)) EnableWindow(h, TRUE);
  }
  return s.answered ? s.answer : std::string();
}

Win32Ui::~Win32Ui() {
  for (auto& [h, c] : controls_) {
    if (IsWindow(c->hwnd)) RemovePropA(c->hwnd, "vantrel2.control");
  }
  if (owner_) {
    TrayRemove();
    if (owner_->hwnd) DestroyWindow(owner_->hwnd);
    if (owner_->icon) DestroyIcon(owner_->icon);
  }
}

}  // namespace v2::win32
