#pragma once
// How long an MP3 file plays, counted from its own frames: the Windows media
// control's length. The system's decoder only guesses a length where the
// file has no frame count of its own (from the bit rate and the size, so
// that a tag it does not know, such as Lyrics3, counts as sound), and each
// version of it guesses its own way; the count gives every Windows what the
// simulator's reader, libmpg123, gives.
#include <string>
#include <string_view>

namespace v2 {

// Seconds of audio in the bytes of an MP3 file; 0 when they hold none. The
// frames from the first one behind an ID3v2 tag are counted, tags and other
// bytes between them passed over; a LAME tag's frame is no audio, and the
// encoder's delay and padding it records are taken off.
double Mp3FrameSeconds(std::string_view bytes);
// The same for a file by its name on this system; 0 when it cannot be read.
double Mp3FrameSecondsOfFile(const std::string& native_path);

}  // namespace v2
