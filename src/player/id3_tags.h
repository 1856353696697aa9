#pragma once
// The tags of an MP3 file: an ID3v2 tag (versions 2.2, 2.3 and 2.4) at its
// start and an ID3v1 tag in its last 128 bytes. Each field comes from the
// ID3v2 tag where that has it (and it is not empty), else from the ID3v1
// tag, else it is empty.
// Texts come in Windows-1252, the program's own; a character it cannot show
// becomes "?".
#include <cstddef>
#include <string>
#include <string_view>

namespace v2 {

struct TrackTags {
  std::string title, artist, album, year, comment;
  bool operator==(const TrackTags&) const = default;
};

// How much of a file's start a reader needs: the ID3v2 tag's own header
// tells; at most kMaxTagBytes are read.
inline constexpr std::size_t kId3HeaderBytes = 10;
inline constexpr std::size_t kMaxTagBytes = 16 * 1024 * 1024;
// The whole tag's length, header included, from the file's first ten
// bytes; 0 when the file does not begin with an ID3v2 tag.
std::size_t Id3v2Length(std::string_view head);

// The fields of the ID3v2 tag at the start of bytes (what it has of them)
// and of the ID3v1 tag that ends tail.
void ReadId3v2(std::string_view bytes, TrackTags& tags);
void ReadId3v1(std::string_view tail, TrackTags& tags);

// Both, v2 first: start holds the file's first bytes, tail its last ones
// (the whole file may stand for both).
TrackTags TagsOf(std::string_view start, std::string_view tail);
// The tags of the file at path, as the system names it; none for a file
// that cannot be read.
TrackTags ReadTrackTags(const std::string& native_path);

}  // namespace v2
