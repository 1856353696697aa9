#pragma once
// How long an MP3 file plays, read from its frames by libmpg123: every frame
// is counted (not estimated from the bit rate), and the encoder's delay and
// padding that a LAME tag records are taken off, so a file made to last
// 59.5 s reads 59.5.
#include <string>
#include <string_view>

namespace v2::sim {

// Seconds of audio in the bytes of an MP3 file; 0 when they hold none.
double Mp3Duration(std::string_view bytes);
// The same for a file (by its native name); 0 when it cannot be read.
double Mp3DurationOfFile(const std::string& native_path);

}  // namespace v2::sim
