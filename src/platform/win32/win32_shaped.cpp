#include "platform/win32/win32_shaped.h"

#include <windows.h>

#include <algorithm>

#include "platform/win32/win32_bitmap.h"
#include "platform/win32/win32_handles.h"

namespace v2::win32 {
namespace {

constexpr const char* kPictureProp = "vantrel2.picture";

HDC ToHdc(std::uintptr_t h) { return reinterpret_cast<HDC>(h); }

// 0x00RRGGBB in a 32-bit DIB to 0x00BBGGRR.
ColorRef FromDib(std::uint32_t v) {
  return ((v & 0xFF) << 16) | (v & 0xFF00) | ((v >> 16) & 0xFF);
}
std::uint32_t ToDib(ColorRef c) {
  return ((c & 0xFF) << 16) | (c & 0xFF00) | ((c >> 16) & 0xFF);
}

}  // namespace

Screen ScreenMetrics() {
  HDC screen = GetDC(nullptr);
  int dpi_x = GetDeviceCaps(screen, LOGPIXELSX);
  int dpi_y = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  if (dpi_x <= 0) dpi_x = 96;
  if (dpi_y <= 0) dpi_y = 96;
  Screen s;
  s.TwipsPerPixelX = 1440.0f / static_cast<float>(dpi_x);
  s.TwipsPerPixelY = 1440.0f / static_cast<float>(dpi_y);
  s.Width =
      static_cast<float>(GetSystemMetrics(SM_CXSCREEN)) * s.TwipsPerPixelX;
  s.Height =
      static_cast<float>(GetSystemMetrics(SM_CYSCREEN)) * s.TwipsPerPixelY;
  return s;
}

std::vector<PixelRect> RegionRects(Hrgn region) {
  std::vector<PixelRect> out;
  DWORD size = GetRegionData(ToHrgn(region), 0, nullptr);
  if (size < sizeof(RGNDATAHEADER)) return out;
  std::vector<std::uint8_t> buffer(size);
  auto* data = reinterpret_cast<RGNDATA*>(buffer.data());
  if (GetRegionData(ToHrgn(region), size, data) == 0) return out;
  DWORD count = data->rdh.nCount;
  if (sizeof(RGNDATAHEADER) + count * sizeof(RECT) > size) return out;
  const RECT* rects = reinterpret_cast<const RECT*>(data->Buffer);
  for (DWORD i = 0; i < count; ++i) {
    out.push_back(
        {static_cast<int>(rects[i].left), static_cast<int>(rects[i].top),
         static_cast<int>(rects[i].right), static_cast<int>(rects[i].bottom)});
  }
  return out;
}

// ---- the picture box ----

struct Win32PictureBox::Attached {
  HWND form = nullptr;
  WNDPROC original = nullptr;
  Win32PictureBox* box = nullptr;
  MouseMoveHandler mouse_move;
};

namespace {

LRESULT CALLBACK PictureFormProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
  auto* a = reinterpret_cast<Win32PictureBox::Attached*>(
      GetPropA(hwnd, kPictureProp));
  if (!a) return DefWindowProcA(hwnd, msg, w, l);
  WNDPROC original = a->original;
  switch (msg) {
    case WM_ERASEBKGND: {
      RECT r;
      GetClientRect(hwnd, &r);
      HDC to = reinterpret_cast<HDC>(w);
      FillRect(to, &r, reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
      if (a->box->hDC()) {
        BitBlt(to, 0, 0, r.right, r.bottom, ToHdc(a->box->hDC()), 0, 0,
               SRCCOPY);
      }
      return 1;
    }
    case WM_LBUTTONDOWN:
      SetCapture(hwnd);
      return 0;
    case WM_LBUTTONUP:
      if (GetCapture() == hwnd) ReleaseCapture();
      return 0;
    case WM_MOUSEMOVE: {
      if (!a->mouse_move) break;
      std::int16_t button = 0, shift = 0;
      if (w & MK_LBUTTON) button |= 1;
      if (w & MK_RBUTTON) button |= 2;
      if (w & MK_MBUTTON) button |= 4;
      if (w & MK_SHIFT) shift |= 1;
      if (w & MK_CONTROL) shift |= 2;
      if (GetKeyState(VK_MENU) < 0) shift |= 4;
      Screen s = ScreenMetrics();
      float x = static_cast<float>(static_cast<std::int16_t>(LOWORD(l)));
      float y = static_cast<float>(static_cast<std::int16_t>(HIWORD(l)));
      auto handler = a->mouse_move;  // the handler may move the window
      handler(button, shift, x * s.TwipsPerPixelX, y * s.TwipsPerPixelY);
      return 0;
    }
    default:
      break;
  }
  return CallWindowProcA(original, hwnd, msg, w, l);
}

}  // namespace

Win32PictureBox::Win32PictureBox(const Pixels& picture) {
  Screen s = ScreenMetrics();
  width_twips_ = static_cast<float>(picture.width) * s.TwipsPerPixelX;
  height_twips_ = static_cast<float>(picture.height) * s.TwipsPerPixelY;
  box_w_ = picture.width;
  box_h_ = picture.height;
  Make(picture, picture.At(0, 0));
}

Win32PictureBox::Win32PictureBox(const Pixels& picture, float width_twips,
                                 float height_twips, ColorRef back)
    : width_twips_(width_twips), height_twips_(height_twips) {
  Screen s = ScreenMetrics();
  box_w_ = std::clamp(PixelsFromTwips(width_twips, s.TwipsPerPixelX), 0,
                      kMaxPictureSide);
  box_h_ = std::clamp(PixelsFromTwips(height_twips, s.TwipsPerPixelY), 0,
                      kMaxPictureSide);
  Make(picture, back);
}

void Win32PictureBox::Make(const Pixels& picture, ColorRef back) {
  if (box_w_ <= 0 || box_h_ <= 0) return;
  void* bits = nullptr;
  HBITMAP bitmap = MakePixelBitmap(box_w_, box_h_, bits);
  if (!bitmap) return;
  HDC dc = CreateCompatibleDC(nullptr);
  if (!dc) {
    ::DeleteObject(bitmap);
    return;
  }
  bits_ = static_cast<std::uint32_t*>(bits);
  for (int y = 0; y < box_h_; ++y) {
    std::uint32_t* row = bits_ + static_cast<std::size_t>(y) * box_w_;
    for (int x = 0; x < box_w_; ++x) {
      ColorRef c =
          x < picture.width && y < picture.height ? picture.At(x, y) : back;
      row[x] = ToDib(c);
    }
  }
  old_ = reinterpret_cast<std::uintptr_t>(SelectObject(dc, bitmap));
  dc_ = reinterpret_cast<std::uintptr_t>(dc);
  bitmap_ = reinterpret_cast<std::uintptr_t>(bitmap);
}

Win32PictureBox::~Win32PictureBox() {
  if (attached_) {
    if (IsWindow(attached_->form) &&
        GetPropA(attached_->form, kPictureProp) == attached_) {
      SetWindowLongPtrA(attached_->form, GWLP_WNDPROC,
                        reinterpret_cast<LONG_PTR>(attached_->original));
      RemovePropA(attached_->form, kPictureProp);
    }
    delete attached_;
  }
  if (dc_) {
    SelectObject(ToHdc(dc_), reinterpret_cast<HGDIOBJ>(old_));
    DeleteDC(ToHdc(dc_));
  }
  if (bitmap_) ::DeleteObject(reinterpret_cast<HGDIOBJ>(bitmap_));
}

ColorRef Win32PictureBox::GetPixel(int x, int y) {
  if (!dc_) return kClrInvalid;
  return ::GetPixel(ToHdc(dc_), x, y);
}

void Win32PictureBox::GetPixelRow(int y, int x, int count, ColorRef* out) {
  if (!bits_ || y < 0 || y >= box_h_) {
    std::fill(out, out + std::max(count, 0), kClrInvalid);
    return;
  }
  GdiFlush();  // drawing into the bitmap is done before its memory is read
  const std::uint32_t* row = bits_ + static_cast<std::size_t>(y) * box_w_;
  for (int i = 0; i < count; ++i) {
    int at = x + i;
    out[i] = at >= 0 && at < box_w_ ? FromDib(row[at]) : kClrInvalid;
  }
}

void Win32PictureBox::AttachTo(Hwnd form, MouseMoveHandler MouseMove) {
  HWND h = ToHwnd(form);
  if (attached_ || !IsWindow(h)) return;
  attached_ = new Attached{h, nullptr, this, std::move(MouseMove)};
  SetPropA(h, kPictureProp, attached_);
  attached_->original = reinterpret_cast<WNDPROC>(SetWindowLongPtrA(
      h, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&PictureFormProc)));
  InvalidateRect(h, nullptr, TRUE);
}

