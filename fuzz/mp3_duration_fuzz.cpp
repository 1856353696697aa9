// Fuzz target: the length of an MP3 file as the simulator's media control
// reads it (libmpg123 counting frames) from bytes that come from anywhere.
// It must end, and give a length that the bytes can hold.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/fuzz_check.h"
#include "platform/sim/mp3_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const double seconds = v2::sim::Mp3Duration(bytes);
  V2_FUZZ_CHECK(std::isfinite(seconds) && seconds >= 0,
                "a length is a number of seconds");
  // The smallest frame of any MPEG audio (layer III, 8 kbit/s at 8 kHz) is
  // 26 bytes for 72 ms: a length far past that is taken from a header's
  // word instead of the frames there are.
  V2_FUZZ_CHECK(seconds <= static_cast<double>(size) * 0.01 + 1,
                "the length is that of the frames there are");
  V2_FUZZ_CHECK(v2::sim::Mp3Duration(bytes) == seconds,
                "reading is repeatable");
  return 0;
}
