// Fuzz target: the length of an MP3 file as both backends' media controls
// read it, from bytes that come from anywhere: the simulator's (libmpg123
// counting frames) and the Windows program's own count of the frames. Each
// must end, and give a length that the bytes can hold.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/fuzz_check.h"
#include "platform/mp3_frames.h"
#include "platform/sim/mp3_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  // The smallest frame of any MPEG audio holds a millisecond a byte at most
  // (layer III, 8 kbit/s at 8 kHz: 72 bytes for 72 ms): a length far past
  // that is taken from a header's word instead of the frames there are.
  const double most = static_cast<double>(size) * 0.01 + 1;
  for (double (*read)(std::string_view) :
       {&v2::sim::Mp3Duration, &v2::Mp3FrameSeconds}) {
    const double seconds = read(bytes);
    V2_FUZZ_CHECK(std::isfinite(seconds) && seconds >= 0,
                  "a length is a number of seconds");
    V2_FUZZ_CHECK(seconds <= most,
                  "the length is that of the frames there are");
    V2_FUZZ_CHECK(read(bytes) == seconds, "reading is repeatable");
  }
  return 0;
}
