#include "platform/sim/mp3_reader.h"

#include <mpg123.h>
#include <sys/types.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace v2::sim {
namespace {

// The bytes, read by libmpg123 through its reader callbacks.
struct Memory {
  std::string_view bytes;
  off_t at = 0;
};

ssize_t ReadMemory(void* handle, void* buffer, size_t count) {
  auto* m = static_cast<Memory*>(handle);
  auto left = static_cast<off_t>(m->bytes.size()) - m->at;
  auto n = static_cast<size_t>(
      std::max<off_t>(0, std::min<off_t>(left, static_cast<off_t>(count))));
  std::memcpy(buffer, m->bytes.data() + m->at, n);
  m->at += static_cast<off_t>(n);
  return static_cast<ssize_t>(n);
}

off_t SeekMemory(void* handle, off_t offset, int whence) {
  auto* m = static_cast<Memory*>(handle);
  off_t base = whence == SEEK_SET   ? 0
               : whence == SEEK_CUR ? m->at
                                    : static_cast<off_t>(m->bytes.size());
  off_t to = base + offset;
  if (to < 0 || to > static_cast<off_t>(m->bytes.size())) return -1;
  m->at = to;
  return to;
}

struct Handle {
  Handle() {
    // Safe to call more than once; the library needs it before its first
    // handle in older versions.
    mpg123_init();
    h = mpg123_new(nullptr, nullptr);
  }
  ~Handle() {
    if (h) {
      mpg123_close(h);
      mpg123_delete(h);
    }
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  mpg123_handle* h = nullptr;
};

}  // namespace

double Mp3Duration(std::string_view bytes) {
  Handle handle;
  mpg123_handle* h = handle.h;
  if (!h) return 0;
  mpg123_param(h, MPG123_ADD_FLAGS, MPG123_QUIET, 0);
  Memory memory{bytes};
  if (mpg123_replace_reader_handle(h, ReadMemory, SeekMemory, nullptr) !=
          MPG123_OK ||
      mpg123_open_handle(h, &memory) != MPG123_OK) {
    return 0;
  }
  // A full scan counts the frames instead of guessing from the bit rate.
  if (mpg123_scan(h) != MPG123_OK) return 0;
  off_t samples = mpg123_length(h);
  long rate = 0;
  int channels = 0, encoding = 0;
  if (samples <= 0 ||
      mpg123_getformat(h, &rate, &channels, &encoding) != MPG123_OK ||
      rate <= 0) {
    return 0;
  }
  return static_cast<double>(samples) / static_cast<double>(rate);
}

double Mp3DurationOfFile(const std::string& native_path) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(native_path, ec)) return 0;
  std::ifstream in(native_path, std::ios::binary);
  std::ostringstream bytes;
  if (!in || !(bytes << in.rdbuf())) return 0;
  return Mp3Duration(bytes.str());
}

}  // namespace v2::sim
