// Plays inputs through a fuzz target without libFuzzer, so every build (g++,
// the sanitizer build included) keeps the checked-in corpus passing. Each
// argument is a file or a directory of files; with none, a few built-in
// inputs are played.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size);

namespace {

namespace fs = std::filesystem;

// Small inputs that reach the start of every target's main paths.
const char* const kBuiltIn[] = {
    "",
    "date",
    "p song",
    "\rMember:\tdate\rGuide:\thello",
    "Welcome, Member!",
    "Welcome, !",
};

void Play(const std::string& input) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()),
                         input.size());
}

bool ReadFile(const fs::path& path, std::string& out) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  out.assign(std::istreambuf_iterator<char>(in),
             std::istreambuf_iterator<char>());
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    for (const char* input : kBuiltIn) Play(input);
    std::printf("replayed %zu built-in inputs\n", std::size(kBuiltIn));
    return 0;
  }
  std::vector<fs::path> files;
  for (int i = 1; i < argc; ++i) {
    fs::path arg = argv[i];
    std::error_code ec;
    if (fs::is_directory(arg, ec)) {
      for (const auto& entry : fs::directory_iterator(arg)) {
        if (entry.is_regular_file()) files.push_back(entry.path());
      }
    } else if (fs::is_regular_file(arg, ec)) {
      files.push_back(arg);
    } else {
      // A missing corpus must fail the test, not pass it with nothing played.
      std::fprintf(stderr, "replay: no such file or directory: %s\n", argv[i]);
      return 1;
    }
  }
  std::sort(files.begin(), files.end());
  for (const fs::path& path : files) {
    std::string input;
    if (!ReadFile(path, input)) {
      std::fprintf(stderr, "replay: cannot read %s\n", path.c_str());
      return 1;
    }
    Play(input);
  }
  if (files.empty()) {
    std::fprintf(stderr, "replay: no inputs found\n");
    return 1;
  }
  std::printf("replayed %zu inputs\n", files.size());
  return 0;
}
