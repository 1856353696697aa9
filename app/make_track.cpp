// make-track: the MP3 files a scenario script asks for at its top (its
// `tags` and `track` lines before any other command but `answer`), made in
// a directory, as the in-process runner makes them before the program
// starts. The Wine runs use it, since aolhost.exe has no encoder.
//
//   make-track [--cd] SCRIPT DIR
//
// --cd makes them as a member's music is (44.1 kHz stereo), for measuring
// what playing costs.
#include <fstream>
#include <iostream>
#include <string>

#include "app/script.h"
#include "app/track_file.h"

int main(int argc, char** argv) {
  v2::TrackFormat format;
  if (argc == 4 && std::string(argv[1]) == "--cd") {
    format = v2::kCdTrack;
    ++argv;
    --argc;
  }
  if (argc != 3) {
    std::cerr << "usage: make-track [--cd] SCRIPT DIR\n";
    return 2;
  }
  std::ifstream script(argv[1], std::ios::binary);
  if (!script) {
    std::cerr << "make-track: cannot open " << argv[1] << "\n";
    return 2;
  }
  const std::string dir = argv[2];
  v2::TrackTagging tags;
  using Kind = v2::ScriptCommand::Kind;
  for (std::string line; std::getline(script, line);) {
    v2::ScriptCommand c = v2::ParseScriptLine(line);
    if (c.kind == Kind::kTags) {
      tags = v2::ParseTrackTags(c.text);
    } else if (c.kind == Kind::kTrack) {
      std::string error;
      if (!v2::WriteTrack(dir + "/" + c.object, c.seconds, tags, error,
                          format)) {
        std::cerr << "make-track: " << c.object << ": " << error << "\n";
        return 1;
      }
    } else if (c.kind != Kind::kNothing && c.kind != Kind::kAnswer &&
               c.kind != Kind::kHold && c.kind != Kind::kStore) {
      break;
    }
  }
  return 0;
}
