#include <algorithm>
#include <cstring>

#include "platform/platform.h"

namespace v2 {

int NoStores::GetPrivateProfileStringA(const char*, const char*,
                                       const char* def, char* buffer, int size,
                                       const char*) {
  if (!buffer || size <= 0) return 0;
  std::size_t n = std::min<std::size_t>(def ? std::strlen(def) : 0,
                                        static_cast<std::size_t>(size - 1));
  if (n) std::memcpy(buffer, def, n);
  buffer[n] = '\0';
  return static_cast<int>(n);
}

NoStores& NoStores::Instance() {
  static NoStores none;
  return none;
}

}  // namespace v2
