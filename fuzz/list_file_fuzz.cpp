// Fuzz target: the reason list file, which the member can edit by hand. Any
// bytes read into items without a crash; what SaveList writes of plain
// entries reads back as those entries.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/list_files.h"
#include "fuzz/fuzz_check.h"
#include "idle/reason_list.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  std::vector<std::string> items = v2::ReadListItems(bytes);
  std::size_t total = 0;
  for (const std::string& item : items) {
    total += item.size();
    V2_FUZZ_CHECK(item.find_first_of("\r\n") == std::string::npos,
                  "an item never holds a line break");
  }
  V2_FUZZ_CHECK(total <= bytes.size(), "items come from the file's bytes");

  // Entries with no comma, quote, line break or leading blank survive a
  // save and a load unchanged.
  std::vector<std::string> plain;
  std::string file;
  for (const std::string& item : items) {
    if (item.find_first_of(",\"\r\n") != std::string::npos) continue;
    if (!item.empty() && (item[0] == ' ' || item[0] == '\t')) continue;
    plain.push_back(item);
    file += item + "\r\n";
  }
  V2_FUZZ_CHECK(v2::ReadListItems(file) == plain,
                "plain entries come back as they were saved");
  return 0;
}