// ---- regions ----

Hrgn Win32Regions::CreateRectRgn(int left, int top, int right, int bottom) {
  return FromHrgn(::CreateRectRgn(left, top, right, bottom));
}

int Win32Regions::CombineRgn(Hrgn dest, Hrgn a, Hrgn b, int mode) {
  return ::CombineRgn(ToHrgn(dest), ToHrgn(a), ToHrgn(b), mode);
}

bool Win32Regions::DeleteObject(Hrgn region) {
  return region != 0 && ::DeleteObject(ToHrgn(region)) != 0;
}

int Win32Regions::SetWindowRgn(Hwnd window, Hrgn region, bool redraw) {
  return ::SetWindowRgn(ToHwnd(window), ToHrgn(region), redraw ? TRUE : FALSE);
}

RegionBands Win32Regions::RegionOf(Hrgn region) {
  return RegionBands::FromRects(RegionRects(region));
}

bool Win32Regions::WindowRegionOf(Hwnd window, RegionBands& out) {
  HRGN copy = ::CreateRectRgn(0, 0, 0, 0);
  int kind = GetWindowRgn(ToHwnd(window), copy);
  if (kind != ERROR) out = RegionOf(FromHrgn(copy));
  ::DeleteObject(copy);
  return kind != ERROR;
}

