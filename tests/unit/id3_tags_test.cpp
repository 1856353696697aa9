// The tag reader of both backends, held against libmpg123's own reading of
// the same files: files tagged by the encoder, and tags of each version and
// encoding put together by hand in front of real audio.
#include "player/id3_tags.h"

#include <gtest/gtest.h>
#include <mpg123.h>

#include "app/track_file.h"
#include "platform/text.h"
#include "tests/unit/temp_files.h"

namespace v2 {

void PrintTo(const TrackTags& t, std::ostream* os) {
  *os << "{" << Cp1252ToUtf8(t.title) << "|" << Cp1252ToUtf8(t.artist) << "|"
      << Cp1252ToUtf8(t.album) << "|" << Cp1252ToUtf8(t.year) << "|"
      << Cp1252ToUtf8(t.comment) << "}";
}

namespace {

using testing::ReadAll;
using testing::TempDir;
using testing::WriteAll;

// What libmpg123 reads: the v2 fields it has, else the v1 ones.
TrackTags Mpg123Tags(const std::string& path) {
  mpg123_init();
  mpg123_handle* h = mpg123_new(nullptr, nullptr);
  mpg123_param(h, MPG123_ADD_FLAGS, MPG123_QUIET, 0);
  TrackTags tags;
  if (mpg123_open(h, path.c_str()) == MPG123_OK &&
      mpg123_scan(h) == MPG123_OK) {
    mpg123_id3v1* v1 = nullptr;
    mpg123_id3v2* v2 = nullptr;
    mpg123_id3(h, &v1, &v2);
    auto text = [](mpg123_string* s) {
      return s && s->fill ? Utf8ToCp1252(std::string(s->p)) : std::string();
    };
    auto raw = [](const char* field, std::size_t n) {
      std::string s(field, strnlen(field, n));
      while (!s.empty() && s.back() == ' ') s.pop_back();
      return s;
    };
    if (v2) {
      tags = {text(v2->title), text(v2->artist), text(v2->album),
              text(v2->year), text(v2->comment)};
    }
    if (v1) {
      if (tags.title.empty()) tags.title = raw(v1->title, 30);
      if (tags.artist.empty()) tags.artist = raw(v1->artist, 30);
      if (tags.album.empty()) tags.album = raw(v1->album, 30);
      if (tags.year.empty()) tags.year = raw(v1->year, 4);
      if (tags.comment.empty()) tags.comment = raw(v1->comment, 28);
    }
  }
  mpg123_close(h);
  mpg123_delete(h);
  return tags;
}

std::string SyncSafe(std::size_t n) {
  return {static_cast<char>((n >> 21) & 0x7F),
          static_cast<char>((n >> 14) & 0x7F),
          static_cast<char>((n >> 7) & 0x7F), static_cast<char>(n & 0x7F)};
}

std::string BigEndian(std::size_t n, int bytes) {
  std::string out;
  for (int i = bytes - 1; i >= 0; --i)
    out += static_cast<char>((n >> (8 * i)) & 0xFF);
  return out;
}

std::string Frame(int version, const std::string& id, const std::string& data,
                  char format = 0) {
  if (version == 2) return id + BigEndian(data.size(), 3) + data;
  return id +
         (version == 3 ? BigEndian(data.size(), 4) : SyncSafe(data.size())) +
         std::string(1, '\0') + std::string(1, format) + data;
}

std::string Tag(int version, const std::string& frames, char flags = 0,
                std::size_t padding = 16) {
  std::string body = frames + std::string(padding, '\0');
  return std::string("ID3") + static_cast<char>(version) + '\0' + flags +
         SyncSafe(body.size()) + body;
}

std::string Latin1(const std::string& s) { return '\0' + s; }
std::string Utf16(const std::u16string& s) {
  std::string out = "\x01\xFF\xFE";
  for (char16_t c : s) {
    out += static_cast<char>(c & 0xFF);
    out += static_cast<char>(c >> 8);
  }
  return out;
}
std::string Comment(const std::string& text) {
  return std::string("\0eng\0", 5) + text;
}

class Id3Tags : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string error;
    ASSERT_TRUE(WriteTrack(dir.File("plain.mp3"), 1, {}, error)) << error;
    audio = ReadAll(dir.File("plain.mp3"));
  }
  // The tag in front of the audio, read by both readers. libmpg123 takes
  // the year of version 2.4 (TDRC, the recording time) for no year; ours
  // does, as the version defines no other.
  void ExpectBothRead(const std::string& tag, const TrackTags& want,
                      bool mpg123_without_year = false) {
    const std::string path = dir.File("tagged.mp3");
    WriteAll(path, tag + audio);
    EXPECT_EQ(ReadTrackTags(path), want);
    TrackTags theirs = want;
    if (mpg123_without_year) theirs.year.clear();
    EXPECT_EQ(Mpg123Tags(path), theirs);
  }
  TempDir dir;
  std::string audio;
};

