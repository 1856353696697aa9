// Fuzz target: the texts of the client's file transfer windows, which the
// client writes and the transfer monitors cut apart. The input is the title,
// the 1st and the 2nd _AOL_Static's text, separated by newlines.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_check.h"
#include "fuzz/fuzz_world.h"
#include "platform/text.h"
#include "transfers/transfer_monitors.h"

namespace {

bool Within(const std::string& part, std::string_view whole) {
  return whole.find(part) != std::string_view::npos;
}

bool EndsWith(std::string_view whole, const std::string& tail) {
  return whole.size() >= tail.size() &&
         whole.substr(whole.size() - tail.size()) == tail;
}

// IsNumeric against the C library's reading of the same characters.
void CheckNumeric(std::string_view s) {
  const bool numeric = v2::IsNumeric(s);
  std::string t(s);
  while (!t.empty() && (t.back() == ' ' || t.back() == '\t')) t.pop_back();
  std::size_t lead = t.find_first_not_of(" \t");
  t.erase(0, lead == std::string::npos ? t.size() : lead);
  if (t.find_first_not_of("0123456789+-.eEdD") != std::string::npos) {
    V2_FUZZ_CHECK(!numeric, "a number has no other characters");
    return;
  }
  for (char& c : t) {
    if (c == 'd' || c == 'D') c = 'e';
  }
  char* end = nullptr;
  std::strtod(t.c_str(), &end);
  const bool whole = !t.empty() && end == t.c_str() + t.size();
  V2_FUZZ_CHECK(numeric == whole, "a number is what strtod reads whole");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  const auto part = v2::fuzz::ThreeParts(input);
  const std::string_view title = part[0], first = part[1], second = part[2];

  const std::string down_name = v2::DownloadNameOf(first);
  V2_FUZZ_CHECK(EndsWith(first, down_name), "the name ends the 1st text");
  const std::string down_percent = v2::DownloadPercentOf(title);
  V2_FUZZ_CHECK(Within(down_percent, title), "the percentage is in the title");
  const std::string down_mins = v2::DownloadMinsOf(second);
  V2_FUZZ_CHECK(down_mins == "n/a" || (v2::IsNumeric(down_mins) &&
                                       Within(" " + down_mins + " ", second)),
                "download minutes are a word of the 2nd text, a number");

  const std::string up_name = v2::UploadNameOf(first);
  V2_FUZZ_CHECK(EndsWith(first, up_name), "the name ends the 1st text");
  const std::string up_percent = v2::UploadPercentOf(title);
  if (title.find(" - ") == std::string_view::npos) {
    V2_FUZZ_CHECK(up_percent.empty(), "no percentage without a dash");
  } else {
    V2_FUZZ_CHECK(up_percent == "0" ||
                      (v2::IsNumeric(up_percent) && Within(up_percent, title)),
                  "the upload percentage is a number of the title");
  }
  const std::string up_mins = v2::UploadMinsOf(first, second);
  V2_FUZZ_CHECK(
      up_mins == "0" || (v2::IsNumeric(up_mins) && Within(up_mins, second)),
      "upload minutes are a number of the 2nd text");

  CheckNumeric(title);
  CheckNumeric(second);

  // Through the client's windows the readers give what the texts give.
  v2::fuzz::World world;
  world.client.Download("x", 1, 1);
  world.client.Upload("x", 1, 1);
  const v2::Hwnd down = world.client.download(), up = world.client.upload();
  for (v2::Hwnd window : {down, up}) {
    std::vector<v2::Hwnd> labels = world.windows.Children(window);
    world.windows.SetText(window, std::string(title));
    world.windows.SetText(labels.at(0), std::string(first));
    world.windows.SetText(labels.at(1), std::string(second));
  }
  v2::Platform& p = world.platform;
  const bool shown = title.find("File Transfer - ") != std::string_view::npos;
  V2_FUZZ_CHECK(v2::FindDownload(p) == (shown ? down : 0),
                "the download is found by its title");
  if (shown) {
    V2_FUZZ_CHECK(v2::DownloadName(p) == down_name &&
                      v2::DownloadPercent(p) == down_percent &&
                      v2::DownloadMins(p) == down_mins,
                  "the download's window reads as its texts");
  }
  V2_FUZZ_CHECK(v2::UploadName(p) == up_name &&
                    v2::UploadPercent(p) == up_percent &&
                    v2::UploadMins(p) == up_mins,
                "the upload's window reads as its texts");
  return 0;
}