// ---- the window ----

Win32ShapedWindow::Rect Win32ShapedWindow::Get() {
  RECT r{};
  if (!GetWindowRect(ToHwnd(h_), &r)) return {};
  return {static_cast<int>(r.left), static_cast<int>(r.top),
          static_cast<int>(r.right - r.left),
          static_cast<int>(r.bottom - r.top)};
}

void Win32ShapedWindow::Set(const Rect& r, bool move) {
  ::SetWindowPos(
      ToHwnd(h_), nullptr, r.x, r.y, r.cx, r.cy,
      SWP_NOZORDER | SWP_NOACTIVATE | (move ? SWP_NOSIZE : SWP_NOMOVE));
}

float Win32ShapedWindow::Left() {
  return static_cast<float>(Get().x) * screen().TwipsPerPixelX;
}
float Win32ShapedWindow::Top() {
  return static_cast<float>(Get().y) * screen().TwipsPerPixelY;
}
float Win32ShapedWindow::Width() {
  return static_cast<float>(Get().cx) * screen().TwipsPerPixelX;
}
float Win32ShapedWindow::Height() {
  return static_cast<float>(Get().cy) * screen().TwipsPerPixelY;
}

void Win32ShapedWindow::SetLeft(float twips) {
  Rect r = Get();
  r.x = PixelsFromTwips(twips, screen().TwipsPerPixelX);
  Set(r, true);
}
void Win32ShapedWindow::SetTop(float twips) {
  Rect r = Get();
  r.y = PixelsFromTwips(twips, screen().TwipsPerPixelY);
  Set(r, true);
}
void Win32ShapedWindow::SetWidth(float twips) {
  Rect r = Get();
  r.cx = PixelsFromTwips(twips, screen().TwipsPerPixelX);
  Set(r, false);
}
void Win32ShapedWindow::SetHeight(float twips) {
  Rect r = Get();
  r.cy = PixelsFromTwips(twips, screen().TwipsPerPixelY);
  Set(r, false);
}

}  // namespace v2::win32
