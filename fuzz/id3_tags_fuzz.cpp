// Fuzz target: the tags of an MP3 file, which come from anywhere. The same
// bytes stand for the file's start (an ID3v2 tag) and its end (ID3v1).
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/fuzz_check.h"
#include "player/id3_tags.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const v2::TrackTags tags = v2::TagsOf(bytes, bytes);

  // Only the tag's own bytes are read: a field is never longer than the
  // tag that holds it, in its longest form (UTF-16 of a character of the
  // program's code page takes at least one byte, UTF-8 at most three of
  // them make one "?").
  const std::size_t v2 = v2::Id3v2Length(bytes);
  const std::size_t most = std::max<std::size_t>(v2, 128);
  for (const std::string* field :
       {&tags.title, &tags.artist, &tags.album, &tags.year, &tags.comment}) {
    V2_FUZZ_CHECK(field->size() <= most, "a field fits in its tag");
  }
  // With no tag at either end there is nothing.
  if (v2 == 0 && (size < 128 || bytes.compare(size - 128, 3, "TAG") != 0)) {
    V2_FUZZ_CHECK(tags == v2::TrackTags{}, "no tag, no fields");
  }
  // The same bytes read the same way twice.
  V2_FUZZ_CHECK(v2::TagsOf(bytes, bytes) == tags, "reading is repeatable");
  return 0;
}
