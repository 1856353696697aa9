#include "platform/win32/win32_ui.h"

#include <windows.h>

#include <algorithm>
#include <cstdint>

#include "platform/win32/win32_shaped.h"
#include "platform/win32/win32_ui_parts.h"

// The program's own forms and the real controls on them.
namespace v2::win32 {
namespace {

constexpr const char* kFormClass = "vantrel2 form";
constexpr COLORREF kFieldColour = RGB(0xE0, 0xE0, 0xE0);

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

// Fields and lists are drawn on the light grey of the window's design.
LRESULT FieldBrush(HDC dc) {
  static HBRUSH field = CreateSolidBrush(kFieldColour);
  SetBkColor(dc, kFieldColour);
  return reinterpret_cast<LRESULT>(field);
}

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
    case WM_CTLCOLORSTATIC: {
      // A disabled field asks as a label does; a label lies on the picture.
      Win32Ui::Control* c = ControlOf(reinterpret_cast<HWND>(l));
      if (c && c->field) {
        SetTextColor(reinterpret_cast<HDC>(w), GetSysColor(COLOR_GRAYTEXT));
        return FieldBrush(reinterpret_cast<HDC>(w));
      }
      SetBkMode(reinterpret_cast<HDC>(w), TRANSPARENT);
      return reinterpret_cast<LRESULT>(GetStockObject(NULL_BRUSH));
    }
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLOREDIT:
      return FieldBrush(reinterpret_cast<HDC>(w));
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

  RegisterInputBoxClass(wc);
  RegisterTrayClass(wc.hInstance);
}

Hwnd Win32Ui::CreateForm(const std::string& title, int width_twips,
                         int height_twips) {
  HWND h = CreateWindowExA(WS_EX_TOOLWINDOW, kFormClass, title.c_str(),
                           WS_POPUP, CW_USEDEFAULT, CW_USEDEFAULT,
                           TwipsToPixels(width_twips, true),
                           TwipsToPixels(height_twips, false), nullptr, nullptr,
                           GetModuleHandleA(nullptr), nullptr);
  return FromHwnd(h);
}

void Win32Ui::AddListBox(Hwnd form, ListBox& list, TwipsRect at,
                         std::function<void()> DblClick) {
  auto c = std::make_unique<Control>();
  c->id = next_id_++;
  c->hwnd = CreateWindowExA(
      WS_EX_CLIENTEDGE, "LISTBOX", "",
      WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
      TwipsToPixels(at.left, true), TwipsToPixels(at.top, false),
      TwipsToPixels(at.width, true), TwipsToPixels(at.height, false),
      ToHwnd(form), reinterpret_cast<HMENU>(static_cast<INT_PTR>(c->id)),
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
  const DWORD align = box.Alignment == 2   ? ES_CENTER
                      : box.Alignment == 1 ? ES_RIGHT
                                           : ES_LEFT;
  c->hwnd = CreateWindowExA(
      box.BorderStyle ? WS_EX_CLIENTEDGE : 0, "EDIT", box.Text.Get().c_str(),
      WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL | align |
          (box.Enabled ? 0 : WS_DISABLED),
      TwipsToPixels(at.left, true), TwipsToPixels(at.top, false),
      TwipsToPixels(at.width, true), TwipsToPixels(at.height, false),
      ToHwnd(form), reinterpret_cast<HMENU>(static_cast<INT_PTR>(c->id)),
      GetModuleHandleA(nullptr), nullptr);
  if (!c->hwnd) return;
  // Small enough for a font's name to fit a field as the form was drawn.
  static HFONT field_font =
      CreateFontA(-TwipsToPixels(150, false), 0, 0, 0, FW_NORMAL, 0, 0, 0,
                  ANSI_CHARSET, 0, 0, 0, 0, "Tahoma");
  SendMessageA(c->hwnd, WM_SETFONT, reinterpret_cast<WPARAM>(field_font),
               FALSE);
  // The limit holds for typing only: a text the program sets is kept whole.
  if (box.MaxLength > 0) {
    SendMessageA(c->hwnd, EM_LIMITTEXT, static_cast<WPARAM>(box.MaxLength), 0);
  }
  c->field = true;
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
      WS_CHILD | WS_VISIBLE | SS_NOTIFY | SS_LEFTNOWORDWRAP,
      TwipsToPixels(at.left, true), TwipsToPixels(at.top, false),
      TwipsToPixels(at.width, true), TwipsToPixels(at.height, false),
      ToHwnd(form), reinterpret_cast<HMENU>(static_cast<INT_PTR>(c->id)),
      GetModuleHandleA(nullptr), nullptr);
  if (!c->hwnd) return;
  // The labels are drawn small, to fit the picture they lie on: the
  // three of the style window stand close together.
  static HFONT small =
      CreateFontA(-TwipsToPixels(120, false), 0, 0, 0, FW_NORMAL, 0, 0, 0,
                  ANSI_CHARSET, 0, 0, 0, 0, "Tahoma");
  SendMessageA(c->hwnd, WM_SETFONT, reinterpret_cast<WPARAM>(small), FALSE);
  c->click = std::move(Click);
  c->text = std::make_unique<WindowText>(c->hwnd);
  label.Caption.Attach(c->text.get());
  SetPropA(c->hwnd, "vantrel2.control", c.get());
  controls_[FromHwnd(c->hwnd)] = std::move(c);
}

void Win32Ui::AddLine(Hwnd form, const Line& line) {
  const int left = TwipsToPixels(std::min(line.X1, line.X2), true);
  const int right = TwipsToPixels(std::max(line.X1, line.X2), true);
  const int top = TwipsToPixels(std::min(line.Y1, line.Y2), false);
  const int bottom = TwipsToPixels(std::max(line.Y1, line.Y2), false);
  // An etched frame shows as a line when one side has no length.
  const DWORD kind =
      bottom - top > right - left ? SS_ETCHEDVERT : SS_ETCHEDHORZ;
  CreateWindowExA(0, "STATIC", "", WS_CHILD | WS_VISIBLE | kind, left, top,
                  std::max(right - left, 2), std::max(bottom - top, 2),
                  ToHwnd(form), nullptr, GetModuleHandleA(nullptr), nullptr);
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
