# Writes a C++ source that holds a file's bytes, for pictures that must be
# inside the program wherever it runs:
#   cmake -DIN=file -DOUT=source.cpp -DNAME=Function -P embed-file.cmake
# The source defines `std::string_view v2::NAME()` giving the bytes.
file(READ "${IN}" hex HEX)
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${hex}")
file(WRITE "${OUT}.tmp"
  "// Made from ${IN} by embed-file.cmake.\n"
  "#include <string_view>\n\nnamespace v2 {\nnamespace {\n"
  "constexpr char kBytes[] = {\n${bytes}};\n}  // namespace\n"
  "std::string_view ${NAME}() { return {kBytes, sizeof(kBytes)}; }\n"
  "}  // namespace v2\n")
file(RENAME "${OUT}.tmp" "${OUT}")