TEST_F(Id3Tags, TheEncodersTagsReadAsLibmpg123ReadsThem) {
  const TrackTags want{"A Title", "An Artist", "Greatest Hits", "1999",
                       "a comment"};
  std::string error;
  ASSERT_TRUE(WriteTrack(dir.File("t.mp3"), 2, want, error)) << error;
  EXPECT_EQ(ReadTrackTags(dir.File("t.mp3")), want);
  EXPECT_EQ(Mpg123Tags(dir.File("t.mp3")), want);

  // Its ID3v1 tag alone (the ID3v2 one cut off) says the same.
  std::string bytes = ReadAll(dir.File("t.mp3"));
  std::size_t v2 = Id3v2Length(bytes);
  ASSERT_GT(v2, 0u);
  WriteAll(dir.File("v1.mp3"), bytes.substr(v2));
  EXPECT_EQ(ReadTrackTags(dir.File("v1.mp3")), want);
  EXPECT_EQ(Mpg123Tags(dir.File("v1.mp3")), want);

  // A file without tags, a missing file and a folder have none.
  EXPECT_EQ(ReadTrackTags(dir.File("plain.mp3")), TrackTags{});
  EXPECT_EQ(ReadTrackTags(dir.File("missing.mp3")), TrackTags{});
  EXPECT_EQ(ReadTrackTags(dir.path.string()), TrackTags{});
}

TEST_F(Id3Tags, EveryVersionAndEncodingOfID3v2) {
  // 2.3, Latin-1, with a comment that has a description before the plain
  // one: the plain one counts.
  ExpectBothRead(Tag(3, Frame(3, "TIT2", Latin1("Caf\xE9")) +
                            Frame(3, "TPE1", Latin1("Band")) +
                            Frame(3, "COMM",
                                  std::string("\0eng", 4) + "desc" +
                                      std::string(1, '\0') + "described") +
                            Frame(3, "COMM", Comment("plain")) +
                            Frame(3, "TYER", Latin1("2001"))),
                 {"Caf\xE9", "Band", "", "2001", "plain"});
  // 2.4: UTF-16 with a byte order mark, UTF-8, the year of TDRC.
  ExpectBothRead(Tag(4, Frame(4, "TIT2", Utf16(u"\u00FCber \u20AC")) +
                            Frame(4, "TALB", "\x03\xC3\xA9t\xC3\xA9") +
                            Frame(4, "TDRC", Latin1("1987"))),
                 {"\xFC"
                  "ber \x80",
                  "", "\xE9t\xE9", "1987", ""},
                 /*mpg123_without_year=*/true);
  // 2.2: three-letter frames.
  ExpectBothRead(
      Tag(2, Frame(2, "TT2", Latin1("Old")) + Frame(2, "TP1", Latin1("Timer")) +
                 Frame(2, "COM", Comment("c"))),
      {"Old", "Timer", "", "", "c"});
  // 2.3 unsynchronised as a whole: 0xFF 0x00 stands for 0xFF.
  ExpectBothRead(
      Tag(3, Frame(3, "TALB", Latin1(std::string("y\xFF\0z", 4))), '\x80'),
      {"", "", "y\xFFz", "", ""});
}

