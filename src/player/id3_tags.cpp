#include "player/id3_tags.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>

#include "platform/text.h"

namespace v2 {
namespace {

std::uint32_t Byte(std::string_view s, std::size_t i) {
  return static_cast<unsigned char>(s[i]);
}

// Four bytes of seven bits each (the "synchsafe" integers of ID3v2).
std::uint32_t SyncSafe(std::string_view s, std::size_t at) {
  return Byte(s, at) << 21 | Byte(s, at + 1) << 14 | Byte(s, at + 2) << 7 |
         Byte(s, at + 3);
}

std::uint32_t BigEndian(std::string_view s, std::size_t at, int n) {
  std::uint32_t v = 0;
  for (int i = 0; i < n; ++i)
    v = v << 8 | Byte(s, at + static_cast<std::size_t>(i));
  return v;
}

// Undoes the unsynchronisation that keeps a tag from looking like the start
// of an audio frame: every 0xFF 0x00 was 0xFF.
std::string Resync(std::string_view s) {
  std::string out;
  out.reserve(s.size());
  for (std::size_t i = 0; i < s.size(); ++i) {
    out += s[i];
    if (Byte(s, i) == 0xFF && i + 1 < s.size() && s[i + 1] == '\0') ++i;
  }
  return out;
}

// One text of an ID3v2 frame in its encoding (0 Latin-1, 1 UTF-16 with a
// byte order mark, 2 UTF-16 big-endian, 3 UTF-8), up to its terminator;
// what follows the terminator is left in rest.
std::string TakeText(int encoding, std::string_view& rest) {
  const bool wide = encoding == 1 || encoding == 2;
  std::size_t end = 0;
  if (wide) {
    while (end + 1 < rest.size() &&
           (rest[end] != '\0' || rest[end + 1] != '\0'))
      end += 2;
    if (end + 1 >= rest.size()) end = rest.size();
  } else {
    end = std::min(rest.find('\0'), rest.size());
  }
  std::string_view text = rest.substr(0, end);
  rest.remove_prefix(std::min(rest.size(), end + (wide ? 2 : 1)));

  if (encoding == 0) return std::string(text);  // Latin-1 is Windows-1252 here
  if (encoding == 3) return Utf8ToCp1252(text);
  if (!wide) return {};
  bool little = false;
  if (text.size() >= 2 && Byte(text, 0) == 0xFF && Byte(text, 1) == 0xFE) {
    little = true;
    text.remove_prefix(2);
  } else if (text.size() >= 2 && Byte(text, 0) == 0xFE &&
             Byte(text, 1) == 0xFF) {
    text.remove_prefix(2);
  }
  std::string utf8;
  for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
    std::uint32_t u = little ? Byte(text, i) | Byte(text, i + 1) << 8
                             : Byte(text, i) << 8 | Byte(text, i + 1);
    if (u >= 0xD800 && u < 0xDC00 && i + 3 < text.size()) {
      std::uint32_t low = little ? Byte(text, i + 2) | Byte(text, i + 3) << 8
                                 : Byte(text, i + 2) << 8 | Byte(text, i + 3);
      if (low >= 0xDC00 && low < 0xE000) {
        u = 0x10000 + ((u - 0xD800) << 10) + (low - 0xDC00);
        i += 2;
      }
    }
    AppendUtf8(utf8, u);
  }
  return Utf8ToCp1252(utf8);
}

// A text frame's first value.
std::string FrameText(std::string_view data) {
  if (data.empty()) return {};
  int encoding = static_cast<unsigned char>(data[0]);
  data.remove_prefix(1);
  return TakeText(encoding, data);
}

// A comment frame: encoding, language, a short description, the text.
// Sets comment and whether the description was empty.
bool CommentText(std::string_view data, std::string& comment) {
  if (data.size() < 4) return false;
  int encoding = static_cast<unsigned char>(data[0]);
  data.remove_prefix(4);
  bool plain = TakeText(encoding, data).empty();
  comment = TakeText(encoding, data);
  return plain;
}

struct Found {
  TrackTags tags;
  bool title = false, artist = false, album = false, year = false;
  bool comment = false, plain_comment = false;
};

void Take(Found& f, std::string_view id, std::string_view data) {
  auto text = [&](bool& seen, std::string& field) {
    if (seen) return;
    seen = true;
    field = FrameText(data);
  };
  if (id == "TIT2" || id == "TT2") {
    text(f.title, f.tags.title);
  } else if (id == "TPE1" || id == "TP1") {
    text(f.artist, f.tags.artist);
  } else if (id == "TALB" || id == "TAL") {
    text(f.album, f.tags.album);
  } else if (id == "TYER" || id == "TDRC" || id == "TYE") {
    text(f.year, f.tags.year);
  } else if ((id == "COMM" || id == "COM") && !f.plain_comment) {
    // The first comment without a description, else the first of all.
    std::string comment;
    bool plain = CommentText(data, comment);
    if (plain || !f.comment) f.tags.comment = comment;
    f.comment = true;
    f.plain_comment = plain;
  }
}

bool FrameIdChar(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// What the extended header takes at the start of body, when the tag's
// header says there is one. Some writers set that flag with no extended
// header behind it: the first frame follows at once. So, as other readers
// do, the header is believed only when its size reads as one it can have,
// ending within the tag: in 2.4 a synchsafe size that counts itself (at
// least 6) followed by the count of flag bytes, 1; in 2.3 a size that does
// not count itself, 6 or 10 (with a CRC). A frame id there reads as neither
// (its letters make a size far past any tag, or no synchsafe one at all),
// nor does padding, and then nothing is skipped.
std::size_t ExtendedHeaderLength(std::uint32_t version, std::string_view body) {
  if (body.size() < 6) return 0;
  if (version == 4) {
    for (std::size_t i = 0; i < 4; ++i) {
      if (Byte(body, i) & 0x80) return 0;
    }
    const std::size_t size = SyncSafe(body, 0);
    return size >= 6 && size <= body.size() && Byte(body, 4) == 1 ? size : 0;
  }
  const std::size_t size = BigEndian(body, 0, 4);
  return (size == 6 || size == 10) && size + 4 <= body.size() ? size + 4 : 0;
}

void SetIfEmpty(std::string& field, std::string_view value) {
  if (!field.empty()) return;
  value = value.substr(0, std::min(value.find('\0'), value.size()));
  while (!value.empty() && value.back() == ' ') value.remove_suffix(1);
  field = value;
}

}  // namespace

std::size_t Id3v2Length(std::string_view head) {
  if (head.size() < kId3HeaderBytes || head.substr(0, 3) != "ID3") return 0;
  if (Byte(head, 3) == 0xFF || Byte(head, 4) == 0xFF) return 0;
  for (std::size_t i = 6; i < 10; ++i) {
    if (Byte(head, i) & 0x80) return 0;
  }
  std::size_t length = kId3HeaderBytes + SyncSafe(head, 6);
  if (Byte(head, 3) == 4 && (Byte(head, 5) & 0x10)) length += 10;  // footer
  return length;
}

void ReadId3v2(std::string_view bytes, TrackTags& tags) {
  if (Id3v2Length(bytes) == 0) return;
  const std::uint32_t version = Byte(bytes, 3);
  const std::uint32_t flags = Byte(bytes, 5);
  if (version < 2 || version > 4) return;
  if (version == 2 && (flags & 0x40)) return;  // compressed: unreadable
  std::string_view body =
      bytes.substr(kId3HeaderBytes, SyncSafe(bytes, 6));  // cut to the file
  std::string whole;
  if (version < 4 && (flags & 0x80)) {
    whole = Resync(body);
    body = whole;
  }
  if (version >= 3 && (flags & 0x40)) {
    body.remove_prefix(ExtendedHeaderLength(version, body));
  }

  Found found;
  const std::size_t id_len = version == 2 ? 3 : 4;
  const std::size_t header = version == 2 ? 6 : 10;
  while (body.size() >= header) {
    std::string_view id = body.substr(0, id_len);
    if (!std::all_of(id.begin(), id.end(), FrameIdChar)) break;  // padding
    std::size_t size = version == 2   ? BigEndian(body, 3, 3)
                       : version == 3 ? BigEndian(body, 4, 4)
                                      : SyncSafe(body, 4);
    const std::uint32_t format = version == 2 ? 0 : Byte(body, 9);
    std::string_view data = body.substr(header, size);
    body.remove_prefix(std::min(body.size(), header + size));

    std::string resynced;
    if (version == 3) {
      if (format & 0xC0) continue;  // compressed or encrypted
      if (format & 0x20)
        data.remove_prefix(std::min<std::size_t>(1, data.size()));
    } else if (version == 4) {
      if (format & 0x0C) continue;  // compressed or encrypted
      if (format & 0x40)
        data.remove_prefix(std::min<std::size_t>(1, data.size()));
      if ((format & 0x02) || (flags & 0x80)) {
        resynced = Resync(data);
        data = resynced;
      }
      if (format & 0x01)
        data.remove_prefix(std::min<std::size_t>(4, data.size()));
    }
    Take(found, id, data);
  }
  auto keep = [](bool seen, std::string& field, std::string& value) {
    if (seen) field = std::move(value);
  };
  keep(found.title, tags.title, found.tags.title);
  keep(found.artist, tags.artist, found.tags.artist);
  keep(found.album, tags.album, found.tags.album);
  keep(found.year, tags.year, found.tags.year);
  keep(found.comment, tags.comment, found.tags.comment);
}

void ReadId3v1(std::string_view tail, TrackTags& tags) {
  if (tail.size() < 128) return;
  std::string_view tag = tail.substr(tail.size() - 128);
  if (tag.substr(0, 3) != "TAG") return;
  SetIfEmpty(tags.title, tag.substr(3, 30));
  SetIfEmpty(tags.artist, tag.substr(33, 30));
  SetIfEmpty(tags.album, tag.substr(63, 30));
  SetIfEmpty(tags.year, tag.substr(93, 4));
  // ID3v1.1 keeps a track number in the comment's last byte, behind a 0.
  std::string_view comment = tag.substr(97, 30);
  if (comment[28] == '\0' && comment[29] != '\0')
    comment = comment.substr(0, 28);
  SetIfEmpty(tags.comment, comment);
}

namespace {

TrackTags ReadTagsOfStream(const std::string& native_path) {
  // C's files, as the reason list's: no locales come with them.
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
      std::fopen(native_path.c_str(), "rb"), &std::fclose);
  if (!file) return {};
  std::FILE* in = file.get();
  std::string start(kId3HeaderBytes, '\0');
  start.resize(std::fread(start.data(), 1, start.size(), in));
  if (std::size_t length = Id3v2Length(start)) {
    start.resize(std::min(length, kMaxTagBytes));
    const std::size_t got = std::fread(start.data() + kId3HeaderBytes, 1,
                                       start.size() - kId3HeaderBytes, in);
    start.resize(kId3HeaderBytes + got);
  }
  std::string tail;
  if (std::fseek(in, -128, SEEK_END) == 0) {
    tail.resize(128);
    if (std::fread(tail.data(), 1, 128, in) != 128) tail.clear();
  }
  return TagsOf(start, tail);
}

}  // namespace

TrackTags TagsOf(std::string_view start, std::string_view tail) {
  TrackTags tags;
  ReadId3v2(start, tags);
  TrackTags v1;
  ReadId3v1(tail, v1);
  auto fill = [](std::string& field, const std::string& from) {
    if (field.empty()) field = from;
  };
  fill(tags.title, v1.title);
  fill(tags.artist, v1.artist);
  fill(tags.album, v1.album);
  fill(tags.year, v1.year);
  fill(tags.comment, v1.comment);
  return tags;
}

TrackTags ReadTrackTags(const std::string& native_path) {
  // A folder, or a file that goes away while it is read, has no tags.
  try {
    return ReadTagsOfStream(native_path);
  } catch (const std::exception&) {
    return {};
  }
}

}  // namespace v2
