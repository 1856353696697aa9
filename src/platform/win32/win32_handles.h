#pragma once
// The platform's handles as the system's and back. Window, menu and region
// handles carry 32 bits on every Windows, 64-bit included; widened, they are
// sign-extended (HWND_TOPMOST is -1).
#include <windows.h>

#include <cstdint>

#include "platform/shaped.h"
#include "platform/types.h"

namespace v2::win32 {

inline HWND ToHwnd(Hwnd h) {
  return reinterpret_cast<HWND>(
      static_cast<INT_PTR>(static_cast<std::int32_t>(h)));
}
inline Hwnd FromHwnd(HWND h) {
  return static_cast<Hwnd>(reinterpret_cast<UINT_PTR>(h));
}
inline HMENU ToHmenu(Hmenu m) {
  return reinterpret_cast<HMENU>(
      static_cast<INT_PTR>(static_cast<std::int32_t>(m)));
}
inline Hmenu FromHmenu(HMENU m) {
  return static_cast<Hmenu>(reinterpret_cast<UINT_PTR>(m));
}
inline HRGN ToHrgn(Hrgn h) {
  return reinterpret_cast<HRGN>(
      static_cast<INT_PTR>(static_cast<std::int32_t>(h)));
}
inline Hrgn FromHrgn(HRGN h) {
  return static_cast<Hrgn>(reinterpret_cast<UINT_PTR>(h));
}

}  // namespace v2::win32