TEST_F(Id3Tags, ExtendedHeadersAreSkippedAndAFlagWithoutOneIsNot) {
  const std::string frames =
      Frame(4, "TIT2", Latin1("T")) + Frame(4, "TALB", Latin1("Album"));
  const TrackTags want{"T", "", "Album", "", ""};
  // 2.4: the size counts itself and is synchsafe; one flag byte. Bare, and
  // with a CRC (its flag, then five bytes behind a length byte).
  ExpectBothRead(Tag(4, SyncSafe(6) + "\x01" + '\0' + frames, '\x40'), want);
  ExpectBothRead(
      Tag(4, SyncSafe(12) + "\x01\x20\x05" + std::string(5, '\x7F') + frames,
          '\x40'),
      want);
  // 2.3: the size leaves itself out, 6 or 10 (with a CRC).
  const std::string frames3 =
      Frame(3, "TIT2", Latin1("T")) + Frame(3, "TALB", Latin1("Album"));
  ExpectBothRead(
      Tag(3, BigEndian(6, 4) + std::string(6, '\0') + frames3, '\x40'), want);
  ExpectBothRead(Tag(3,
                     BigEndian(10, 4) + "\x80" + std::string(5, '\0') +
                         "\x12\x34\x56\x78" + frames3,
                     '\x40'),
                 want);

  // The flag set and the first frame right behind the header, as some
  // writers leave it: the frames still count, in either version.
  const std::string path = dir.File("bare.mp3");
  WriteAll(path, Tag(4, frames, '\x40') + audio);
  EXPECT_EQ(ReadTrackTags(path), want);
  EXPECT_EQ(TagsOf(Tag(3, frames3, '\x40'), ""), want);
  // So made by the maker, with no ID3v1 tag to fall back on, and APEv2 and
  // Lyrics3v2 tags at the end that the reader leaves alone.
  TrackTagging odd = TrackTags{"Odd \xC9", "Band", "Odd Album", "2003", "n"};
  odd.bare_extended_flag = true;
  odd.id3v1 = false;
  odd.trailers = {TrackTagging::Trailer::kApe, TrackTagging::Trailer::kLyrics3};
  std::string error;
  ASSERT_TRUE(WriteTrack(path, 1, odd, error)) << error;
  const std::string bytes = ReadAll(path);
  ASSERT_EQ(bytes.substr(0, 6), std::string("ID3\x04\0\x40", 6));
  EXPECT_EQ(bytes.substr(10, 4), "TIT2");
  EXPECT_EQ(ReadTrackTags(path), odd.fields);
  // A flag with nothing but padding behind it, or an extended header whose
  // size runs past the tag, gives nothing, and reads nothing past the tag.
  EXPECT_EQ(TagsOf(Tag(4, "", '\x40'), ""), TrackTags{});
  EXPECT_EQ(
      TagsOf(Tag(4, SyncSafe(99) + "\x01" + '\0' + frames, '\x40', 0), ""),
      TrackTags{});
}

TEST(Id3TagsBytes, BrokenTagsGiveWhatTheyHaveAndNeverReadPastTheirEnd) {
  // A frame whose size runs past the tag is cut to what is there.
  std::string tag = Tag(3, Frame(3, "TIT2", Latin1("Whole")), 0, 0);
  std::string cut = tag.substr(0, tag.size() - 2);
  TrackTags got = TagsOf(cut, "");
  EXPECT_EQ(got.title, "Who");
  // Not a tag: a wrong version, a size byte over 0x7F, too short a head.
  EXPECT_EQ(Id3v2Length("ID3\xFF\0\0\0\0\0\x10"), 0u);
  EXPECT_EQ(Id3v2Length(std::string("ID3\3\0\0\0\0\x80\0", 10)), 0u);
  EXPECT_EQ(Id3v2Length("ID3"), 0u);
  // Size 5, and a footer of 10 behind the tag.
  EXPECT_EQ(Id3v2Length(std::string("ID3\4\0\x10\0\0\0\x05", 10)), 25u);
  // An ID3v1 tag with a track number keeps 28 characters of comment; blanks
  // and NULs at the ends of its fields go.
  std::string v1 = "TAG" + std::string("Song   ") + std::string(23, '\0') +
                   std::string(30, ' ') + std::string(30, '\0') + "2020" +
                   std::string("note") + std::string(24, '\0') + '\0' + '\x07' +
                   '\x0C';
  ASSERT_EQ(v1.size(), 128u);
  EXPECT_EQ(TagsOf("", v1), (TrackTags{"Song", "", "", "2020", "note"}));
  // An empty v2 title leaves the v1 one.
  EXPECT_EQ(TagsOf(Tag(3, Frame(3, "TIT2", Latin1(""))), v1).title, "Song");
}

}  // namespace
}  // namespace v2
